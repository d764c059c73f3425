// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QtTest>

#include "ui/application/desktop_arguments.h"
#include "ui/window_test.h"

using ui::DesktopArguments;
using ui::parseDesktopArguments;

class DesktopArgumentsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutArgumentsAWindowIsWanted() {
        const DesktopArguments parsed = parseDesktopArguments({}).value();
        QVERIFY(parsed.files.empty());
        QVERIFY(!parsed.cataloguePath);
    }

    void everyOtherArgumentIsAFileToOpen() {
        const DesktopArguments parsed =
            parseDesktopArguments({"a_R1_.fastq", "--catalogue", "c.txt", "b.vexta", "-"}).value();
        QCOMPARE(parsed.files, (std::vector<std::string>{"a_R1_.fastq", "b.vexta", "-"}));
        QCOMPARE(*parsed.cataloguePath, std::string("c.txt"));
    }

    void theCatalogueMayFollowAnEqualsSign() {
        QCOMPARE(*parseDesktopArguments({"--catalogue=c=d.txt"}).value().cataloguePath,
                 std::string("c=d.txt"));
    }

    void aFileNameCountsAsItStands() {
        const std::vector<std::string> names = {"[run,2]", "++", "a=b", "", "/p"};
        QCOMPARE(parseDesktopArguments(names).value().files, names);
        QVERIFY(parseDesktopArguments({"--catalogue=", "x.vexta"}).value().cataloguePath->empty());
    }

    void twoHyphensEndTheOptions() {
        const auto parsed = parseDesktopArguments({"--", "--help"});
        QVERIFY(parsed.ok());
        QCOMPARE(parsed.value().files, std::vector<std::string>{"--help"});
        QVERIFY(!ui::answerWithoutWindow({"--", "--help"}));
    }

    void helpAndVersionNeedNoWindowWhereverTheyStand() {
        const auto help = ui::answerWithoutWindow({"-platform", "xcb", "x.fastq", "--help"});
        QVERIFY(help.value().find("--catalogue") != std::string::npos);
        QCOMPARE(ui::answerWithoutWindow({"-h"}).value(), help.value());
        QVERIFY(ui::answerWithoutWindow({"--version"}).value().find("vexta-desktop ") == 0);
        QVERIFY(!ui::answerWithoutWindow({"x.fastq"}));
    }

    void unknownAndUnfinishedOptionsAreNamed() {
        const auto unknown = parseDesktopArguments({"--colour"});
        QVERIFY(unknown.error().message.find("\"--colour\"") != std::string::npos);
        const auto unfinished = parseDesktopArguments({"--catalogue"});
        QVERIFY(unfinished.error().message.find("--catalogue") != std::string::npos);
    }
};

WINDOW_TEST(DesktopArgumentsTest, QCoreApplication)
#include "desktop_arguments_test.moc"
