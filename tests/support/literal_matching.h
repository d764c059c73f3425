// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "catalogue/mut_domain.h"

namespace support {

// A second, literal writing of the rules of reading and matching, byte by byte over 511-byte
// buffers and C strings, one thread, nothing shared with the engine: the judge of a whole run.

struct LiteralOutcome {
    bool succeeded = false;
    std::string error;
    std::int64_t total = 0;
    std::int64_t failed = 0;
    std::vector<std::int64_t> counts;
    /// Per domain. A run that fails leaves what the catalogue held.
    std::vector<std::int64_t> normalReads;
    std::vector<std::int64_t> mutantReads;
    /// One text per unclaimed pair: both lines.
    std::vector<std::string> unassigned;
};

class LiteralMatching {
public:
    /// Takes the domains' totals as they stand.
    LiteralMatching(std::string text1, std::string text2, std::string path1,
                    const catalogue::MutDomains& domains)
        : m_file1{std::move(text1)}, m_file2{std::move(text2)}, m_path1(std::move(path1)),
          m_domains(archive::orEmpty(domains)) {
        for (const auto& domain : m_domains) {
            m_outcome.counts.resize(m_outcome.counts.size() +
                                    archive::orEmpty(domain->mutationMutAr).size());
            m_outcome.normalReads.push_back(domain->totalNumberOfNormalReads);
            m_outcome.mutantReads.push_back(domain->totalNumberOfMutantReads);
        }
    }

    LiteralOutcome run() {
        m_outcome.succeeded = runToTheEnd();
        if (m_outcome.succeeded) {
            sumDomains();
        }
        return m_outcome;
    }

private:
    static constexpr int kLimit = 510;
    using Line = std::array<char, kLimit + 1>;
    struct File {
        std::string text;
        std::size_t place = 0;
    };
    struct Pair {
        Line read1, read2, quality1, quality2;
    };

    static int next(File& file) {
        return file.place < file.text.size() ? static_cast<unsigned char>(file.text[file.place++])
                                             : -1;
    }

    static bool readLine(Line& line, File& file) {
        int stored = 0;
        for (;;) {
            if (stored == kLimit) {
                line[kLimit] = 0;
                return false;
            }
            int byte = next(file);
            bool lineEnded = byte == '\n';
            if (byte == '\r') {
                byte = next(file);
                if (byte != '\n' && byte != -1) {
                    --file.place;
                }
                lineEnded = byte != -1;
            }
            if (lineEnded || byte == -1) {
                line[static_cast<std::size_t>(stored)] = 0;
                return lineEnded || stored > 0;
            }
            line[static_cast<std::size_t>(stored++)] = static_cast<char>(byte);
        }
    }

    static void reverse(Line& line) {
        const std::size_t length = std::strlen(line.data());
        for (std::size_t i = 0; i < length / 2; ++i) {
            std::swap(line[i], line[length - 1 - i]);
        }
    }

    static void reverseComplementLine(Line& line) {
        reverse(line);
        for (char* base = line.data(); *base != 0; ++base) {
            const char upper =
                static_cast<char>(*base >= 'a' && *base <= 'z' ? *base - 'a' + 'A' : *base);
            *base = upper == 'A'   ? 'T'
                    : upper == 'G' ? 'C'
                    : upper == 'C' ? 'G'
                    : upper == 'T' ? 'A'
                                   : 'N';
        }
    }

    static void cut(Line& header1, Line& header2) {
        if (header1[0] == 0) {
            return;
        }
        for (std::size_t p = 0;; ++p) {
            if (header1[p] == ' ') {
                header1[p] = 0;
            }
            if (p < std::strlen(header2.data()) && header2[p] == ' ') {
                header2[p] = 0;
            }
            if (p + 1 >= std::strlen(header1.data())) {
                return;
            }
        }
    }

    bool runToTheEnd() {
        Line lookAhead{};
        readLine(lookAhead, m_file1);
        while (lookAhead[0] != 0) {
            std::vector<Pair> batch;
            const bool filled = fillBatch(lookAhead, batch);
            if (!filled) {
                return false;
            }
            for (Pair& pair : batch) {
                reverseComplementLine(pair.read2);
                reverse(pair.quality2);
                matchPair(pair);
            }
            readLine(lookAhead, m_file1);
        }
        return true;
    }

