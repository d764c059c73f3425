// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace archive {

/// A text of a record: absent (null) and empty are different values, and an archive keeps them
/// apart. The bytes are kept as they came; only a way out of the process makes them valid UTF-8
/// (utf8.h).
using Text = std::optional<std::string>;

/// The text, an absent one read as empty. The view lives as long as `text`.
inline std::string_view orEmpty(const Text& text) noexcept {
    return text ? std::string_view(*text) : std::string_view();
}

/// A copy of the text, an absent one read as empty.
inline std::string stringOrEmpty(const Text& text) {
    return text.value_or(std::string());
}

} // namespace archive
