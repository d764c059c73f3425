// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/result_document.h"

#include "platform/keyed_archive_file.h"
#include "platform/keyed_archiver.h"
#include "platform/keyed_unarchiver.h"

namespace document {

namespace {

constexpr std::string_view kPatientsKey = "summaryForEachPatientMutAr";
constexpr std::string_view kSelectedRowKey = "selectedPatientRowNo";

// Equal texts and shared records are stored once, so a document's records may hold more than its
// file does; an honest one stays far below this.
constexpr std::size_t kTextBytesPerByte = 64;

} // namespace

platform::Result<std::string> encodeResultDocument(const run::MainMutDictionary& dictionary) {
    platform::KeyedArchiver archiver;
    const platform::Uid root = archiver.encodeDictionary([&](platform::ArchiveDictionary& entries) {
        const platform::Uid patientsKey = archiver.encodeText(kPatientsKey);
        const platform::Uid rowKey = archiver.encodeText(kSelectedRowKey);
        entries.entries.emplace_back(patientsKey,
                                     archiver.encode(dictionary.summaryForEachPatientMutAr));
        entries.entries.emplace_back(rowKey,
                                     archiver.encodeNumber(dictionary.selectedPatientRowNo));
    });
    return platform::writeKeyedArchive(archiver.takeGraph(root));
}

platform::Result<run::MainMutDictionary> decodeResultDocument(std::string_view bytes) {
    const auto graph = platform::readKeyedArchive(bytes);
    if (!graph) {
        return graph.error();
    }
    platform::KeyedUnarchiver unarchiver(
        graph.value(),
        {.listElements = bytes.size(), .textBytes = kTextBytesPerByte * bytes.size()});
    run::MainMutDictionary dictionary;
    const platform::Uid root = graph.value().root;
    unarchiver.decode(unarchiver.dictionaryValue(root, kPatientsKey),
                      dictionary.summaryForEachPatientMutAr);
    unarchiver.decode(unarchiver.dictionaryValue(root, kSelectedRowKey),
                      dictionary.selectedPatientRowNo);
    if (!unarchiver.status().ok()) {
        return unarchiver.status().error();
    }
    if (!dictionary.summaryForEachPatientMutAr) {
        dictionary.summaryForEachPatientMutAr.emplace();
    }
    return dictionary;
}

} // namespace document
