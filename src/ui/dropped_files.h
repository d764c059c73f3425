// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

class QMimeData;

namespace ui {

/// The local files and folders among what is being dropped.
QStringList droppedFiles(const QMimeData* data);

} // namespace ui
