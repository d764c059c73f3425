// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "archive/nullable.h"

/// Small records with a field of every kind, and graphs around them.
namespace archive_records {

/// A record of the other class that a record refers to.
struct Leaf {
    static constexpr std::string_view kClassName = "Leaf";

    archive::Text name;

    template <class Self, class Visitor>
    static void visitFields(Self& self, Visitor& visit) {
        visit("name", self.name);
    }
    static std::shared_ptr<Leaf> forDecoding() { return std::make_shared<Leaf>(); }
};

inline std::shared_ptr<Leaf> leaf(const char* name) {
    auto made = std::make_shared<Leaf>();
    made->name = name;
    return made;
}

struct Everything {
    static constexpr std::string_view kClassName = "Everything";

    archive::Text text;
    bool boolean = false;
    std::int64_t integer = 0;
    double real = 0.0;
    std::shared_ptr<Leaf> record;
    archive::ListOf<Leaf> list;

    template <class Self, class Visitor>
    static void visitFields(Self& self, Visitor& visit) {
        visit("text", self.text);
        visit("boolean", self.boolean);
        visit("integer", self.integer);
        visit("real", self.real);
        visit("record", self.record);
        visit("list", self.list);
    }
    /// Values that no archive gives, to show that each is overwritten.
    static std::shared_ptr<Everything> forDecoding() {
        auto record = std::make_shared<Everything>();
        record->text = "left over";
        record->boolean = true;
        record->integer = 99;
        record->real = 99.5;
        record->record = leaf("left over");
        record->list.emplace();
        return record;
    }
};

/// A record that can lead back to itself.
struct Link {
    static constexpr std::string_view kClassName = "Link";

    std::shared_ptr<Link> next;
    archive::ListOf<Link> list;

    template <class Self, class Visitor>
    static void visitFields(Self& self, Visitor& visit) {
        visit("next", self.next);
        visit("list", self.list);
    }
    static std::shared_ptr<Link> forDecoding() { return std::make_shared<Link>(); }
};

} // namespace archive_records
