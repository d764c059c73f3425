// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <QObject>
#include <QPointer>

class QMessageBox;

namespace platform {
class MainQueue;
}

namespace ui {

/// Tells of a settings file that cannot be used or written, in a plain message that holds nobody:
/// a batch may be running. Further messages join the one on screen.
class SettingsTrouble : public QObject {
    Q_OBJECT

public:
    /// `mainQueue` must outlive whoever calls report().
    explicit SettingsTrouble(platform::MainQueue& mainQueue);
    ~SettingsTrouble() override;

    /// Callable from any thread; shown on the main thread later.
    void report(const std::string& message);

private:
    void show(const QString& message);

    platform::MainQueue& m_mainQueue;
    QPointer<QMessageBox> m_box;
};

} // namespace ui
