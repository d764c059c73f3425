// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// made_reads CATALOGUE PAIRS PREFIX: read pairs 2x150 as a sequencer writes them, to PREFIX and
// "_S1_L001_R1_001.fastq", and the same with R2. Six pairs in ten carry an entry, all entries alike
// often and in random order; the others are pieces of a made-up genome. The same arguments give the
// same bytes. vexta-make-reads makes reads whose calls are foretold; these are made by the million
// for measuring, and look like a sequencer's to a compressor and to a search.
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <vector>

#include "catalogue/definition_file.h"
#include "catalogue/iupac.h"
#include "made_genome.h"
#include "sequencer.h"
#include "simulator/fragments.h"

namespace {

constexpr std::uint64_t kSeed = 20;
constexpr std::size_t kGenomeBases = std::size_t{1} << 24;
constexpr std::size_t kBlockBytes = std::size_t{1} << 20;

/// Mates overlap widely, as those of plasma DNA; cores stand at many places in them.
constexpr simulator::Chemistry kChemistry = {150, 180, 30, 0.0};

class ReadFile {
public:
    ReadFile(const std::string& prefix, char readNumber)
        : m_path(prefix + "_S1_L001_R" + readNumber + "_001.fastq"), m_readNumber(readNumber),
          m_file(m_path, std::ios::binary) {}

    void write(bench::Sequencer& sequencer, std::string_view bases) {
        sequencer.appendRecord(m_block, m_readNumber, bases);
        if (m_block.size() >= kBlockBytes) {
            flush();
        }
    }

    void close() {
        flush();
        m_file.close();
        if (!m_file) {
            throw std::runtime_error("cannot write " + m_path);
        }
    }

private:
    void flush() {
        m_file.write(m_block.data(), static_cast<std::streamsize>(m_block.size()));
        m_block.clear();
    }

    std::string m_path;
    char m_readNumber;
    std::ofstream m_file;
    std::string m_block;
};

class FragmentMaker {
public:
    explicit FragmentMaker(std::vector<simulator::Molecule> molecules)
        : m_molecules(std::move(molecules)), m_genome(kGenomeBases, kSeed + 1), m_random(kSeed) {}

    const std::string& next() {
        if (m_random.below(10) < 6) {
            cutMolecule(m_molecules[m_random.below(m_molecules.size())]);
        } else {
            const std::size_t length = kChemistry.fragmentLength;
            m_fragment.assign(m_genome.bases(), m_random.below(kGenomeBases - length), length);
        }
        return m_fragment;
    }

private:
    void cutMolecule(const simulator::Molecule& molecule) {
        const std::size_t begin = m_random.below(2 * kChemistry.jitter + 1);
        m_fragment.assign(molecule.bases, begin, kChemistry.fragmentLength);
        if (!molecule.hasCode) {
            return;
        }
        for (char& base : m_fragment) {
            const std::string_view choice = catalogue::readBasesForCoreCode(base);
            if (!choice.empty()) {
                base = choice[m_random.below(choice.size())];
            }
        }
    }

    std::vector<simulator::Molecule> m_molecules;
    bench::MadeGenome m_genome;
    simulator::RandomBits m_random;
    std::string m_fragment;
};

std::string reverseComplement(std::string_view bases) {
    std::string turned(bases.rbegin(), bases.rend());
    for (char& base : turned) {
        base = base == 'A' ? 'T' : base == 'C' ? 'G' : base == 'G' ? 'C' : 'A';
    }
    return turned;
}

std::vector<simulator::Molecule> loadMolecules(const std::string& path) {
    const auto loaded = catalogue::loadDefinitionFile(path);
    if (!loaded) {
        throw std::runtime_error(loaded.error().message);
    }
    auto molecules = simulator::makeMolecules(loaded.value(), kChemistry, kSeed);
    if (!molecules) {
        throw std::runtime_error(molecules.error().message);
    }
    if (molecules.value().empty()) {
        throw std::runtime_error(path + " holds no entry");
    }
    return std::move(molecules).value();
}

void makeReads(const std::string& cataloguePath, std::uint64_t pairs, const std::string& prefix) {
    FragmentMaker fragments(loadMolecules(cataloguePath));
    bench::Sequencer sequencer(kSeed + 2);
    ReadFile read1(prefix, '1');
    ReadFile read2(prefix, '2');
    for (std::uint64_t pair = 0; pair < pairs; ++pair) {
        const std::string_view fragment = fragments.next();
        const std::size_t length = kChemistry.readLength;
        sequencer.advance();
        read1.write(sequencer, fragment.substr(0, length));
        read2.write(sequencer, reverseComplement(fragment.substr(fragment.size() - length)));
    }
    read1.close();
    read2.close();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: made_reads CATALOGUE PAIRS PREFIX\n";
        return 2;
    }
    try {
        makeReads(argv[1], std::stoull(argv[2]), argv[3]);
    } catch (const std::exception& failure) {
        std::cerr << "made_reads: " << failure.what() << '\n';
        return 1;
    }
}
