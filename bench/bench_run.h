// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include "catalogue/definition_file.h"
#include "platform/resources.h"
#include "simulator/run_request.h"
#include "support/temp_dir.h"

namespace bench {

/// Read pairs 2x150 of the shipped catalogue, plain and gzip, in a directory that goes with it. Six
/// tenths of the pairs carry an entry, all entries alike often.
class BenchRun {
public:
    explicit BenchRun(std::uint64_t pairs) : m_catalogue(loadShipped()) {
        simulator::RunRequest request;
        request.panelPath = m_directory.write("panel.tsv", panel(pairs));
        request.directory = m_directory.path();
        request.seed = 20;
        request.chemistry.errorRate = 0.001;
        if (const platform::Status made = simulator::makeRun(request); !made) {
            throw std::runtime_error(made.error().message);
        }
    }

    std::string plainPath(int read) const { return pathOf("Plain_S1", read, ""); }
    std::string gzipPath(int read) const { return pathOf("Gz_S2", read, ".gz"); }
    const catalogue::MutDomains& domains() const { return m_catalogue.domains; }

private:
    static catalogue::Catalogue loadShipped() {
        const auto path = platform::resourcePath("ReferenceNucleotideSequence", "txt");
        auto loaded = catalogue::loadDefinitionFile(path.value_or(""));
        if (!loaded) {
            throw std::runtime_error(loaded.error().message);
        }
        return std::move(loaded).value();
    }

    std::string panel(std::uint64_t pairs) const {
        std::uint64_t entries = 0;
        for (const auto& domain : archive::orEmpty(m_catalogue.domains)) {
            entries += archive::orEmpty(domain->mutationMutAr).size();
        }
        const std::uint64_t each = pairs * 6 / 10 / entries;
        const std::string background = std::to_string(pairs - each * entries);
        std::string table = "sample\tnumber\tformat\tdomain\tmutation\tpairs\tcall\n";
        for (const std::string sample : {"Plain\t1\tplain\t", "Gz\t2\tgz\t"}) {
            table += sample + "background\t-\t" + background + "\t-\n";
            for (const auto& domain : archive::orEmpty(m_catalogue.domains)) {
                for (const auto& mutation : archive::orEmpty(domain->mutationMutAr)) {
                    table += sample + archive::stringOrEmpty(domain->name) + "\t" +
                             archive::stringOrEmpty(mutation->name) + "\t" + std::to_string(each) +
                             "\t-\n";
                }
            }
        }
        return table;
    }

    std::string pathOf(const std::string& sample, int read, const std::string& ending) const {
        return m_directory.file(sample + "_L001_R" + std::to_string(read) + "_001.fastq" + ending);
    }

    support::TempDir m_directory;
    catalogue::Catalogue m_catalogue;
};

} // namespace bench
