// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/qt_caller_hold.h"

#include <exception>
#include <thread>

#include <QCursor>
#include <QEvent>
#include <QEventLoop>
#include <QGuiApplication>
#include <QMetaObject>

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

/// Drops user input while it lives. A filter, since excluding input from the event loop only delays
/// it, and not every platform's input goes through that loop's queue.
class InputStop : public QObject {
public:
    InputStop() {
        QCoreApplication::instance()->installEventFilter(this);
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    }
    ~InputStop() override { QGuiApplication::restoreOverrideCursor(); }
    InputStop(const InputStop&) = delete;
    InputStop& operator=(const InputStop&) = delete;

    bool eventFilter(QObject*, QEvent* event) override {
        if (!isUserInput(*event)) {
            return false;
        }
        event->ignore();
        return true;
    }
};

} // namespace

void QtCallerHold::hold(const platform::Task& work) {
    const InputStop inputStop;
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
    // Comes back early when the application is told to quit; the work has to end all the same
    // before the caller goes on.
    loop.exec();
    worker.join();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

} // namespace ui
