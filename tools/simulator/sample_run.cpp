// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "simulator/sample_run.h"

#include <algorithm>
#include <optional>

#include "platform/files.h"
#include "simulator/fastq_writer.h"
#include "simulator/pair_maker.h"

namespace simulator {

namespace {

constexpr std::string_view kBackground = "background";
constexpr std::string_view kWholeDomain = "*";

/// How many pairs of each molecule, and last of background, are still to be made.
struct Order {
    std::vector<std::uint64_t> remaining;
    std::uint64_t total = 0;

    void add(std::size_t kind, std::uint64_t pairs) {
        remaining[kind] += pairs;
        total += pairs;
    }

    /// Draws one of the remaining pairs, each with the same chance, and takes it out.
    std::size_t take(PairMaker& maker) {
        std::uint64_t place = maker.below(total);
        std::size_t kind = 0;
        while (place >= remaining[kind]) {
            place -= remaining[kind];
            ++kind;
        }
        --remaining[kind];
        --total;
        return kind;
    }
};

std::optional<std::size_t> moleculeOf(const std::vector<Molecule>& molecules,
                                      const PanelLine& line) {
    const auto found = std::find_if(molecules.begin(), molecules.end(), [&](const Molecule& each) {
        return each.domain == line.domain && each.name == line.mutation;
    });
    if (found == molecules.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - molecules.begin());
}

platform::Result<Order> orderOf(const std::vector<Molecule>& molecules, const Sample& sample) {
    Order order;
    order.remaining.resize(molecules.size() + 1);
    for (const PanelLine& line : sample.lines) {
        if (line.mutation == kWholeDomain) {
            continue;
        }
        const auto molecule = line.domain == kBackground ? std::optional(molecules.size())
                                                         : moleculeOf(molecules, line);
        if (!molecule) {
            return platform::Error{"sample " + sample.name + ": the catalogue has no mutation " +
                                   line.mutation + " in a domain " + line.domain};
        }
        order.add(*molecule, line.pairs);
    }
    if (order.total > 0xFFFFFFFFU) {
        return platform::Error{"sample " + sample.name + ": more than 4294967295 pairs"};
    }
    return order;
}

/// "@VEXTA:1:DEMO:1:1101:1042:1013", then the read's number and the index: a sequencer's header.
/// Places on the flow cell rise from pair to pair, as in a sorted run.
class HeaderMaker {
public:
    explicit HeaderMaker(std::uint64_t sampleNumber)
        : m_prefix("@VEXTA:1:DEMO:1:"), m_suffix(":N:0:" + std::to_string(sampleNumber)) {}

    void advance(PairMaker& maker) {
        m_x += 1 + maker.below(16);
        if (m_x > kWidth) {
            m_x = kMargin + maker.below(16);
            ++m_y;
        }
        if (m_y > kHeight) {
            m_y = kMargin;
            ++m_tile;
        }
        m_place = m_prefix + std::to_string(m_tile) + ":" + std::to_string(m_x) + ":" +
                  std::to_string(m_y);
    }

    std::string header(int readNumber) const {
        return m_place + " " + std::to_string(readNumber) + m_suffix;
    }

private:
    static constexpr std::uint64_t kMargin = 1000;
    static constexpr std::uint64_t kWidth = 32'000;
    static constexpr std::uint64_t kHeight = 37'000;

    std::string m_prefix;
    std::string m_suffix;
    std::string m_place;
    std::uint64_t m_tile = 1101;
    std::uint64_t m_x = kMargin;
    std::uint64_t m_y = kMargin;
};

void writePairs(const std::vector<Molecule>& molecules, Order order, std::uint64_t sampleNumber,
                PairMaker& maker, FastqWriter& file1, FastqWriter& file2, SampleTruth& truth) {
    HeaderMaker headers(sampleNumber);
    ReadPair pair;
    while (order.total > 0) {
        const std::size_t kind = order.take(maker);
        if (kind == molecules.size()) {
            maker.makeBackground(pair);
        } else {
            maker.make(molecules[kind], pair);
            ++truth.entries[kind].pairs;
            truth.entries[kind].intactPairs += pair.intact ? 1U : 0U;
        }
        headers.advance(maker);
        file1.writeRecord(headers.header(1), pair.read1, pair.quality1);
        file2.writeRecord(headers.header(2), pair.read2, pair.quality2);
    }
}

} // namespace

std::string fastqName(const Sample& sample, int readNumber) {
    return sample.name + "_S" + std::to_string(sample.number) + "_L001_R" +
           std::to_string(readNumber) + "_001.fastq" + (sample.gzip ? ".gz" : "");
}

platform::Status checkSample(const std::vector<Molecule>& molecules, const Sample& sample) {
    const platform::Result<Order> order = orderOf(molecules, sample);
    return order ? platform::Status() : platform::Status(order.error());
}

platform::Result<SampleTruth> writeSample(const std::vector<Molecule>& molecules,
                                          const Sample& sample, const Chemistry& chemistry,
                                          std::uint64_t seed, const std::string& directory) {
    const platform::Result<Order> order = orderOf(molecules, sample);
    if (!order) {
        return order.error();
    }
    SampleTruth truth{fastqName(sample, 1), fastqName(sample, 2), order.value().total, {}};
    for (const Molecule& molecule : molecules) {
        truth.entries.push_back({molecule.domain, molecule.name, 0, 0});
    }
    const std::string path1 = directory + "/" + truth.file1;
    const std::string path2 = directory + "/" + truth.file2;
    auto file1 = FastqWriter::create(path1, sample.gzip);
    if (!file1) {
        return file1.error();
    }
    auto file2 = FastqWriter::create(path2, sample.gzip);
    if (!file2) {
        platform::removeSilently(path1);
        return file2.error();
    }
    PairMaker maker(chemistry, seed + sample.number);
    writePairs(molecules, order.value(), sample.number, maker, file1.value(), file2.value(), truth);
    const platform::Status closed1 = file1.value().close();
    const platform::Status closed2 = file2.value().close();
    if (!closed1 || !closed2) {
        platform::removeSilently(path1);
        platform::removeSilently(path2);
        return closed1 ? closed2.error() : closed1.error();
    }
    return truth;
}

} // namespace simulator
