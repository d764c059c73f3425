// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Result documents come by mail and from other machines, so a file is not trusted. A keyed archive
// may share records: a few kilobytes can stand for billions of rows, which tables and exports would
// walk. expansionOf() walks the lists as they would, stops at a limit, and a document beyond it is
// refused. Memory is bounded by the file's size; the walk, by the limit. The limits stand far above
// whatever an analysis can save.
//
// Tested by result_document_test.cpp, document_expansion_test.cpp,
// result_document_interchange_test.cpp (documents of other archivers),
// result_document_property_test.cpp (random ones) and a fuzzer. docs/formats/result-document.md
// describes the file.
#include "document/result_document.h"

#include <memory>

#include "archive/keyed_archive.h"
#include "archive/keyed_archiver.h"
#include "archive/keyed_unarchiver.h"
#include "catalogue/mut_domain.h"
#include "platform/files.h"

namespace document {

namespace {

constexpr std::string_view kPatientsKey = "summaryForEachPatientMutAr";
constexpr std::string_view kSelectedRowKey = "selectedPatientRowNo";

// Equal texts are stored once, so the records may hold more bytes than the file. The most that an
// analysis can make: six texts of a mutation with up to 999 bytes each, no byte of which is UTF-8,
// so that each is saved as three, in a record that has 82 bytes of its own.
constexpr std::size_t kTextBytesPerByte = 256;

// An analysis shares no records between lists: each stands in the file as an object.
constexpr std::size_t kRecordsPerObject = 10;

// Beside kRecordsOfAnyDocument, with a kilobyte for each.
constexpr std::size_t kTextBytesOfAnyDocument = kRecordsOfAnyDocument * 1000;

/// Walks the lists as exports do. Every step adds to `records`, so the walk ends soon after the
/// limit, however often a file repeats its records.
class ExpansionCounter {
public:
    explicit ExpansionCounter(const Expansion& most) : m_most(most) {}

    const Expansion& counted() const { return m_counted; }

    template <class Record>
    void count(const archive::ListOf<Record>& list) {
        for (const auto& record : archive::orEmpty(list)) {
            if (m_counted.records > m_most.records || m_counted.textBytes > m_most.textBytes) {
                return;
            }
            ++m_counted.records;
            Record::visitFields(*record, *this);
        }
    }

    void operator()(std::string_view /*key*/, const archive::Text& text) {
        m_counted.textBytes += text ? text->size() : 0;
    }
    void operator()(std::string_view key, const std::shared_ptr<catalogue::MutDomain>& domain) {
        if (domain) {
            (*this)(key, domain->name);
        }
    }
    template <class Record>
    void operator()(std::string_view /*key*/, const archive::ListOf<Record>& list) {
        count(list);
    }
    template <class Number>
    void operator()(std::string_view /*key*/, const Number& /*number*/) {}

private:
    const Expansion m_most;
    Expansion m_counted;
};

platform::Status checkExpansion(const run::PatientList& patients, std::size_t objects,
                                std::size_t bytes) {
    const Expansion most = {kRecordsPerObject * objects + kRecordsOfAnyDocument,
                            kTextBytesPerByte * bytes + kTextBytesOfAnyDocument};
    const Expansion found = expansionOf(patients, most);
    const auto refusal = [&](std::size_t limit, const std::string& what) {
        return platform::Error{"its lists repeat records: they lead to more than " +
                               std::to_string(limit) + " " + what};
    };
    if (found.records > most.records) {
        return refusal(most.records,
                       "patients, domains, mutations and rows, the most that is read from " +
                           std::to_string(objects) + " objects");
    }
    if (found.textBytes > most.textBytes) {
        return refusal(most.textBytes, "bytes of text, the most that is read from " +
                                           std::to_string(bytes) + " bytes");
    }
    return {};
}

} // namespace

Expansion expansionOf(const run::PatientList& patients, const Expansion& most) {
    ExpansionCounter counter(most);
    counter.count(patients);
    return counter.counted();
}

platform::Result<std::string> encodeResultDocument(const run::MainMutDictionary& dictionary) {
    archive::KeyedArchiver archiver;
    const archive::Uid root = archiver.encodeDictionary([&](archive::ArchiveDictionary& entries) {
        const archive::Uid patientsKey = archiver.encodeText(kPatientsKey);
        const archive::Uid rowKey = archiver.encodeText(kSelectedRowKey);
        entries.entries.emplace_back(patientsKey,
                                     archiver.encode(dictionary.summaryForEachPatientMutAr));
        entries.entries.emplace_back(rowKey,
                                     archiver.encodeNumber(dictionary.selectedPatientRowNo));
    });
    return archive::writeKeyedArchive(archiver.takeGraph(root));
}

platform::Result<run::MainMutDictionary> decodeResultDocument(std::string_view bytes) {
    const auto graph = archive::readKeyedArchive(bytes);
    if (!graph) {
        return graph.error();
    }
    archive::KeyedUnarchiver unarchiver(
        graph.value(),
        {.listElements = bytes.size(), .textBytes = kTextBytesPerByte * bytes.size()});
    run::MainMutDictionary dictionary;
    const archive::Uid root = graph.value().root;
    unarchiver.decode(unarchiver.dictionaryValue(root, kPatientsKey),
                      dictionary.summaryForEachPatientMutAr);
    unarchiver.decode(unarchiver.dictionaryValue(root, kSelectedRowKey),
                      dictionary.selectedPatientRowNo);
    if (!unarchiver.status().ok()) {
        return unarchiver.status().error();
    }
    if (auto bounded = checkExpansion(dictionary.summaryForEachPatientMutAr,
                                      graph.value().objects.size(), bytes.size());
        !bounded) {
        return bounded.error();
    }
    if (!dictionary.summaryForEachPatientMutAr) {
        dictionary.summaryForEachPatientMutAr.emplace();
    }
    return dictionary;
}

platform::Result<run::MainMutDictionary> readResultDocument(const std::string& path) {
    const auto bytes = platform::readWholeFile(path, kLargestResultDocument);
    if (!bytes) {
        return bytes.error();
    }
    auto dictionary = decodeResultDocument(bytes.value());
    if (!dictionary) {
        return platform::Error{path + ": " + dictionary.error().message};
    }
    return dictionary;
}

} // namespace document
