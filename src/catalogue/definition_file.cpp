// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The loader of definition files (docs/formats/definition-file.md).
//
// Laboratories' files were written for a C scan, and its quirks are part of the format: a field
// that a header does not give keeps what its buffer held before. So the C scan itself splits the
// headers, into four buffers that live as long as the file is read. Every line fits a buffer, so
// the scan needs no field widths. Sequences, which are nearly all of a file, are split many letters
// at a time.
//
// The loader never refuses what it reads. It notes where each record comes from and what was odd,
// and checkCatalogue() judges. Tested by definition_file_test.cpp, definition_faults_test.cpp,
// definition_robustness_test.cpp and the fuzzer definition_file_fuzz.
#include "catalogue/definition_file.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

#include "catalogue/core_sequence.h"
#include "catalogue/domain_words.h"
#include "platform/byte_stream.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/sha256.h"

namespace catalogue {
namespace {

/// A line of this many bytes or more is over-long.
constexpr std::ptrdiff_t kLineLimit = 999;
constexpr std::size_t kTokenBufferSize = 1008;
static_assert(kTokenBufferSize > static_cast<std::size_t>(kLineLimit));
static_assert(std::numeric_limits<long>::max() == std::numeric_limits<std::int64_t>::max(),
              "the scan of read counts needs a long of 64 bits");

constexpr int kDomainTokens = 3;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\v\f";
/// What parts the tokens of a scan in the C locale.
constexpr const char* kScanBlanks = " \t\n\v\f\r";

constexpr std::size_t kDomainsExpected = 50;
constexpr std::size_t kMutationsExpected = 3;

/// The lines of the file as C strings, with their numbers in the file. The rest of a line that was
/// cut at the limit comes next and keeps its number.
class Lines {
public:
    explicit Lines(platform::ByteStream& stream) : m_stream(stream) {}

    /// Reads the next line. Returns whether there was a whole one. If not, text() is the start of
    /// an over-long line, or empty.
    bool readNext() {
        const int first = m_stream.peek();
        if (first != platform::ByteStream::kEnd && !m_cut) {
            ++m_number;
        }
        const bool whole =
            platform::readLineFromStream(m_text.data(), kLineLimit, m_stream) != nullptr;
        // A lone CR that ends the stream is no line, but not an over-long one either.
        m_cut = !whole && first != platform::ByteStream::kEnd && first != '\r';
        return whole;
    }

    const char* text() const noexcept { return m_text.data(); }
    std::size_t number() const noexcept { return m_number; }
    /// Whether the line last read was cut at the limit.
    bool wasCut() const noexcept { return m_cut; }

private:
    platform::ByteStream& m_stream;
    std::array<char, kLineLimit + 1> m_text{};
    std::size_t m_number = 0;
    bool m_cut = false;
};

class Loader {
public:
    explicit Loader(platform::ByteStream& stream) : m_lines(stream) {
        m_catalogue.domains = archive::RecordList<MutDomain>::withCapacity(kDomainsExpected);
    }

    Catalogue load() {
        const platform::ScopedCLocale numbersWithPoint;
        while (!m_catalogue.endMarkerSeen && m_lines.readNext()) {
            readEntry();
        }
        m_catalogue.overlongLine = m_lines.wasCut() ? m_lines.number() : 0;
        m_catalogue.lineCount = m_lines.number();
        return std::move(m_catalogue);
    }

private:
    using TokenBuffer = std::array<char, kTokenBufferSize>;

    /// The first character of a line tells what it is.
    void readEntry() {
        switch (m_lines.text()[0]) {
        case '*':
            readDomain();
            break;
        case '>':
            readMutation();
            break;
        case '/':
            m_catalogue.endMarkerSeen = std::strcmp(m_lines.text(), "//EntryEnds") == 0;
            break;
        default:
            noteIgnoredHeader();
            break;
        }
    }

    void noteIgnoredHeader();

    void readDomain();
    void readMutation();
    void scanMutationHeader(Mutation& mutation, MutationSource& source);
    static bool scanToken(const char* text, TokenBuffer& token);
    void readSequence(Mutation& mutation, MutationSource& source);

