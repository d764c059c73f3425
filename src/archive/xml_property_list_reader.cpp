// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Expat reads the markup; this file turns its events into the flat list. XML lets a small file ask
// for much, so two things are refused:
// - A document type may be named, but must declare nothing. Entities, which grow when they are
//   used, could only be declared there.
// - Elements nest 16 deep at most. A keyed archive needs seven.
// Everything else costs as much as the text is long. Numbers are read in the C locale. Tested by
// property_list_test.cpp.

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>

#include <expat.h>

#include "archive/property_list.h"
#include "platform/numbers.h"

namespace archive {

namespace {

using Index = PropertyList::Index;

constexpr std::size_t kDeepestXml = 16;
constexpr std::string_view kUidKey = "CF$UID";

class XmlReader {
public:
    XmlReader() : m_parser(XML_ParserCreate(nullptr), &XML_ParserFree) {
        XML_SetUserData(m_parser.get(), this);
        XML_SetElementHandler(m_parser.get(), &onStart, &onEnd);
        XML_SetCharacterDataHandler(m_parser.get(), &onText);
        XML_SetStartDoctypeDeclHandler(m_parser.get(), &onDoctype);
    }

    platform::Result<PropertyList> read(std::string_view text) {
        constexpr std::size_t kPiece = std::size_t{1} << 20U;
        for (std::size_t at = 0; m_fault.empty();) {
            const std::string_view piece = text.substr(at, kPiece);
            at += piece.size();
            const bool last = at == text.size();
            if (XML_Parse(m_parser.get(), piece.data(), static_cast<int>(piece.size()), last) !=
                XML_STATUS_OK) {
                return platform::Error{m_fault.empty() ? parserFault() : m_fault};
            }
            if (last) {
                break;
            }
        }
        if (!m_fault.empty() || !m_top) {
            return platform::Error{m_fault.empty() ? "it is no property list" : m_fault};
        }
        m_list.top = *m_top;
        return std::move(m_list);
    }

private:
    struct Container {
        bool isDictionary = false;
        std::vector<Index> items;
    };

    static XmlReader& self(void* data) { return *static_cast<XmlReader*>(data); }
    static void onStart(void* data, const XML_Char* name, const XML_Char** /*attributes*/) {
        self(data).start(name);
    }
    static void onEnd(void* data, const XML_Char* name) { self(data).end(name); }
    static void onText(void* data, const XML_Char* text, int length) {
        self(data).m_text.append(text, static_cast<std::size_t>(length));
    }
    static void onDoctype(void* data, const XML_Char*, const XML_Char*, const XML_Char*,
                          int hasInternalSubset) {
        if (hasInternalSubset != 0) {
            self(data).fail("its document type declares entities");
        }
    }

    void start(std::string_view name) {
        if (++m_depth > kDeepestXml) {
            fail("its elements are nested too deeply");
            return;
        }
        m_text.clear();
        if (name == "dict" || name == "array") {
            m_open.push_back({name == "dict", {}});
        }
    }

    void end(std::string_view name) {
        --m_depth;
        if (!m_fault.empty() || name == "plist") {
            return;
        }
        if (name == "dict" || name == "array") {
            const Container container = std::move(m_open.back());
            m_open.pop_back();
            finish(container.isDictionary
                       ? dictionary(container)
                       : PropertyList::Object(PropertyList::Array{container.items}));
        } else {
            finish(scalar(name));
        }
        m_text.clear();
    }

    void finish(PropertyList::Object object) {
        const Index index = m_list.add(std::move(object));
        if (!m_open.empty()) {
            m_open.back().items.push_back(index);
        } else if (!m_top) {
            m_top = index;
        } else {
            fail("it holds more than one object");
        }
    }

    PropertyList::Object dictionary(const Container& container) {
        if (container.items.size() % 2 != 0) {
            fail("a dictionary has a key without a value");
            return PropertyList::Dictionary{};
        }
        PropertyList::Dictionary result;
        for (std::size_t i = 0; i < container.items.size(); i += 2) {
            result.entries.emplace_back(container.items[i], container.items[i + 1]);
        }
        const std::optional<Uid> uid = asUid(result);
        return uid ? PropertyList::Object(*uid) : PropertyList::Object(std::move(result));
    }

    std::optional<Uid> asUid(const PropertyList::Dictionary& dictionary) const {
        if (dictionary.entries.size() != 1) {
            return std::nullopt;
        }
        const auto& [key, value] = dictionary.entries.front();
        const auto* name = std::get_if<std::string>(&m_list.objects[key]);
        const auto* number = std::get_if<std::int64_t>(&m_list.objects[value]);
        if (!name || *name != kUidKey || !number || *number < 0 ||
            *number > std::numeric_limits<std::uint32_t>::max()) {
            return std::nullopt;
        }
        return Uid{static_cast<std::uint32_t>(*number)};
    }

    PropertyList::Object scalar(std::string_view name) {
        if (name == "string" || name == "key") {
            return std::move(m_text);
        }
        if (name == "true" || name == "false") {
            return name == "true";
        }
        if (name == "integer") {
            return integer();
        }
        if (name == "real") {
            return real();
        }
        if (name == "date" || name == "data") {
            return PropertyList::Other{name == "date" ? "a date" : "data"};
        }
        fail("it holds an element <" + std::string(name) + ">");
        return PropertyList::Other{"unknown"};
    }

    PropertyList::Object integer() {
        std::string_view digits = m_text;
        if (!digits.empty() && digits.front() == '+') {
            digits.remove_prefix(1);
        }
        std::int64_t value = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (error == std::errc::invalid_argument || end != digits.data() + digits.size()) {
            fail("\"" + m_text + "\" is not an integer");
        }
        if (error == std::errc::result_out_of_range) {
            return PropertyList::Other{"an integer beyond 64 bits"};
        }
        return value;
    }

    PropertyList::Object real() {
        const platform::ScopedCLocale cLocale;
        char* end = nullptr;
        const double value = std::strtod(m_text.c_str(), &end);
        if (m_text.empty() || *end != '\0') {
            fail("\"" + m_text + "\" is not a real number");
        }
        return value;
    }

    std::string parserFault() const {
        return "line " + std::to_string(XML_GetCurrentLineNumber(m_parser.get())) + ": " +
               XML_ErrorString(XML_GetErrorCode(m_parser.get()));
    }

    void fail(std::string message) {
        if (m_fault.empty()) {
            m_fault = "line " + std::to_string(XML_GetCurrentLineNumber(m_parser.get())) + ": " +
                      std::move(message);
            XML_StopParser(m_parser.get(), XML_FALSE);
        }
    }

    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> m_parser;
    PropertyList m_list;
    std::vector<Container> m_open;
    std::optional<Index> m_top;
    std::string m_text;
    std::string m_fault;
    std::size_t m_depth = 0;
};

} // namespace

platform::Result<PropertyList> readXmlPropertyList(std::string_view text) {
    return XmlReader().read(text);
}

} // namespace archive
