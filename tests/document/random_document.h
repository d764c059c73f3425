// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "platform/unicode.h"
#include "run/main_routine.h"

namespace document {

/// Makes documents of random records: nulls, texts of every kind, extreme numbers, fixed lists,
/// domains and mutations that are shared. The same seed makes the same document.
class RandomDocument {
public:
    enum class Texts {
        asTheyAre,
        valid, ///< as they leave the process: U+FFFD in place of what is not UTF-8
    };

    explicit RandomDocument(std::uint64_t seed, Texts texts = Texts::asTheyAre)
        : m_random(seed), m_texts(texts) {}

    run::MainMutDictionary make() {
        run::MainMutDictionary made;
        fill(made.selectedPatientRowNo);
        std::vector<std::shared_ptr<run::SummaryForEachPatient>> patients;
        for (std::uint64_t i = upTo(4); i > 0; --i) {
            patients.push_back(record<run::SummaryForEachPatient>());
        }
        made.summaryForEachPatientMutAr =
            archive::RecordList<run::SummaryForEachPatient>::of(patients, upTo(3) > 0);
        return made;
    }

    template <class Field>
    void operator()(std::string_view /*key*/, Field& field) {
        fill(field);
    }

private:
    std::uint64_t upTo(std::uint64_t most) { return m_random() % (most + 1); }

    void fill(bool& value) { value = upTo(1) == 1; }
    void fill(std::int64_t& value) {
        using Limits = std::numeric_limits<std::int64_t>;
        const std::int64_t values[] = {0,
                                       1,
                                       -1,
                                       255,
                                       256,
                                       65536,
                                       4294967296,
                                       Limits::min(),
                                       Limits::max(),
                                       static_cast<std::int64_t>(m_random())};
        value = values[upTo(std::size(values) - 1)];
    }
    void fill(double& value) {
        using Limits = std::numeric_limits<double>;
        const double values[] = {0.0,
                                 -0.0,
                                 0.001,
                                 1.0,
                                 -1e300,
                                 Limits::max(),
                                 Limits::min(),
                                 Limits::denorm_min(),
                                 static_cast<double>(m_random()) / 3.0};
        value = values[upTo(std::size(values) - 1)];
    }
    void fill(archive::Text& value) {
        using namespace std::string_literals;
        const archive::Text values[] = {std::nullopt,
                                        "",
                                        "KRAS_G12D",
                                        "Z\xC3\xBCrich",
                                        "\xF0\x9F\xA7\xAC",
                                        "a\xFFz\xC3"s,
                                        "nul\0nul"s,
                                        "$null",
                                        "\t\r\n%n<b>",
                                        std::string(3'000, 'A'),
                                        std::to_string(upTo(1'000'000)),
                                        "\xED\xA0\x80 lone surrogate",
                                        "\xEF\xBF\xBD"};
        value = values[upTo(std::size(values) - 1)];
        if (value && m_texts == Texts::valid) {
            value = platform::toValidUtf8(*value);
        }
    }

    /// A record made before, now and then; null only where `field` is no element of a list.
    template <class Record>
    void fill(std::shared_ptr<Record>& field) {
        field = upTo(4) == 0 ? nullptr : newOrShared<Record>();
    }
    template <class Record>
    void fill(archive::ListOf<Record>& list) {
        list.reset();
        if (upTo(6) == 0) {
            return;
        }
        std::vector<std::shared_ptr<Record>> items;
        for (std::uint64_t i = upTo(3); i > 0; --i) {
            items.push_back(newOrShared<Record>());
        }
        list = archive::RecordList<Record>::of(std::move(items), upTo(3) > 0);
    }

    template <class Record>
    std::shared_ptr<Record> newOrShared() {
        auto& known = m_known[std::string(Record::kClassName)];
        if (!known.empty() && upTo(2) == 0) {
            return std::static_pointer_cast<Record>(known[upTo(known.size() - 1)]);
        }
        auto made = record<Record>();
        known.push_back(made);
        return made;
    }
    template <class Record>
    std::shared_ptr<Record> record() {
        auto made = Record::forDecoding();
        Record::visitFields(*made, *this);
        return made;
    }

    std::mt19937_64 m_random;
    Texts m_texts;
    std::map<std::string, std::vector<std::shared_ptr<void>>> m_known;
};

/// Numbers the records of a document by the order in which they are met, each place of a shared one
/// with the same number: two documents share alike when their numbers are alike.
class IdentityCollector {
public:
    template <class Field>
    void operator()(std::string_view /*key*/, const Field& field) {
        collect(field);
    }
    template <class Record>
    void collect(const std::shared_ptr<Record>& record) {
        const auto [known, isNew] = m_numbers.try_emplace(record.get(), m_numbers.size());
        met.push_back(known->second);
        if (record && isNew) {
            Record::visitFields(*record, *this);
        }
    }
    template <class Record>
    void collect(const archive::ListOf<Record>& list) {
        for (const auto& item : archive::orEmpty(list)) {
            collect(item);
        }
    }
    template <class Scalar>
    void collect(const Scalar& /*value*/) {}

    std::vector<std::size_t> met;

private:
    std::map<const void*, std::size_t> m_numbers;
};

} // namespace document
