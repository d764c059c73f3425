// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The sample run in examples/ is what the generator makes of the panel table today.
#include <filesystem>
#include <iterator>
#include <string>

#include <gtest/gtest.h>
#include <zlib.h>

#include "simulator/run_request.h"
#include "support/temp_dir.h"

namespace {

const std::string kExamples = std::string(VEXTA_SOURCE_DIR) + "/examples";

simulator::RunRequest sampleRun(const std::string& directory) {
    simulator::RunRequest request;
    request.panelPath = kExamples + "/panel.tsv";
    request.directory = directory;
    request.cataloguePath =
        std::string(VEXTA_SOURCE_DIR) + "/resources/ReferenceNucleotideSequence.txt";
    request.seed = 7;
    request.chemistry.errorRate = 0.001;
    return request;
}

/// The content of a file, expanded where it is .gz: zlib releases compress differently.
std::string expanded(const std::string& path) {
    gzFile file = gzopen(path.c_str(), "rb");
    EXPECT_NE(file, nullptr) << path;
    if (file == nullptr) {
        return "";
    }
    std::string text;
    char block[1 << 16];
    int count = 0;
    while ((count = gzread(file, block, sizeof block)) > 0) {
        text.append(block, static_cast<std::size_t>(count));
    }
    EXPECT_EQ(count, 0) << path;
    gzclose(file);
    return text;
}

std::size_t fileCount(const std::string& directory) {
    const std::filesystem::directory_iterator files(directory);
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

TEST(MadeRun, IsTheSampleRunThatShips) {
    const support::TempDir directory;
    const platform::Status made = simulator::makeRun(sampleRun(directory.path()));
    ASSERT_TRUE(made.ok()) << made.error().message;
    EXPECT_EQ(fileCount(directory.path()), fileCount(kExamples + "/sample-run"));
    for (const auto& file : std::filesystem::directory_iterator(directory.path())) {
        const std::string name = file.path().filename().string();
        EXPECT_TRUE(expanded(file.path().string()) == expanded(kExamples + "/sample-run/" + name))
            << name << " differs; examples/README.md says how the run is made anew";
    }
}

TEST(MadeRun, ShipsInAtMostTwoMegabytes) {
    std::uintmax_t bytes = 0;
    for (const auto& file : std::filesystem::recursive_directory_iterator(kExamples)) {
        bytes += file.is_regular_file() ? file.file_size() : 0;
    }
    EXPECT_LE(bytes, 2'000'000U);
}

TEST(MadeRun, WritesNoTimeIntoGzipHeaders) {
    const std::string bytes =
        support::readFile(kExamples + "/sample-run/DemoA_S1_L001_R1_001.fastq.gz");
    ASSERT_GT(bytes.size(), 10U);
    EXPECT_EQ(bytes.substr(0, 3), "\x1f\x8b\x08");
    EXPECT_EQ(bytes.substr(4, 4), std::string(4, '\0'));
}

TEST(MadeRun, WritesNothingWhenTheTableNamesAnUnknownMutation) {
    const support::TempDir directory;
    const support::TempDir output;
    simulator::RunRequest request = sampleRun(output.path());
    request.panelPath =
        directory.write("panel.tsv", "sample\tnumber\tformat\tdomain\tmutation\tpairs\tcall\n"
                                     "A\t1\tgz\tBIM\tBIM_wildtype\t10\t-\n"
                                     "B\t2\tgz\tBIM\tBIM_other\t10\t-\n");
    const platform::Status made = simulator::makeRun(request);
    ASSERT_FALSE(made.ok());
    EXPECT_EQ(made.error().message,
              "sample B: the catalogue has no mutation BIM_other in a domain BIM");
    EXPECT_EQ(fileCount(output.path()), 0U);
}

TEST(MadeRun, NamesAPanelTableThatCannotBeRead) {
    const support::TempDir output;
    simulator::RunRequest request = sampleRun(output.path());
    request.panelPath = output.file("missing.tsv");
    const platform::Status made = simulator::makeRun(request);
    ASSERT_FALSE(made.ok());
    EXPECT_NE(made.error().message.find("missing.tsv"), std::string::npos);
}

} // namespace
