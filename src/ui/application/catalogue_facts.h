// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <QString>

namespace ui {

/// Which catalogue the runs use and what it holds, as a few lines of plain text. Reads the file.
QString catalogueFacts(const std::string& definitionFilePath);

/// What a user must know before a run: that the catalogue cannot be read. Empty when it can.
QString catalogueNotice(const std::string& definitionFilePath);

} // namespace ui
