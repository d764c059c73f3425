// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <QString>

namespace ui {

/// Which catalogue the runs use and what it holds, as a few lines of plain text. Reads the file.
QString catalogueFacts(const std::string& definitionFilePath);

/// Says that the catalogue cannot be read, which a user must know before a run. Empty when it can.
/// Opens the file but does not read it.
QString catalogueNotice(const std::string& definitionFilePath);

} // namespace ui