    Lines m_lines;
    Catalogue m_catalogue;
    std::shared_ptr<MutDomain> m_currentDomain;
    /// Deliberate: shared by both kinds of headers and by the sequence lines, and cleared by domain
    /// headers only (the first three), so that a field that is not given carries over.
    TokenBuffer m_token1{};
    TokenBuffer m_token2{};
    TokenBuffer m_token3{};
    TokenBuffer m_token4{};
};

/// Deliberate: blanks or a byte order mark before a header make it an ignored line. The check alone
/// reads these notes.
void Loader::noteIgnoredHeader() {
    std::string_view text = m_lines.text();
    const bool hasMark = text.substr(0, kByteOrderMark.size()) == kByteOrderMark;
    text.remove_prefix(hasMark ? kByteOrderMark.size() : 0);
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    if (!text.empty() && (text.front() == '*' || text.front() == '>')) {
        m_catalogue.ignoredHeaders.push_back({m_lines.number(), hasMark, std::string(text)});
    }
}

void Loader::readDomain() {
    m_token1[0] = m_token2[0] = m_token3[0] = '\0';
    const char* const header = m_lines.text() + 1;
    int scannedBytes = 0;
    const int tokens = std::sscanf(header, "%s %s %s%n", m_token1.data(), m_token2.data(),
                                   m_token3.data(), &scannedBytes);
    auto domain = std::make_shared<MutDomain>();
    domain->name = m_token1.data();
    domain->type = m_token2.data();
    domain->canStopSearchIfMatched = strcasecmp(m_token3.data(), words::kStopFlag) == 0;
    domain->mutationMutAr = archive::RecordList<Mutation>::withCapacity(kMutationsExpected);
    m_catalogue.domains->append(domain);
    m_catalogue.domainSources.push_back({domain, m_lines.number(), std::max(tokens, 0),
                                         m_token3.data(),
                                         tokens == kDomainTokens ? header + scannedBytes : ""});
    m_currentDomain = std::move(domain);
}

void Loader::readMutation() {
    MutationSource source;
    source.mutation = std::make_shared<Mutation>();
    source.domain = m_currentDomain;
    source.headerLine = m_lines.number();
    scanMutationHeader(*source.mutation, source);
    readSequence(*source.mutation, source);
    if (m_currentDomain) {
        m_currentDomain->mutationMutAr->append(source.mutation);
    }
    m_catalogue.mutationSources.push_back(std::move(source));
}

void Loader::scanMutationHeader(Mutation& mutation, MutationSource& source) {
    const char* const fields = m_lines.text() + 1;
    long minimumReads = 0;
    int scannedBytes = 0;
    const int scanned =
        std::sscanf(fields, "%s %s %s %s %lf %lf %lf %ld%n", m_token1.data(), m_token2.data(),
                    m_token3.data(), m_token4.data(), &mutation.referenceFrequencyOfTheMutantReads,
                    &mutation.allowableFalsePositiveRate, &mutation.allowableFalseNegativeRate,
                    &minimumReads, &scannedBytes);
    mutation.minimumRequiredNumberOfInformativeReads = minimumReads;
    mutation.name = m_token1.data();
    mutation.before10bp = m_token2.data();
    mutation.after10bp = m_token3.data();
    mutation.strandRequiredToRead = m_token4.data();
    source.fieldsScanned = std::max(scanned, 0);
    source.textAfterFields = source.fieldsScanned == kMutationFields ? fields + scannedBytes : "";
}

/// Does what the scan does for "%s". Without a token the buffer stays as it is.
bool Loader::scanToken(const char* text, TokenBuffer& token) {
    const char* const begin = text + std::strspn(text, kScanBlanks);
    const std::size_t length = std::strcspn(begin, kScanBlanks);
    if (length == 0) {
        return false;
    }
    std::memcpy(token.data(), begin, length);
    token[length] = '\0';
    return true;
}

void Loader::readSequence(Mutation& mutation, MutationSource& source) {
    // Deliberate: the outcome does not matter. An over-long line gives its first characters and the
    // end of the file gives none.
    m_lines.readNext();
    // Deliberate: without a token the buffer still holds the mutation's name.
    source.sequenceMissing = !scanToken(m_lines.text(), m_token1);
    source.sequenceCut = m_lines.wasCut();
    mutation.seq = m_token1.data();
}

void deriveCores(Catalogue& catalogue, const std::string& name) {
    for (const MutationSource& source : catalogue.mutationSources) {
        if (!source.domain) {
            continue;
        }
        if (const platform::Status derived = deriveCore(*source.mutation); !derived) {
            CatalogueFault fault;
            fault.line = source.headerLine;
            fault.reason = "mutation " + archive::stringOrEmpty(source.mutation->name) + ": " +
                           derived.error().message;
            fault.message = name + ":" + std::to_string(fault.line) + ": " + fault.reason;
            catalogue.faults.push_back(std::move(fault));
        }
    }
}

/// Hands on the bytes of a stream and takes their digest on the way, so that the digest is that of
/// the very bytes that were loaded.
class DigestedStream final : public platform::ByteStream {
public:
    /// The source must outlive the stream.
    explicit DigestedStream(platform::ByteStream& source) : m_source(source) {}

    /// Of all bytes, those included that nobody took; empty where they cannot be read.
    std::string digestOfAll() {
        while (const std::size_t size = available()) {
            skip(size);
        }
        return status() ? m_digest.hex() : std::string();
    }

private:
    bool nextBlock() override {
        const std::size_t size = m_source.available();
        setBlock(m_source.next(), size);
        m_digest.add({m_source.next(), size});
        m_source.skip(size);
        setStatus(m_source.status());
        return size > 0;
    }

    platform::ByteStream& m_source;
    platform::Sha256 m_digest;
};

} // namespace

platform::Result<Catalogue> loadDefinition(platform::ByteStream& stream, const std::string& name) {
    Catalogue catalogue = Loader(stream).load();
    if (!stream.status()) {
        // Half of a panel would be as good as a wrong one: its targets would be missing from the
        // results without a word.
        return platform::Error{name + ": " + stream.status().error().message};
    }
    deriveCores(catalogue, name);
    return catalogue;
}

platform::Result<Catalogue> loadDefinitionFile(const std::string& path) {
    auto stream = platform::openRegularFile(path);
    if (!stream) {
        return stream.error();
    }
    DigestedStream digested(*stream.value());
    auto catalogue = loadDefinition(digested, path);
    if (catalogue) {
        catalogue.value().digest = digested.digestOfAll();
    }
    return catalogue;
}

} // namespace catalogue
