// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "archive/nullable.h"

namespace support {

/// Writes every archived field of a record, and of the records it holds, as text: equal texts mean
/// equal records, and a difference can be read.
class RecordPrinter {
public:
    void print(const archive::Text& text) { m_out << (text ? '"' + *text + '"' : "null"); }
    void print(bool value) { m_out << (value ? "true" : "false"); }
    void print(std::int64_t value) { m_out << value; }
    void print(double value) { m_out << std::hexfloat << value; }

    template <class Record>
    void print(const std::shared_ptr<Record>& record) {
        if (!record) {
            m_out << "null";
            return;
        }
        m_out << Record::kClassName << '{';
        Record::visitFields(*record, *this);
        m_out << '}';
    }

    template <class Record>
    void print(const archive::ListOf<Record>& list) {
        if (!list) {
            m_out << "null";
            return;
        }
        m_out << (list->isGrowable() ? "growable[" : "fixed[");
        for (const auto& item : *list) {
            print(item);
            m_out << "; ";
        }
        m_out << ']';
    }

    template <class Field>
    void operator()(std::string_view key, const Field& field) {
        m_out << key << '=';
        print(field);
        m_out << ' ';
    }

    std::string text() const { return m_out.str(); }

private:
    std::ostringstream m_out;
};

template <class Value>
std::string printed(const Value& value) {
    RecordPrinter printer;
    printer.print(value);
    return printer.text();
}

struct KeyCollector {
    std::vector<std::string> keys;

    template <class Field>
    void operator()(std::string_view key, const Field& /*field*/) {
        keys.emplace_back(key);
    }
};

/// The keys of a record's listing, in order.
template <class Record>
std::vector<std::string> keysOf(const Record& record) {
    KeyCollector collect;
    Record::visitFields(record, collect);
    return collect.keys;
}

} // namespace support
