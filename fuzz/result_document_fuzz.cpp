// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Opens arbitrary bytes as a result document. Whatever opens must save, and what was saved must
// open again as the same document. The sanitizers and the memory limit of the run judge the rest.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "require.h"

#include "document/result_document.h"

namespace {

using fuzzing::require;

/// The bytes that a document is saved as.
std::string saved(const run::MainMutDictionary& dictionary) {
    auto bytes = document::encodeResultDocument(dictionary);
    require(bytes.ok(), "what was opened does not save", bytes.ok() ? "" : bytes.error().message);
    return std::move(bytes).value();
}

} // namespace

// The fuzzer's library calls it by this name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const auto opened = document::decodeResultDocument(input);
    if (!opened) {
        return 0;
    }
    // A file's unreferenced objects allow it a larger expansion than the same records have that are
    // saved without them.
    constexpr std::size_t kMost = document::kRecordsOfAnyDocument;
    const auto& patients = opened.value().summaryForEachPatientMutAr;
    if (document::expansionOf(patients, {kMost, static_cast<std::size_t>(-1)}).records > kMost) {
        return 0;
    }
    const std::string bytes = saved(opened.value());
    const auto again = document::decodeResultDocument(bytes);
    require(again.ok(), "what was saved does not open", again.ok() ? "" : again.error().message);
    require(saved(again.value()) == bytes, "what was saved opens as something else");
    return 0;
}
