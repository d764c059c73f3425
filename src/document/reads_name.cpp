// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Names are taken apart from their end, where the fields are known: what is left in front is the
// sample, and it may hold underscores, full stops and an "_S" of its own. Tested by
// reads_name_test.cpp.
#include "document/reads_name.h"

#include <algorithm>
#include <array>

namespace document {
namespace {

constexpr std::array<std::string_view, 4> kEndings = {".fastq.gz", ".fq.gz", ".fastq", ".fq"};
constexpr std::size_t kMostDigits = 18;

bool endsWith(std::string_view text, std::string_view end) noexcept {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// What stands behind the last underscore; empty where there is none or nothing before it.
std::string_view lastField(std::string_view stem) noexcept {
    const std::size_t underscore = stem.rfind('_');
    return underscore == std::string_view::npos || underscore == 0 ? std::string_view()
                                                                   : stem.substr(underscore + 1);
}

void dropLastField(std::string_view& stem) noexcept {
    stem.remove_suffix(lastField(stem).size() + 1);
}

bool isReadMark(std::string_view field) noexcept {
    return field == "R1" || field == "R2";
}

/// Takes "_<letter><digits>" off the end; its digits, or nothing where it does not stand there.
std::string takeNumbered(std::string_view& stem, char letter) {
    const std::string_view field = lastField(stem);
    if (field.empty() || field.front() != letter || !isNumber(field.substr(1))) {
        return {};
    }
    std::string digits(field.substr(1));
    dropLastField(stem);
    return digits;
}

} // namespace

std::optional<ReadsName> readsNameOf(std::string_view name) {
    const auto* ending = std::find_if(kEndings.begin(), kEndings.end(),
                                      [&](std::string_view each) { return endsWith(name, each); });
    if (ending == kEndings.end()) {
        return std::nullopt;
    }
    ReadsName parts;
    parts.ending = *ending;
    std::string_view stem = name.substr(0, name.size() - ending->size());
    std::string_view field = lastField(stem);
    if (isNumber(field)) {
        std::string_view before = stem;
        dropLastField(before);
        if (isReadMark(lastField(before))) {
            parts.part = field;
            stem = before;
            field = lastField(stem);
        }
    }
    parts.hasR = isReadMark(field);
    if (!parts.hasR && field != "1" && field != "2") {
        return std::nullopt;
    }
    const std::size_t mark = stem.size() - 1;
    parts.read = stem[mark] - '0';
    parts.mate = name;
    parts.mate[mark] = parts.read == 1 ? '2' : '1';
    dropLastField(stem);
    parts.lane = takeNumbered(stem, 'L');
    parts.number = takeNumbered(stem, 'S');
    parts.sample = stem;
    return parts;
}

bool isNumber(std::string_view text) noexcept {
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](char letter) { return letter >= '0' && letter <= '9'; });
}

std::string_view withoutLeadingZeros(std::string_view digits) noexcept {
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

bool isPatientNumber(std::string_view text) noexcept {
    return isNumber(text) && text.front() != '0' && text.size() <= kMostDigits;
}

std::string_view withoutGz(std::string_view name) noexcept {
    return endsWith(name, ".gz") ? name.substr(0, name.size() - 3) : name;
}

} // namespace document
