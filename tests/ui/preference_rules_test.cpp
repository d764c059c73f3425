// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QtTest>

#include "settings/settings_table.h"
#include "ui/application/preference_rules.h"
#include "ui/window_test.h"

namespace setting = settings::key;
using settings::SettingValue;

class PreferenceRulesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void numbersWithinTheRangeAreTakenWithoutANote() {
        const auto verdict =
            ui::judgeInteger(ui::nD1ThresholdPreference(), QStringLiteral(" 250 "));
        QCOMPARE(verdict.value.value(), std::int64_t{250});
        QCOMPARE(verdict.note, QString());
    }

    void thresholdsThatARunRepairsAreTakenAndTheRepairIsTold() {
        const auto nD1 = ui::judgeInteger(ui::nD1ThresholdPreference(), QStringLiteral("0"));
        QCOMPARE(nD1.value.value(), std::int64_t{0});
        QCOMPARE(nD1.note, QStringLiteral("The next call will replace 0 by 100 and use that."));
        const auto nD2 = ui::judgeInteger(ui::nD2ThresholdPreference(), QStringLiteral("-3"));
        QCOMPARE(nD2.value.value(), std::int64_t{-3});
        QCOMPARE(nD2.note, QStringLiteral("The next call will replace -3 by 10 and use that."));
    }

    void textsAndNumbersOutOfRangeAreNotTaken_data() {
        QTest::addColumn<QString>("typed");
        for (const char* typed :
             {"", "many", "12abc", "1.5", "1e3", "1000000001", "99999999999999999999"}) {
            QTest::newRow(typed) << QString::fromLatin1(typed);
        }
    }
    void textsAndNumbersOutOfRangeAreNotTaken() {
        QFETCH(QString, typed);
        const auto verdict = ui::judgeInteger(ui::nD1ThresholdPreference(), typed);
        QVERIFY(!verdict.value);
        QVERIFY(verdict.note.contains(QStringLiteral("Not stored")));
    }

    void theControlsCopiesHaveNoRepairAndSoNoValueBelowOne() {
        QVERIFY(!ui::judgeInteger(ui::copyNumberPreference(), QStringLiteral("0")).value);
        QCOMPARE(ui::judgeInteger(ui::copyNumberPreference(), QStringLiteral("1")).value.value(),
                 std::int64_t{1});
    }

    void numbersAreStoredAsText() {
        settings::MemorySettingsStore store;
        ui::storeInteger(store, ui::nD1ThresholdPreference(), 250);
        QVERIFY(store.value(setting::kND1Threshold).value() == SettingValue(std::string("250")));
        QCOMPARE(ui::storedInteger(store, ui::nD1ThresholdPreference()).value(), std::int64_t{250});
    }

    void numbersAreShownAsRunsReadThem() {
        settings::MemorySettingsStore store;
        QVERIFY(!ui::storedInteger(store, ui::nD1ThresholdPreference()));
        store.setValue(setting::kND1Threshold, std::int64_t{100});
        QCOMPARE(ui::storedInteger(store, ui::nD1ThresholdPreference()).value(), std::int64_t{100});
        store.setValue(setting::kND1Threshold, std::string("12abc"));
        QCOMPARE(ui::storedInteger(store, ui::nD1ThresholdPreference()).value(), std::int64_t{12});
    }

    void switchesAreShownAsTheirReadersTakeThem() {
        settings::MemorySettingsStore store;
        for (const SettingValue& value :
             {SettingValue(std::int64_t{1}), SettingValue(std::string("YES"))}) {
            store.setValue(setting::kCalculateFalsePositiveRate, value);
            store.setValue(setting::kLeaveFileForFailedToBeAssignedReads, value);
            QVERIFY(settings::isOn(store, ui::falsePositiveRatePreference().setting));
            QVERIFY(!settings::isOn(store, ui::failedReadsFilePreference().setting));
        }
        store.setValue(setting::kLeaveFileForFailedToBeAssignedReads, true);
        QVERIFY(settings::isOn(store, ui::failedReadsFilePreference().setting));
    }
};

WINDOW_TEST(PreferenceRulesTest, QCoreApplication)
#include "preference_rules_test.moc"
