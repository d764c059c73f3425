// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/mut_domain.h"
#include "platform/byte_stream.h"
#include "platform/result.h"

namespace catalogue {

/// Fields of a whole mutation header.
inline constexpr int kMutationFields = 8;

/// Where a mutation comes from, for the check of a definition file. Lines count from 1, as in
/// editors.
struct MutationSource {
    std::shared_ptr<Mutation> mutation;
    /// Null for a mutation before any domain header, which is dropped.
    std::shared_ptr<MutDomain> domain;
    std::size_t headerLine = 0;
    /// Fields of the header that the scan assigned, 0 to 8. A text field beyond them holds what its
    /// buffer held before; a number is 0.
    int fieldsScanned = 0;
    /// The text behind the eighth field, which is ignored: ".5" of the integer 30.5.
    std::string textAfterFields;
    /// The sequence line held no token, so the sequence is what the first field's buffer held.
    bool sequenceMissing = false;
    /// The sequence line was cut at the limit.
    bool sequenceCut = false;
};

struct DomainSource {
    std::shared_ptr<MutDomain> domain;
    std::size_t headerLine = 0;
    /// Tokens of the header that the scan assigned, 0 to 3, and the flag word as it stands.
    int tokensScanned = 0;
    std::string flagWord;
    /// The text behind the third token, which is ignored.
    std::string textAfterTokens;
};

/// An ignored line that would be a header without the blanks or the byte order mark before it.
struct IgnoredHeader {
    std::size_t line = 0;
    /// Whether a UTF-8 byte order mark stands before it, or blanks alone.
    bool afterByteOrderMark = false;
    /// The line from its '*' or '>' on.
    std::string text;
};

/// A mutation that keeps every run from starting: its core is not defined (and left empty), or one
/// of its numbers is not finite.
struct CatalogueFault {
    std::size_t line = 0;
    /// The finished line for an error log, without a line feed: definition file, line number,
    /// mutation and reasons.
    std::string message;
    /// The same without file and line.
    std::string reason;
};

/// What a definition file holds.
struct Catalogue {
    /// Never null. Domains and mutations in file order, cores and wildcard flags derived.
    MutDomains domains;
    std::vector<CatalogueFault> faults;

    std::vector<DomainSource> domainSources;
    /// Every mutation header of the file, also of dropped mutations, in file order.
    std::vector<MutationSource> mutationSources;
    std::vector<IgnoredHeader> ignoredHeaders;
    /// The over-long line that ended loading; 0 when there was none.
    std::size_t overlongLine = 0;
    /// Lines of the file up to where loading ended.
    std::size_t lineCount = 0;
    bool endMarkerSeen = false;
    /// SHA-256 of the whole file's bytes as 64 hexadecimal digits. Only loadDefinitionFile() fills
    /// it.
    std::string digest;
};

/// Loads the definition file under `path`, which also names it in messages. Returns why the file
/// cannot be opened or read to its end; anything else that is wrong with it is in the catalogue.
platform::Result<Catalogue> loadDefinitionFile(const std::string& path);

/// The same from a stream; `name` names it in messages.
platform::Result<Catalogue> loadDefinition(platform::ByteStream& stream, const std::string& name);

} // namespace catalogue
