// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QClipboard>
#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>

#include "ui/accessible_tree.h"
#include "ui/window/warnings.h"
#include "ui/window_test.h"

using Kind = run::Warning::Kind;
using ui::NoticeLine;

namespace {

document::PatientAccount patient(const char* number, const char* sample) {
    document::PatientAccount account;
    account.number = number;
    account.sample = sample;
    account.file1 = std::string(sample) + "_R1";
    return account;
}

QString text(const char* words) {
    return QString::fromUtf8(words);
}

} // namespace

/// What a window makes of warnings, without a run.
class WarningsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void redIsForReadsThatMayBeMissingOrSomebodyElses() {
        for (const Kind kind : {Kind::doubtfulNames, Kind::earlyEnd, Kind::zeroBytes,
                                Kind::surplusRecords, Kind::headersOfOtherRead}) {
            QCOMPARE(ui::noticeKindOf(kind), NoticeLine::Kind::danger);
        }
        for (const Kind kind : {Kind::emptyFile, Kind::readMarks, Kind::nothingMapped,
                                Kind::elsewhere, Kind::unusedReads, Kind::doubtfulNumber,
                                Kind::changedCatalogue, Kind::changedSettings, Kind::padding}) {
            QCOMPARE(ui::noticeKindOf(kind), NoticeLine::Kind::problem);
        }
        for (const Kind kind : {Kind::notAssessable, Kind::usualFiles}) {
            QCOMPARE(ui::noticeKindOf(kind), NoticeLine::Kind::information);
        }
    }

    void theLineTellsTheGravestAndOfEqualsTheFirst() {
        const auto one = patient("1", "A");
        ui::RunWarnings warnings;
        warnings.add({Kind::notAssessable, "too few"}, &one);
        QCOMPARE(warnings.line(), text("too few."));
        QCOMPARE(warnings.more(), QString());
        warnings.add({Kind::emptyFile, "empty"}, &one);
        warnings.add({Kind::unusedReads, "unused"}, nullptr);
        QCOMPARE(warnings.line(), text("empty."));
        warnings.add({Kind::earlyEnd, "cut"}, &one);
        QCOMPARE(warnings.line(), text("cut."));
        warnings.add({Kind::doubtfulNames, "mixed up"}, nullptr);
        warnings.add({Kind::zeroBytes, "torn"}, &one);
        QCOMPARE(warnings.line(), text("mixed up."));
        QCOMPARE(warnings.more(), text("and 5 more\u2026"));
    }

    void theDetailsHoldEveryWarningUnderItsPatient() {
        const auto one = patient("1", "A");
        const auto two = patient("2", "");
        ui::RunWarnings warnings;
        warnings.add({Kind::notAssessable, "first"}, &one);
        warnings.add({Kind::notAssessable, "second"}, &two);
        warnings.add({Kind::changedCatalogue, "changed"}, nullptr);
        warnings.add({Kind::elsewhere, "third"}, &one);
        QCOMPARE(warnings.details(),
                 text("The whole run\n  \u2022 changed.\n\n"
                      "Patient 1, sample A\n  \u2022 first.\n  \u2022 third.\n\n"
                      "Patient 2\n  \u2022 second.\n"));
    }

    void theWindowIsReadAndCopiedByTheKeyboardAlone() {
        ui::WarningsWindow window(nullptr);
        window.tell(text("<b>one</b>\ntwo\n"));
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto* shown = window.findChild<QPlainTextEdit*>();
        QVERIFY(shown->hasFocus());
        QVERIFY(shown->isReadOnly());
        QCOMPARE(support::controlsWithoutName(window), QStringList());
        QTest::keyClick(shown, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(shown, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), text("<b>one</b>\ntwo\n"));
        QApplication::clipboard()->clear();
        for (QPushButton* button : window.findChildren<QPushButton*>()) {
            if (button->text().contains(text("Copy"))) {
                QTest::keyClick(button, Qt::Key_Space);
            }
        }
        QCOMPARE(QApplication::clipboard()->text(), text("<b>one</b>\ntwo\n"));
        QCOMPARE(support::controlsThatTabMisses(window), QStringList());
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
    }
};

WINDOW_TEST(WarningsTest, QApplication)
#include "warnings_test.moc"