    bool fillBatch(const Line& lookAhead, std::vector<Pair>& batch) {
        for (int i = 0; i < 1000; ++i) {
            Line header1 = lookAhead;
            Line header2{};
            const bool have1 = i == 0 || readLine(header1, m_file1);
            const bool have2 = readLine(header2, m_file2);
            if (!have1 || !have2) {
                return true;
            }
            cut(header1, header2);
            if (std::strcmp(header1.data(), header2.data()) != 0) {
                m_outcome.error =
                    "Two fastq files do not match at " + std::string(header1.data()) + ".\n";
                return false;
            }
            Pair pair{};
            Line separator{};
            bool complete = readLine(pair.read1, m_file1);
            complete = readLine(pair.read2, m_file2) && complete;
            complete = readLine(separator, m_file1) && complete;
            complete = readLine(separator, m_file2) && complete;
            complete = readLine(pair.quality1, m_file1) && complete;
            complete = readLine(pair.quality2, m_file2) && complete;
            if (!complete) {
                m_outcome.error = m_path1 + " or " + m_path1 + " are trimcated/\n";
                return false;
            }
            batch.push_back(pair);
        }
        return true;
    }

    static bool agrees(char r, char c) {
        if (r == c) {
            return true;
        }
        const auto in = [](char base, const char* set) {
            return base != 0 && std::strchr(set, base) != nullptr;
        };
        // clang-format off
        switch (r) {
        case 'B': return in(c, "CGT");
        case 'D': return in(c, "AGT");
        case 'H': return in(c, "ACT");
        case 'K': return in(c, "GT");
        case 'M': return in(c, "AC");
        case 'R': return in(c, "AG");
        case 'S': return in(c, "CG");
        case 'V': return in(c, "ACG");
        case 'W': return in(c, "AT");
        case 'Y': return in(c, "CT");
        default: break;
        }
        switch (c) {
        case 'B': case 'S': return in(r, "CG");
        case 'D': case 'R': return in(r, "AG");
        case 'H': case 'M': case 'V': return in(r, "AC");
        case 'K': return in(r, "GT");
        case 'W': return in(r, "AT");
        case 'Y': return in(r, "CT");
        default: return false;
        }
        // clang-format on
    }

    static bool find(const Line& readLine, const std::string& core, const Line& qualityLine,
                     bool wild) {
        const std::size_t readLength = std::strlen(readLine.data());
        const std::size_t coreLength = core.size();
        for (std::size_t p = 0; p + coreLength <= readLength; ++p) {
            bool same = true;
            for (std::size_t i = 0; same && i < coreLength; ++i) {
                same = wild ? agrees(readLine[p + i], core[i]) : readLine[p + i] == core[i];
            }
            if (!same) {
                continue;
            }
            if (!wild && p > 0) {
                return true;
            }
            for (std::size_t q = p; q < coreLength; ++q) {
                // Behind its end a quality is zeros, which are too low.
                const bool there = q < std::strlen(qualityLine.data());
                if (!there || static_cast<signed char>(qualityLine[q]) < 64) {
                    return false;
                }
            }
            return true;
        }
        return false;
    }

    static bool supports(const Pair& pair, const catalogue::Mutation& mutation) {
        const std::string strand = mutation.strandRequiredToRead.value_or("");
        const std::string core = mutation.coreSeq.value_or("");
        const bool wild = mutation.coreSeqContainsWildCard;
        if (strand == "R1R2") {
            return find(pair.read1, core, pair.quality1, wild) &&
                   find(pair.read2, core, wild ? pair.quality1 : pair.quality2, wild);
        }
        return (strand == "R1" && find(pair.read1, core, pair.quality1, wild)) ||
               (strand == "R2" && find(pair.read2, core, pair.quality2, wild));
    }

    void matchPair(const Pair& pair) {
        if (pair.read1[0] == 0 || pair.read2[0] == 0) {
            return;
        }
        bool matched = false;
        bool stopped = false;
        std::size_t index = 0;
        for (const auto& domain : m_domains) {
            bool matchedHere = false;
            for (const auto& mutation : archive::orEmpty(domain->mutationMutAr)) {
                if (!stopped && !matchedHere && supports(pair, *mutation)) {
                    matchedHere = true;
                    ++m_outcome.counts[index];
                }
                ++index;
            }
            matched = matched || matchedHere;
            stopped = stopped || (matchedHere && domain->canStopSearchIfMatched);
        }
        ++m_outcome.total;
        if (!matched) {
            ++m_outcome.failed;
            m_outcome.unassigned.push_back(std::string(pair.read1.data()) + "\n" +
                                           pair.read2.data() + "\n");
        }
    }

    void sumDomains() {
        std::size_t index = 0;
        for (std::size_t d = 0; d < m_domains.size(); ++d) {
            m_outcome.mutantReads[d] = 0;
            const std::size_t mutations = archive::orEmpty(m_domains[d]->mutationMutAr).size();
            for (std::size_t m = 0; m < mutations; ++m, ++index) {
                if (m == 0) {
                    m_outcome.normalReads[d] = m_outcome.counts[index];
                } else {
                    m_outcome.mutantReads[d] += m_outcome.counts[index];
                }
            }
        }
    }

    File m_file1;
    File m_file2;
    std::string m_path1;
    const archive::RecordList<catalogue::MutDomain>& m_domains;
    LiteralOutcome m_outcome;
};

} // namespace support
