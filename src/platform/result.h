// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace platform {

/// The finished, readable message of a failure. It names the file, the place, what was expected and
/// what was met.
struct Error {
    std::string message;
};

/// A value or the reason why there is none. Failures that a caller can expect are values;
/// exceptions are for what nobody can expect, such as memory that runs out.
template <class Value>
class Result {
public:
    Result(Value value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_state(std::in_place_index<1>, std::move(error)) {}

    bool ok() const noexcept { return m_state.index() == 0; }
    explicit operator bool() const noexcept { return ok(); }

    /// REQUIRES: ok().
    Value& value() & { return std::get<0>(m_state); }
    const Value& value() const& { return std::get<0>(m_state); }
    Value&& value() && { return std::get<0>(std::move(m_state)); }

    /// REQUIRES: !ok().
    const Error& error() const { return std::get<1>(m_state); }

private:
    std::variant<Value, Error> m_state;
};

/// Success, or the reason of a failure.
class Status {
public:
    Status() = default;
    Status(Error error) : m_error(std::move(error)), m_ok(false) {}

    bool ok() const noexcept { return m_ok; }
    explicit operator bool() const noexcept { return m_ok; }
    /// REQUIRES: !ok().
    const Error& error() const { return m_error; }

private:
    Error m_error;
    bool m_ok = true;
};

} // namespace platform
