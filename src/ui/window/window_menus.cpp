// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Every document window has the whole menu bar. All windows share the application's commands; those
// of the window are made here. The window validates its own after each change of its state. Tested
// by window_controller_test.cpp.
#include "ui/window/window_menus.h"

#include <QAction>
#include <QCoreApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace ui {
namespace {

QString menuText(const char* text) {
    return QCoreApplication::translate("ui::WindowMenus", text);
}

QAction* command(QMainWindow& window, const QString& title, const QKeySequence& key) {
    auto* action = new QAction(title, &window);
    action->setShortcut(key);
    return action;
}

QAction* command(QMainWindow& window, const char* title, const QKeySequence& key) {
    return command(window, QString::fromUtf8(title), key);
}

void addIfThere(QMenu& menu, QAction* action) {
    if (action != nullptr) {
        menu.addAction(action);
    }
}

QKeySequence controlAnd(Qt::Key key) {
    return {static_cast<int>(Qt::CTRL) | static_cast<int>(key)};
}

std::array<QAction*, 4> jumpsTo(QMainWindow& window) {
    return {command(window, menuText("&Germline DNA"), controlAnd(Qt::Key_1)),
            command(window, menuText("&Somatic DNA"), controlAnd(Qt::Key_2)),
            command(window, menuText("Germline &RNA"), controlAnd(Qt::Key_3)),
            command(window, menuText("Somatic R&NA"), controlAnd(Qt::Key_4))};
}

void fillFileMenu(QMenuBar& bar, const WindowMenus& own, const ApplicationActions& application) {
    QMenu* menu = bar.addMenu(menuText("&File"));
    addIfThere(*menu, application.open);
    if (application.openRecent != nullptr) {
        menu->addMenu(application.openRecent);
    }
    menu->addSeparator();
    menu->addAction(own.saveResult);
    menu->addSeparator();
    menu->addAction(own.close);
    addIfThere(*menu, application.quit);
}

void fillEditMenu(QMenuBar& bar, const WindowMenus& own, const ApplicationActions& application) {
    QMenu* menu = bar.addMenu(menuText("&Edit"));
    menu->addAction(own.copy);
    menu->addAction(own.makeSummaryTable);
    menu->addSeparator();
    addIfThere(*menu, application.preferences);
}

void fillAnalysisMenu(QMenuBar& bar, const WindowMenus& own) {
    QMenu* menu = bar.addMenu(menuText("&Analysis"));
    menu->addAction(own.analyze);
    menu->addAction(own.analyzeAll);
    menu->addAction(own.stop);
    menu->addSeparator();
    menu->addAction(own.showThresholds);
}

void fillViewMenu(QMenuBar& bar, const WindowMenus& own) {
    QMenu* menu = bar.addMenu(menuText("&View"));
    menu->addAction(own.jumpToPatients);
    menu->addSeparator();
    for (QAction* jump : own.jumpToTable) {
        menu->addAction(jump);
    }
}

void fillHelpMenu(QMenuBar& bar, const ApplicationActions& application) {
    QMenu* menu = bar.addMenu(menuText("&Help"));
    addIfThere(*menu, application.help);
    addIfThere(*menu, application.licences);
    addIfThere(*menu, application.about);
}

} // namespace

WindowMenus::WindowMenus(QMainWindow& window, const ApplicationActions& application)
    : saveResult(command(window, titles::kSaveResult, controlAnd(Qt::Key_S))),
      close(command(window, menuText("&Close"), controlAnd(Qt::Key_W))),
      copy(command(window, titles::kCopy, controlAnd(Qt::Key_C))),
      makeSummaryTable(command(window, titles::kMakeSummaryTable, controlAnd(Qt::Key_T))),
      analyze(command(window, titles::kAnalyze, controlAnd(Qt::Key_R))),
      analyzeAll(
          command(window, titles::kAnalyzeAll, QKeySequence(QStringLiteral("Ctrl+Shift+R")))),
      stop(command(window, titles::kStop, Qt::Key_Escape)),
      showThresholds(command(window, titles::kShowThresholds, {})),
      jumpToPatients(command(window, menuText("&Patients"), controlAnd(Qt::Key_0))),
      jumpToTable(jumpsTo(window)),
      showErrorLog(command(window, titles::kShowErrorLog, Qt::Key_F8)) {
    QMenuBar& bar = *window.menuBar();
    fillFileMenu(bar, *this, application);
    fillEditMenu(bar, *this, application);
    fillAnalysisMenu(bar, *this);
    fillViewMenu(bar, *this);
    bar.addMenu(menuText("&Window"))->addAction(showErrorLog);
    fillHelpMenu(bar, application);
}

std::vector<QAction*> WindowMenus::validated() const {
    return {saveResult, copy, makeSummaryTable, analyze, analyzeAll, showThresholds, showErrorLog};
}

} // namespace ui
