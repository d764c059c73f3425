// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QClipboard>
#include <QSettings>
#include <QtTest>

#include "ui/application/qt_ports.h"
#include "ui/window/desktop_preferences.h"
#include "ui/window_test.h"

class DesktopPreferencesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        QCoreApplication::setOrganizationName(QStringLiteral("vexta"));
        QCoreApplication::setApplicationName(QStringLiteral("desktop-preferences-test"));
    }
    void init() { QSettings().clear(); }

    void inputsAreCopiedUntilTheUserAsksOtherwise() { QVERIFY(!ui::readsInputsInPlace()); }

    void recordsAreWrittenUntilTheUserAsksOtherwise() {
        QVERIFY(ui::writesRecords());
        ui::setWritesRecords(false);
        QVERIFY(!ui::writesRecords());
    }

    void theChoiceIsKept() {
        ui::setReadsInputsInPlace(true);
        QVERIFY(ui::readsInputsInPlace());
        ui::setReadsInputsInPlace(false);
        QVERIFY(!ui::readsInputsInPlace());
    }

    void theClipboardHoldsTheTextAsItStands() {
        ui::QtClipboard().setPlainText("File\tMutation\n<b>\xC3\xA4</b>\n");
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 QStringLiteral("File\tMutation\n<b>\u00E4</b>\n"));
    }
};

WINDOW_TEST(DesktopPreferencesTest, QApplication)
#include "desktop_preferences_test.moc"
