// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The process keeps the locale of its user, for the texts that it shows. Numbers in files and
// reports need the C locale: each thread switches to it for a moment, and no other thread notices.
// Tested by numbers_test.cpp.
#include "platform/numbers.h"

#include <clocale>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace platform {
namespace {

locale_t cLocale() {
    // One for the life of the process: threads may use it until the very end.
    static const locale_t locale = [] {
        const locale_t made = ::newlocale(LC_ALL_MASK, "C", nullptr);
        if (made == nullptr) {
            // Numbers scanned in another locale could turn every call round: better no results.
            std::fputs("vexta: the C locale cannot be made\n", stderr);
            std::abort();
        }
        return made;
    }();
    return locale;
}

} // namespace

ScopedCLocale::ScopedCLocale() : m_previous(::uselocale(cLocale())) {}

ScopedCLocale::~ScopedCLocale() {
    ::uselocale(static_cast<locale_t>(m_previous));
}

std::string formatted(const char* format, ...) {
    const ScopedCLocale inCLocale;
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    va_start(arguments, format);
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    va_end(arguments);
    return text;
}

} // namespace platform
