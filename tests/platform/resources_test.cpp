// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/resources.h"

#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

#include "platform/child_process.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

/// A copy of the probe in PREFIX/bin, run without and with $VEXTA_RESOURCES.
class ResourcePath : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directory(m_prefix.file("bin"));
        fs::copy_file(RESOURCE_PATH_PROBE, m_prefix.file("bin/probe"));
    }

    std::string found(const std::string& name, const std::string& type,
                      const std::string& setting = "unset VEXTA_RESOURCES") const {
        const std::string output = m_prefix.file("output");
        const auto run =
            platform::runShellCommand(setting + "; \"" + m_prefix.file("bin/probe") + "\" " + name +
                                      " " + type + " > \"" + output + "\"");
        EXPECT_TRUE(run.ok() && run.value().exitCode == 0);
        return support::readFile(output);
    }

    std::string put(const std::string& directory, const std::string& name) const {
        fs::create_directories(m_prefix.file(directory));
        return m_prefix.write(directory + "/" + name, "content");
    }

    support::TempDir m_prefix;
};

TEST_F(ResourcePath, IsInTheDirectoryThatTheEnvironmentNames) {
    const std::string path = put("chosen", "Sample.txt");
    put("bin/resources", "Sample.txt");
    EXPECT_EQ(found("Sample", "txt", "export VEXTA_RESOURCES=" + m_prefix.file("chosen")), path);
}

TEST_F(ResourcePath, IsSoughtNowhereElseWhenTheEnvironmentNamesADirectory) {
    put("bin/resources", "Sample.txt");
    EXPECT_EQ(found("Sample", "txt", "export VEXTA_RESOURCES=" + m_prefix.path()), "none");
}

TEST_F(ResourcePath, TakesAnEmptyVariableAsUnset) {
    const std::string path = put("bin/resources", "Sample.txt");
    EXPECT_EQ(found("Sample", "txt", "export VEXTA_RESOURCES="), path);
}

TEST_F(ResourcePath, IsBesideTheExecutableBeforeItIsInTheShareDirectory) {
    const std::string shared = put("share/vexta", "Sample.txt");
    EXPECT_TRUE(fs::equivalent(found("Sample", "txt"), shared));
    const std::string beside = put("bin/resources", "Sample.txt");
    EXPECT_EQ(found("Sample", "txt"), beside);
}

TEST_F(ResourcePath, FallsBackToTheInstalledOrTheSourceTreesDirectory) {
    const std::string path = found("ReferenceNucleotideSequence", "txt");
    EXPECT_EQ(fs::path(path).filename(), "ReferenceNucleotideSequence.txt");
    EXPECT_TRUE(fs::is_regular_file(path)) << path;
}

TEST_F(ResourcePath, IsAbsentWhenNoDirectoryHoldsTheResource) {
    EXPECT_EQ(found("NoSuchResource", "txt"), "none");
    EXPECT_EQ(found("ReferenceNucleotideSequence", "nib"), "none");
}

} // namespace
