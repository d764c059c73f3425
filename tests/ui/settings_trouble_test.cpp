// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <thread>

#include <QMessageBox>
#include <QtTest>

#include "platform/json_settings_store.h"
#include "support/temp_dir.h"
#include "ui/qt_main_queue.h"
#include "ui/settings_trouble.h"

namespace {

QMessageBox* shownBox() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == QStringLiteral("settingsTrouble") && widget->isVisible()) {
            return qobject_cast<QMessageBox*>(widget);
        }
    }
    return nullptr;
}

} // namespace

class SettingsTroubleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDamagedSettingsFileIsToldAndKept() {
        const support::TempDir dir;
        const std::string path = dir.write("settings.json", "{\"nD1Threshold\": ");
        ui::QtMainQueue queue;
        ui::SettingsTrouble trouble(queue);
        platform::JsonSettingsStore store(
            path, [&](const std::string& message) { trouble.report(message); });
        store.setValue("nD1Threshold", std::string("500")); // only a write sets the file aside
        QVERIFY(shownBox() == nullptr);
        QCoreApplication::processEvents();
        QVERIFY(shownBox() != nullptr);
        QVERIFY(shownBox()->informativeText().contains(QStringLiteral("settings.json.damaged")));
        QVERIFY(!shownBox()->isModal());
        QCOMPARE(support::readFile(dir.file("settings.json.damaged")),
                 std::string("{\"nD1Threshold\": "));
    }

    void aFurtherMessageJoinsTheOneOnScreen() {
        ui::QtMainQueue queue;
        ui::SettingsTrouble trouble(queue);
        std::thread([&] {
            trouble.report("first");
            trouble.report("second");
        }).join();
        QCoreApplication::processEvents();
        QCOMPARE(shownBox()->informativeText(), QStringLiteral("first\n\nsecond"));
        QTest::keyClick(shownBox(), Qt::Key_Escape);
        QTRY_VERIFY(shownBox() == nullptr);
        trouble.report("third");
        QCoreApplication::processEvents();
        QCOMPARE(shownBox()->informativeText(), QStringLiteral("third"));
    }
};

QTEST_MAIN(SettingsTroubleTest)
#include "settings_trouble_test.moc"
