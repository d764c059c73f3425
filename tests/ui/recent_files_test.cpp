// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>

#include <QAction>
#include <QSettings>
#include <QSignalSpy>
#include <QtTest>

#include "support/temp_dir.h"
#include "ui/application/recent_files.h"
#include "ui/window_test.h"

namespace {

QString named(int number) {
    return QStringLiteral("/data/file%1.vexta").arg(number);
}

QString written(const support::TempDir& dir, const char* name) {
    return QString::fromStdString(dir.write(name, ""));
}

} // namespace

class RecentFilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        QCoreApplication::setOrganizationName(QStringLiteral("vexta"));
        QCoreApplication::setApplicationName(QStringLiteral("recent-files-test"));
    }
    void init() { QSettings().clear(); }

    void theNewestComesFirstAndOnlyOnce() {
        ui::RecentFiles files;
        files.add(named(1));
        files.add(named(2));
        files.add(named(1));
        QCOMPARE(files.paths(), (QStringList{named(1), named(2)}));
    }

    void tenAreKeptFromOneSessionToTheNext() {
        ui::RecentFiles files;
        for (int number = 1; number <= 12; ++number) {
            files.add(named(number));
        }
        QCOMPARE(ui::RecentFiles().paths().size(), 10);
        QCOMPARE(ui::RecentFiles().paths().first(), named(12));
        QCOMPARE(ui::RecentFiles().paths().last(), named(3));
    }

    void longNamesAreElidedInTheMiddle() {
        const QString path = QStringLiteral("/d/P&Q") + QString(200, QLatin1Char('x')) +
                             QStringLiteral("_R1_001.fastq");
        const QString text = ui::recentFileMenuText(path, 10, false);
        QVERIFY(text.startsWith(QStringLiteral("&0  P&&Q")));
        QVERIFY(text.contains(QStringLiteral("_R1_001.fastq")));
        QVERIFY(text.size() < 120);
    }

    void theMenuGreysMissingFiles() {
        const support::TempDir dir;
        const QString there = written(dir, "there.vexta");
        ui::RecentFiles files;
        files.add(named(1));
        files.add(there);
        ui::RecentFilesMenu menu(files);
        QVERIFY(menu.actions().at(0)->isEnabled());
        QTRY_VERIFY(!menu.actions().at(1)->isEnabled());
        QVERIFY(menu.actions().at(1)->text().contains(QStringLiteral("missing")));
        std::filesystem::remove(there.toStdString());
        Q_EMIT menu.aboutToShow();
        QTRY_VERIFY(!menu.actions().at(0)->isEnabled());
    }

    void choosingFromTheMenuOpensTheFile() {
        const support::TempDir dir;
        const QString there = written(dir, "there.vexta");
        ui::RecentFiles files;
        files.add(there);
        ui::RecentFilesMenu menu(files);
        const QSignalSpy opened(&menu, &ui::RecentFilesMenu::openRequested);
        menu.actions().first()->trigger();
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened.first().first().toStringList(), QStringList{there});
    }

    void clearingForgetsAll() {
        ui::RecentFiles files;
        files.add(named(1));
        ui::RecentFilesMenu menu(files);
        menu.actions().last()->trigger();
        QVERIFY(files.paths().isEmpty());
        QVERIFY(!menu.actions().last()->isEnabled());
    }

    void enterOpensTheSelectedFileOfTheList() {
        const support::TempDir dir;
        ui::RecentFiles files;
        files.add(written(dir, "older.vexta"));
        files.add(written(dir, "newer.vexta"));
        ui::RecentFilesList list(files);
        list.show();
        const QSignalSpy opened(&list, &ui::RecentFilesList::openRequested);
        QTest::keyClick(&list, Qt::Key_Down);
        QTest::keyClick(&list, Qt::Key_Return);
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened.first().first().toStringList(),
                 QStringList{QString::fromStdString(dir.file("older.vexta"))});
    }

    void whoIsGoneIsToldOfNoMissingFile() {
        bool told = false;
        {
            ui::MissingFiles missing;
            connect(&missing, &ui::MissingFiles::changed, [&told] { told = true; });
            missing.lookFor({named(1)});
        }
        QTest::qWait(50);
        QVERIFY(!told);
    }

    void missingFilesOfTheListCannotBeChosen() {
        ui::RecentFiles files;
        files.add(named(1));
        const ui::RecentFilesList list(files);
        QTRY_VERIFY(!(list.item(0)->flags() & Qt::ItemIsEnabled));
        QVERIFY(list.item(0)->text().contains(QStringLiteral("missing")));
    }
};

WINDOW_TEST(RecentFilesTest, QApplication)
#include "recent_files_test.moc"
