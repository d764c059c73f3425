// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// A nested event loop keeps the windows alive while a thread does the work; the caller's stack
// waits below it. Everything that runs in that loop meets a program in the middle of a command,
// hence the filter that drops user input, and isHolding() for those who come from elsewhere, such
// as files from a second start. Holds may nest: over() comes with the end of the outermost one.
// Tested by qt_caller_hold_test.cpp.
#include "ui/application/qt_caller_hold.h"

#include <exception>
#include <thread>

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QEventLoop>
#include <QMessageBox>
#include <QMetaObject>
#include <QScopeGuard>
#include <QWidget>
#include <QWindow>

namespace ui {
namespace {

bool isUserInput(const QEvent& event) {
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

/// Whether the receiver is an application-modal message box or a part of one.
bool belongsToModalBox(const QObject* receiver) {
    const auto* box = qobject_cast<const QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || box->windowModality() != Qt::ApplicationModal) {
        return false;
    }
    const auto* widget = qobject_cast<const QWidget*>(receiver);
    return widget == nullptr ? receiver == box->windowHandle() : widget->window() == box;
}

/// Drops user input while it lives. It is a filter on the application, since an event loop that
/// excludes input only delays it, and some platforms deliver input past the loop's queue.
class InputStop : public QObject {
public:
    InputStop() {
        QCoreApplication::instance()->installEventFilter(this);
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    }
    ~InputStop() override { QGuiApplication::restoreOverrideCursor(); }
    InputStop(const InputStop&) = delete;
    InputStop& operator=(const InputStop&) = delete;

    bool eventFilter(QObject* receiver, QEvent* event) override {
        if (!isUserInput(*event) || belongsToModalBox(receiver)) {
            return false;
        }
        event->ignore();
        return true;
    }
};

} // namespace

void QtCallerHold::hold(const platform::Task& work) {
    const InputStop inputStop;
    ++m_holds;
    const auto release = qScopeGuard([this] {
        if (--m_holds == 0) {
            Q_EMIT over();
        }
    });
    QEventLoop loop;
    std::exception_ptr failure;
    std::jthread worker([&] {
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    // The loop returns early when the application is told to quit. The work must still end before
    // the caller goes on.
    loop.exec();
    worker.join();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

} // namespace ui
