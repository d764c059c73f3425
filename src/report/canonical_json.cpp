// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// One spelling for each JSON value, so that a digest is a digest of the value. Tested by
// canonical_json_test.cpp, with the examples of the RFC.
#include "report/canonical_json.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <map>

#include <nlohmann/json.hpp>

namespace report {
namespace {

using Json = nlohmann::ordered_json;

/// The bounds within which ECMAScript writes a number without an exponent.
constexpr int kMostDigitsBeforeThePoint = 21;
constexpr int kMostZerosBehindThePoint = 6;

/// The shortest digits d1 d2 … dk of a number that is 0.d1d2…dk times 10 to the power `point`.
struct Digits {
    std::string digits;
    int point = 0;
};

Digits shortestDigits(double number) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                   std::chars_format::scientific);
    const std::string_view written(text.data(), static_cast<std::size_t>(end.ptr - text.data()));
    const std::size_t exponentAt = written.find('e');
    Digits result;
    std::copy_if(written.begin(), written.begin() + static_cast<std::ptrdiff_t>(exponentAt),
                 std::back_inserter(result.digits), [](char c) { return c != '.'; });
    result.point = 1 + std::atoi(std::string(written.substr(exponentAt + 1)).c_str());
    return result;
}

std::string withExponent(const Digits& number) {
    std::string text(1, number.digits.front());
    if (number.digits.size() > 1) {
        text.append(".").append(number.digits, 1);
    }
    const int exponent = number.point - 1;
    return text.append(exponent < 0 ? "e-" : "e+").append(std::to_string(std::abs(exponent)));
}

std::string positiveNumber(double number) {
    const Digits shortest = shortestDigits(number);
    const auto count = static_cast<int>(shortest.digits.size());
    if (shortest.point > kMostDigitsBeforeThePoint || shortest.point <= -kMostZerosBehindThePoint) {
        return withExponent(shortest);
    }
    if (shortest.point <= 0) {
        std::string text = "0.";
        return text.append(static_cast<std::size_t>(-shortest.point), '0').append(shortest.digits);
    }
    if (count <= shortest.point) {
        return std::string(shortest.digits)
            .append(static_cast<std::size_t>(shortest.point - count), '0');
    }
    const auto point = static_cast<std::size_t>(shortest.point);
    return std::string(shortest.digits).insert(point, 1, '.');
}

std::string canonicalObject(const Json& object) {
    std::map<std::string, const Json*> sorted;
    for (const auto& [key, value] : object.items()) {
        sorted.emplace(key, &value);
    }
    std::string text = "{";
    for (const auto& [key, value] : sorted) {
        text += text.size() > 1 ? "," : "";
        text += Json(key).dump() + ":" + canonicalJson(*value);
    }
    return text + "}";
}

std::string canonicalArray(const Json& array) {
    std::string text = "[";
    for (const auto& value : array) {
        text += text.size() > 1 ? "," : "";
        text += canonicalJson(value);
    }
    return text + "]";
}

} // namespace

std::string canonicalNumber(double number) {
    if (number == 0.0) {
        return "0"; // and so is minus zero
    }
    std::string text = number < 0 ? "-" : "";
    return text.append(positiveNumber(std::abs(number)));
}

std::string canonicalJson(const Json& value) {
    if (value.is_object()) {
        return canonicalObject(value);
    }
    if (value.is_array()) {
        return canonicalArray(value);
    }
    if (value.is_number_float() && std::isfinite(value.get<double>())) {
        return canonicalNumber(value.get<double>());
    }
    // Texts, integers, booleans and null have one spelling as it is.
    return value.dump();
}

} // namespace report
