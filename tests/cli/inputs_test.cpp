// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/inputs.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::string why(const std::string& path) {
    return cli::whyUnpaired(path, document::findMate(path));
}

TEST(NormalPath, GivesADirectoryAName) {
    const std::string here = fs::current_path().string();
    EXPECT_EQ(cli::normalPath("x.fastq"), here + "/x.fastq");
    EXPECT_EQ(cli::normalPath("."), here);
    EXPECT_EQ(cli::normalPath("./a//b/"), here + "/a/b");
    EXPECT_EQ(cli::normalPath("/a/./b"), "/a/b");
    EXPECT_EQ(cli::normalPath("/"), "/");
}

TEST(NormalPath, AsksTheFileSystemWhereDotsLead) {
    const support::TempDir dir;
    fs::create_directories(dir.file("real/inner"));
    fs::create_directory_symlink(dir.file("real/inner"), dir.file("link"));
    EXPECT_EQ(cli::normalPath(dir.file("link/../x.fastq")),
              fs::canonical(dir.file("real")).string() + "/x.fastq");
    EXPECT_EQ(cli::normalPath(dir.file("link/..")), fs::canonical(dir.file("real")).string());
    EXPECT_EQ(cli::normalPath(dir.file("link/x.fastq")), dir.file("link/x.fastq"));
}

TEST(ReadsFile, OnlyARegularFileIsAccepted) {
    const support::TempDir dir;
    EXPECT_TRUE(cli::checkReadsFile(dir.write("x.fastq", "")).ok());
    ASSERT_EQ(mkfifo(dir.file("fifo.fastq").c_str(), 0600), 0);
    for (const std::string& path : {dir.path(), dir.file("fifo.fastq"), dir.file("missing")}) {
        const auto status = cli::checkReadsFile(path);
        ASSERT_FALSE(status.ok()) << path;
        EXPECT_THAT(status.error().message, HasSubstr(path));
    }
}

TEST(WhyUnpaired, NamesBothNamesThatWereLookedFor) {
    EXPECT_EQ(why("/d/x_S1_R1_001.fastq"),
              "x_S1_R1_001.fastq: found neither x_S1_R2_001.fastq nor x_S1_R2_001.fastq.gz in /d");
    EXPECT_EQ(
        why("/d/x_S1_R2_001.fastq.gz"),
        "x_S1_R2_001.fastq.gz: found neither x_S1_R1_001.fastq.gz nor x_S1_R1_001.fastq in /d");
}

TEST(WhyUnpaired, SaysWhatIsWrongWithTheName) {
    EXPECT_THAT(why("/d/x_1.fastq"), HasSubstr("holds neither \"_R1_\" nor \"_R2_\""));
    EXPECT_THAT(why("/d/x_R1_1.fq"), HasSubstr("ends neither in \".fastq\" nor in \".gz\""));
}

TEST(WhyNoPatients, ShowsThePatternAndTenNamesAtMost) {
    std::vector<std::string> names = {"notes.txt", "a.fastq", "b.fq.gz"};
    EXPECT_THAT(cli::whyNoPatients("/d", names),
                testing::ElementsAre(
                    "no read pair in /d: expected names like *_S<1-1000>_L001_R1_001.fastq[.gz] "
                    "and *_S<1-1000>_L001_R2_001.fastq[.gz]",
                    "files of reads with other names are not used:", "  a.fastq", "  b.fq.gz"));
    for (int i = 0; i < 20; ++i) {
        names.push_back("c" + std::to_string(i) + ".fastq.gz");
    }
    EXPECT_THAT(cli::whyNoPatients("/d", names), testing::Contains("  and 12 more"));
    EXPECT_EQ(cli::whyNoPatients("/d", {}).size(), 1U);
}

} // namespace
