// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QtTest>

#include "ui/desktop_arguments.h"

using ui::DesktopArguments;
using ui::parseDesktopArguments;
using Wish = ui::DesktopArguments::Wish;

class DesktopArgumentsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutArgumentsAWindowIsWanted() {
        const DesktopArguments parsed = parseDesktopArguments({});
        QVERIFY(parsed.wish == Wish::window);
        QVERIFY(parsed.files.empty());
        QVERIFY(!parsed.cataloguePath);
    }

    void everyOtherArgumentIsAFileToOpen() {
        const DesktopArguments parsed =
            parseDesktopArguments({"a_R1_.fastq", "--catalogue", "c.txt", "b.vexta", "-"});
        QCOMPARE(parsed.files, (std::vector<std::string>{"a_R1_.fastq", "b.vexta", "-"}));
        QCOMPARE(*parsed.cataloguePath, std::string("c.txt"));
    }

    void theCatalogueMayFollowAnEqualsSign() {
        QCOMPARE(*parseDesktopArguments({"--catalogue=c=d.txt"}).cataloguePath,
                 std::string("c=d.txt"));
    }

    void twoHyphensEndTheOptions() {
        const DesktopArguments parsed = parseDesktopArguments({"--", "--help"});
        QVERIFY(parsed.wish == Wish::window);
        QCOMPARE(parsed.files, std::vector<std::string>{"--help"});
        QVERIFY(!ui::wantsNoWindow({"--", "--help"}));
    }

    void helpAndVersionNeedNoWindow() {
        QVERIFY(ui::wantsNoWindow({"x.fastq", "--help"}));
        QVERIFY(ui::wantsNoWindow({"-h"}));
        QVERIFY(ui::wantsNoWindow({"--version"}));
        QVERIFY(!ui::wantsNoWindow({"x.fastq"}));
        QVERIFY(parseDesktopArguments({"--help"}).wish == Wish::help);
        QVERIFY(parseDesktopArguments({"--version"}).wish == Wish::version);
        QVERIFY(ui::desktopHelp().find("--catalogue") != std::string::npos);
        QVERIFY(ui::desktopVersionLine().find("vexta-desktop ") == 0);
    }

    void unknownAndUnfinishedOptionsAreNamed() {
        const DesktopArguments unknown = parseDesktopArguments({"--colour"});
        QVERIFY(unknown.wish == Wish::fault);
        QVERIFY(unknown.fault.find("\"--colour\"") != std::string::npos);
        const DesktopArguments unfinished = parseDesktopArguments({"--catalogue"});
        QVERIFY(unfinished.wish == Wish::fault);
        QVERIFY(unfinished.fault.find("--catalogue") != std::string::npos);
    }
};

QTEST_GUILESS_MAIN(DesktopArgumentsTest)
#include "desktop_arguments_test.moc"
