// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <limits>

#include <QtTest>

#include "ui/window/run_controls.h"
#include "ui/window_test.h"

/// Rows of numbers and the text that each gives.
class ProgressTextsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void numbersThePatientsOfABatchOnly() {
        QCOMPARE(ui::patientText(3, 12, english), QStringLiteral("patient 3 of 12"));
        QCOMPARE(ui::patientText(1, 1, english), QString());
        QCOMPARE(ui::patientText(0, 12, english), QString());
    }

    void groupsPairsAsTheUsersLanguageDoes() {
        QCOMPARE(ui::pairsText(0, english), QStringLiteral("0 pairs"));
        QCOMPARE(ui::pairsText(1234567, english), QStringLiteral("1,234,567 pairs"));
        QCOMPARE(ui::pairsText(1234567, german), QStringLiteral("1.234.567 pairs"));
        QCOMPARE(ui::pairsText(std::numeric_limits<std::int64_t>::max(), english),
                 QStringLiteral("9,223,372,036,854,775,807 pairs"));
    }

    void rate_data() {
        QTest::addColumn<double>("rate");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << 0.0 << "0 pairs/s";
        QTest::newRow("few") << 640.4 << "640 pairs/s";
        QTest::newRow("rounds up to the next unit") << 999.6 << "1.0 k pairs/s";
        QTest::newRow("thousands") << 850'400.0 << "850 k pairs/s";
        QTest::newRow("rounds up to millions") << 999'600.0 << "1.0 M pairs/s";
        QTest::newRow("millions") << 1'911'000.0 << "1.9 M pairs/s";
        QTest::newRow("many millions") << 23'400'000.0 << "23 M pairs/s";
        QTest::newRow("not a number") << std::nan("") << "";
        QTest::newRow("endless") << std::numeric_limits<double>::infinity() << "";
    }
    void rate() {
        QFETCH(double, rate);
        QTEST(ui::rateText(rate, english), "text");
    }
    void anUnknownRateIsNotShown() { QCOMPARE(ui::rateText(std::nullopt, english), QString()); }

    void timeLeft_data() {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("at the end") << 0.0 << "a few seconds left";
        QTest::newRow("nearly") << 9.9 << "a few seconds left";
        QTest::newRow("seconds") << 31.0 << "about 40 s left";
        QTest::newRow("most seconds") << 50.0 << "about 50 s left";
        QTest::newRow("a minute") << 50.1 << "about 1 min left";
        QTest::newRow("minutes") << 61.0 << "about 2 min left";
        QTest::newRow("most minutes") << 3540.0 << "about 59 min left";
        QTest::newRow("an hour") << 3541.0 << "about 1 h 0 min left";
        QTest::newRow("hours") << 4300.0 << "about 1 h 20 min left";
        QTest::newRow("most hours") << 345'600.0 << "about 96 h 0 min left";
        QTest::newRow("days") << 345'601.0 << "more than 4 days left";
        QTest::newRow("huge") << 1e300 << "more than 4 days left";
        QTest::newRow("not a number") << std::nan("") << "";
        QTest::newRow("endless") << std::numeric_limits<double>::infinity() << "";
    }
    void timeLeft() {
        QFETCH(double, seconds);
        QTEST(ui::timeLeftText(seconds, english), "text");
    }
    void anUnknownTimeIsNotShown() { QCOMPARE(ui::timeLeftText(std::nullopt, english), QString()); }

    void sizesOfCopiesAreReadable() {
        QCOMPARE(ui::copiedText(0, english), QStringLiteral("0 bytes so far"));
        QCOMPARE(ui::copiedText(1'234'000'000, english), QStringLiteral("1.2 GB so far"));
        QCOMPARE(ui::copiedText(std::nullopt, english), QString());
    }

private:
    QLocale english{QLocale::English, QLocale::UnitedStates};
    QLocale german{QLocale::German, QLocale::Germany};
};

WINDOW_TEST(ProgressTextsTest, QCoreApplication)
#include "progress_texts_test.moc"
