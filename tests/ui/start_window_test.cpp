// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>

#include <QAction>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QUrl>
#include <QtTest>

#include "support/temp_dir.h"
#include "ui/accessible_tree.h"
#include "ui/application/application_commands.h"
#include "ui/application/recent_files.h"
#include "ui/application/start_window.h"
#include "ui/window_test.h"

namespace {

/// Drops the URLs on the window; whether it took them.
bool drop(QWidget& window, const QList<QUrl>& urls) {
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter({20, 20}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QCoreApplication::sendEvent(&window, &enter);
    if (enter.isAccepted()) {
        QDropEvent dropped({20, 20}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &dropped);
    }
    return enter.isAccepted();
}

} // namespace

class StartWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        QCoreApplication::setOrganizationName(QStringLiteral("vexta"));
        QCoreApplication::setApplicationName(QStringLiteral("start-window-test"));
    }

    void init() {
        QSettings().clear();
        m_recentFiles = std::make_unique<ui::RecentFiles>();
        m_commands = std::make_unique<ui::ApplicationCommands>(*m_recentFiles);
        m_window = std::make_unique<ui::StartWindow>(m_commands->actions(), *m_recentFiles);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup() {
        m_window.reset();
        m_commands.reset();
        m_recentFiles.reset();
    }

    void closingIsAskedForAndDecidedElsewhere() {
        const QSignalSpy asked(m_window.get(), &ui::StartWindow::closeRequested);
        QTest::keyClick(m_window.get(), Qt::Key_W, Qt::ControlModifier);
        QCOMPARE(asked.size(), 1);
        QVERIFY(m_window->isVisible());
    }

    void theKeyboardReachesEachWayToOpen() {
        const QSignalSpy reads(m_window.get(), &ui::StartWindow::openReadsRequested);
        const QSignalSpy folder(m_window.get(), &ui::StartWindow::openFolderRequested);
        const QSignalSpy result(m_window.get(), &ui::StartWindow::openResultRequested);
        for (const char* name : {"openReadsButton", "openFolderButton", "openResultButton"}) {
            auto* button = m_window->findChild<QPushButton*>(QString::fromLatin1(name));
            button->setFocus();
            QTest::keyClick(button, Qt::Key_Return);
        }
        QCOMPARE(reads.size(), 1);
        QCOMPARE(folder.size(), 1);
        QCOMPARE(result.size(), 1);
    }

    void filesMayBeDroppedAnywhere() {
        const QSignalSpy opened(m_window.get(), &ui::StartWindow::openRequested);
        QVERIFY(drop(*m_window, {QUrl::fromLocalFile(QStringLiteral("/d/a b.vexta"))}));
        // Not while the program that they come from waits for the drop.
        QCOMPARE(opened.size(), 0);
        QTRY_COMPARE(opened.size(), 1);
        QCOMPARE(opened.first().first().toStringList(),
                 QStringList{QStringLiteral("/d/a b.vexta")});
    }

    void whatIsNoLocalFileIsNotTaken() {
        QVERIFY(!drop(*m_window, {QUrl(QStringLiteral("https://example.org/a.vexta"))}));
    }

    void recentFilesAppearWhenThereAreSome() {
        auto* list = m_window->findChild<ui::RecentFilesList*>();
        QVERIFY(!list->isVisible());
        m_recentFiles->add(QStringLiteral("/d/gone.vexta"));
        QVERIFY(list->isVisible());
        QCOMPARE(list->count(), 1);
    }

    void clearForgetsTheRecentFiles() {
        m_recentFiles->add(QStringLiteral("/d/gone.vexta"));
        m_window->findChild<QPushButton*>(QStringLiteral("clearRecentFilesButton"))->click();
        QVERIFY(m_recentFiles->paths().isEmpty());
        QVERIFY(!m_window->findChild<ui::RecentFilesList*>()->isVisible());
    }

    void aNoticeIsShownAsItStands() {
        auto* notice = m_window->findChild<QLabel*>(QStringLiteral("startNotice"));
        QVERIFY(!notice->isVisible());
        m_window->setNotice(QStringLiteral("<b>trouble"));
        QVERIFY(notice->isVisible());
        QVERIFY(notice->textFormat() == Qt::PlainText);
    }

    void everyControlHasANameAndTheKeyboardReachesIt() {
        const support::TempDir dir;
        m_recentFiles->add(QString::fromStdString(dir.write("r.vexta", "")));
        QCOMPARE(support::controlsWithoutName(*m_window), QStringList());
        QCOMPARE(support::controlsWithoutDescription<QPushButton>(*m_window), QStringList());
        QCOMPARE(support::controlsThatTabMisses(*m_window), QStringList());
    }

    void itsPlaceIsRemembered() {
        m_window->resize(700, 600);
        m_window->hide();
        const ui::StartWindow again(m_commands->actions(), *m_recentFiles);
        QCOMPARE(again.size(), QSize(700, 600));
    }

private:
    std::unique_ptr<ui::RecentFiles> m_recentFiles;
    std::unique_ptr<ui::ApplicationCommands> m_commands;
    std::unique_ptr<ui::StartWindow> m_window;
};

WINDOW_TEST(StartWindowTest, QApplication)
#include "start_window_test.moc"
