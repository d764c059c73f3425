// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QtTest>

#include "settings/settings_table.h"
#include "ui/accessible_tree.h"
#include "ui/application/preferences_window.h"
#include "ui/window/desktop_preferences.h"
#include "ui/window_test.h"

namespace setting = settings::key;
using settings::SettingValue;

/// The window over a store of its own, shown and active, with the first-run values.
class PreferencesWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        QCoreApplication::setOrganizationName(QStringLiteral("vexta"));
        QCoreApplication::setApplicationName(QStringLiteral("preferences-window-test"));
    }

    void init() {
        QSettings().clear();
        m_store = std::make_unique<settings::MemorySettingsStore>();
        setting::writeFirstRunValues(*m_store);
        m_window = std::make_unique<ui::PreferencesWindow>(*m_store);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup() { m_window.reset(); }

    void lookingStoresNothing() {
        QVERIFY(!m_store->value(setting::kCopyNumberOfInternalControl));
        QVERIFY(!m_store->value(setting::kLeaveFileForFailedToBeAssignedReads));
        QCOMPARE(field("copyNumberOfInternalControl").text(), QString());
        QCOMPARE(field("copyNumberOfInternalControl").placeholderText(), QStringLiteral("100000"));
        for (int step = 0; step < 20; ++step) {
            QTest::keyClick(m_window->focusWidget(), Qt::Key_Tab);
        }
        QVERIFY(!m_store->value(setting::kCopyNumberOfInternalControl));
        QVERIFY(!m_store->value(setting::kLeaveFileForFailedToBeAssignedReads));
        QVERIFY(m_store->value(setting::kND1Threshold).value() == SettingValue(std::string("500")));
    }

    void aNumberTypedAndLeftByTabIsStoredAsText() {
        type("nD1Threshold", "250");
        QTest::keyClick(&field("nD1Threshold"), Qt::Key_Tab);
        QVERIFY(m_store->value(setting::kND1Threshold).value() == SettingValue(std::string("250")));
    }

    void enterStoresANumberAndLeavesTheWindowOpen() {
        type("copyNumberOfInternalControl", "5000");
        QTest::keyClick(&field("copyNumberOfInternalControl"), Qt::Key_Return);
        QVERIFY(m_store->value(setting::kCopyNumberOfInternalControl).value() ==
                SettingValue(std::string("5000")));
        QVERIFY(m_window->isVisible());
    }

    void closingStoresWhatWasTypedLast() {
        type("nD2Threshold", "20");
        QTest::keyClick(m_window.get(), Qt::Key_Escape);
        QVERIFY(!m_window->isVisible());
        QVERIFY(m_store->value(setting::kND2Threshold).value() == SettingValue(std::string("20")));
    }

    void aValueThatARunRepairsIsStoredWithAWarning() {
        type("nD1Threshold", "0");
        QVERIFY(note("nD1Threshold").isVisible());
        QTest::keyClick(&field("nD1Threshold"), Qt::Key_Return);
        QVERIFY(m_store->value(setting::kND1Threshold).value() == SettingValue(std::string("0")));
        QCOMPARE(note("nD1Threshold").text(),
                 QStringLiteral("The next call will replace 0 by 100 and use that."));
    }

    void aTextThatIsNoNumberIsPutBackAndSaysWhy() {
        type("nD1Threshold", "many");
        QTest::keyClick(&field("nD1Threshold"), Qt::Key_Return);
        QCOMPARE(field("nD1Threshold").text(), QStringLiteral("500"));
        QVERIFY(note("nD1Threshold").text().contains(QStringLiteral("Not stored")));
        QVERIFY(m_store->value(setting::kND1Threshold).value() == SettingValue(std::string("500")));
    }

    void switchesAreStoredAsBooleans() {
        for (const char* name : {"calculateFalsePositiveRate", "windowSizeMidi",
                                 "leaveFileForFailedToBeAssignedReads"}) {
            box(name).setFocus();
            QTest::keyClick(&box(name), Qt::Key_Space);
            QVERIFY2(m_store->value(name).value() == SettingValue(true), name);
            QTest::keyClick(&box(name), Qt::Key_Space);
            QVERIFY2(m_store->value(name).value() == SettingValue(false), name);
        }
    }

    void recordsAreTheDesktopsOwnAndOnAtFirst() {
        QVERIFY(box("writesRecords").isChecked());
        QTest::keyClick(&box("writesRecords"), Qt::Key_Space);
        QVERIFY(!ui::writesRecords());
        QVERIFY(!m_store->value("writesRecords"));
    }

    void readingInPlaceIsTheDesktopsOwnAndOffAtFirst() {
        QVERIFY(!box("readsInputsInPlace").isChecked());
        QTest::keyClick(&box("readsInputsInPlace"), Qt::Key_Space);
        QVERIFY(ui::readsInputsInPlace());
        QVERIFY(!m_store->value("readsInputsInPlace"));
    }

    void everyPreferenceSaysWhenItIsRead() {
        const QString atOnce = QStringLiteral("also for patients of a run that is going on.");
        for (const char* name : {"nD1Threshold", "nD2Threshold", "copyNumberOfInternalControl"}) {
            QVERIFY2(field(name).accessibleDescription().endsWith(atOnce), name);
        }
        for (const char* name :
             {"calculateFalsePositiveRate", "leaveFileForFailedToBeAssignedReads"}) {
            QVERIFY2(box(name).accessibleDescription().endsWith(atOnce), name);
        }
        QVERIFY(box("readsInputsInPlace")
                    .accessibleDescription()
                    .endsWith(QStringLiteral("from the next run on.")));
        QVERIFY(box("windowSizeMidi")
                    .accessibleDescription()
                    .endsWith(QStringLiteral("opened from now on.")));
    }

    void theSettingWithoutEffectIsNotOffered() {
        QVERIFY(m_window->findChild<QWidget*>(QStringLiteral("leaveIntermediateFiles")) == nullptr);
    }

    void whatARunRepairedIsShownWhenTheWindowComesForward() {
        m_window->hide();
        m_store->setValue(setting::kND1Threshold, std::int64_t{100});
        m_store->setValue(setting::kCalculateFalsePositiveRate, true);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QCOMPARE(field("nD1Threshold").text(), QStringLiteral("100"));
        QVERIFY(box("calculateFalsePositiveRate").isChecked());
    }

    void whatAnotherProcessStoredIsShownWhenTheWindowIsActivated() {
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        m_store->setValue(setting::kND2Threshold, std::string("77"));
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTRY_COMPARE(field("nD2Threshold").text(), QStringLiteral("77"));
    }

    void whatIsBeingTypedSurvivesAReload() {
        type("nD1Threshold", "25");
        m_store->setValue(setting::kND1Threshold, std::int64_t{100});
        m_window->reload();
        QCOMPARE(field("nD1Threshold").text(), QStringLiteral("25"));
    }

    void everyControlHasANameAndSaysWhatItDoes() {
        QCOMPARE(support::controlsWithoutName(*m_window), QStringList());
        QCOMPARE(support::controlsWithoutDescription<QLineEdit>(*m_window), QStringList());
        QCOMPARE(support::controlsWithoutDescription<QCheckBox>(*m_window), QStringList());
        QCOMPARE(support::controlsThatTabMisses(*m_window), QStringList());
    }

private:
    QLineEdit& field(const char* name) {
        return *m_window->findChild<QLineEdit*>(QString::fromLatin1(name));
    }
    QCheckBox& box(const char* name) {
        return *m_window->findChild<QCheckBox*>(QString::fromLatin1(name));
    }
    QLabel& note(const char* name) {
        return *m_window->findChild<QLabel*>(QString::fromLatin1(name) + QStringLiteral("Note"));
    }
    void type(const char* name, const char* text) {
        QLineEdit& edited = field(name);
        edited.setFocus();
        edited.selectAll();
        QTest::keyClicks(&edited, QString::fromLatin1(text));
    }

    std::unique_ptr<settings::MemorySettingsStore> m_store;
    std::unique_ptr<ui::PreferencesWindow> m_window;
};

WINDOW_TEST(PreferencesWindowTest, QApplication)
#include "preferences_window_test.moc"
