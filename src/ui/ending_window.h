// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

namespace ui {

/// Says that the program ends as soon as the running patient is done. There is nothing to do in it,
/// and closing it changes nothing.
class EndingWindow : public QWidget {
    Q_OBJECT

public:
    EndingWindow();
};

} // namespace ui
