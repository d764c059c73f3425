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

/// How one mutation came about, for whoever checks a definition file. Lines count from 1, as
/// editors do.
struct MutationSource {
    std::shared_ptr<Mutation> mutation;
    /// Null for a mutation before any domain header, which is dropped.
    std::shared_ptr<MutDomain> domain;
    std::size_t headerLine = 0;
    /// Fields of the header that the scan assigned, 0 to 8. A text field that was not assigned
    /// holds what its buffer held before; a number that was not assigned is 0.
    int fieldsScanned = 0;
    /// What follows the eighth field, which no rule reads: ".5" where the integer is written 30.5.
    std::string textAfterFields;
    /// The sequence line held no token, so that the sequence is what the first field's buffer held.
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
    /// What follows the third token, which no rule reads.
    std::string textAfterTokens;
};

/// A line that is ignored, though it is a header but for what stands before its first character.
struct IgnoredHeader {
    std::size_t line = 0;
    /// A UTF-8 byte order mark stands before it, else blanks only.
    bool afterByteOrderMark = false;
    /// The line from its '*' or '>' on.
    std::string text;
};

/// A mutation with which no run may start: its core is not defined (and left empty), or a number of
/// it is not finite.
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
    /// The line that was too long and so ended loading; 0 when there was none. Lines are those of
    /// the file: the rest of a sequence line that was cut keeps that line's number.
    std::size_t overlongLine = 0;
    /// Lines that the file holds up to where loading ended.
    std::size_t lineCount = 0;
    bool endMarkerSeen = false;
};

/// Loads the definition file under `path`, which also names it in messages. Returns why the file
/// cannot be opened or read to its end; anything else that is wrong with it is in the catalogue.
platform::Result<Catalogue> loadDefinitionFile(const std::string& path);

/// The same from a stream; `name` names it in messages.
platform::Result<Catalogue> loadDefinition(platform::ByteStream& stream, const std::string& name);

} // namespace catalogue
