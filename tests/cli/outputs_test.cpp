// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/outputs.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <unistd.h>

#include "cli/unassigned_output.h"
#include "document/text_exports.h"
#include "platform/program_end.h"
#include "support/catalogue_builder.h"
#include "support/temp_dir.h"
#include "support/watched_flushes.h"

namespace {

namespace fs = std::filesystem;
using cli::Output;
using cli::OutputPaths;
using platform::Error;
using platform::Status;
using testing::ElementsAre;
using testing::HasSubstr;

Output textOutput(const std::string& path, const std::string& text) {
    return {"--report", path, [text](const cli::TextSink& sink) { return sink(text); }};
}

Output failingOutput(const std::string& path) {
    return {"--json", path, [](const cli::TextSink&) { return Status(Error{"no text"}); }};
}

std::size_t fileCount(const std::string& directory) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(directory), fs::directory_iterator()));
}

void expectRefused(const OutputPaths& paths, const std::vector<std::string>& inputs,
                   const std::string& reason) {
    const Status status = cli::checkOutputPaths(paths, inputs);
    ASSERT_FALSE(status.ok()) << reason;
    EXPECT_THAT(status.error().message, HasSubstr(reason));
}

std::shared_ptr<run::SummaryForEachPatient> patientNumbered(const std::string& number) {
    catalogue::MutDomains domains;
    domains.emplace();
    domains->append(support::domainOf({{"R1", "ACGT"}}));
    auto patient = run::SummaryForEachPatient::initWithMutDomains(domains);
    patient->patientNo = number;
    return patient;
}

Status writeTo(std::ostream& out, const OutputPaths& paths, const run::MainMutDictionary& results) {
    return cli::writeOutputs(cli::resultOutputs(paths, results, cli::RunTexts(), false), out);
}

TEST(ResultOutputs, ReportEveryPatient) {
    OutputPaths paths;
    paths.report = "-";
    run::MainMutDictionary results;
    results.summaryForEachPatientMutAr.emplace();
    std::ostringstream ofNobody;
    ASSERT_TRUE(writeTo(ofNobody, paths, results));
    EXPECT_EQ(ofNobody.str(), document::fullReport(results.summaryForEachPatientMutAr, {}));
    results.summaryForEachPatientMutAr->append(patientNumbered("1"));
    results.summaryForEachPatientMutAr->append(patientNumbered("2"));
    std::ostringstream ofTwo;
    ASSERT_TRUE(writeTo(ofTwo, paths, results));
    EXPECT_EQ(ofTwo.str(), document::fullReport(results.summaryForEachPatientMutAr, {0, 1}));
}

TEST(ResultOutputs, TellWhyAResultCannotBeSaved) {
    const support::TempDir dir;
    OutputPaths paths;
    paths.save = dir.file("run.vexta");
    const auto patient = patientNumbered("1");
    (*(*patient->mutDomains)[0]->mutationMutAr)[0]->allowableFalsePositiveRate = 1.0 / 0.0;
    run::MainMutDictionary results;
    results.summaryForEachPatientMutAr.emplace();
    results.summaryForEachPatientMutAr->append(patient);
    std::ostringstream out;
    const Status written = writeTo(out, paths, results);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().message, "--save: a number that is not finite cannot be saved");
    EXPECT_EQ(fileCount(dir.path()), 0U);
}

TEST(OutputPaths, TwoOutputsToOnePlaceAreRefused) {
    const support::TempDir dir;
    OutputPaths paths;
    paths.report = dir.file("a");
    paths.json = dir.path() + "/./a";
    expectRefused(paths, {}, "the same place as --report");
    paths.report = paths.json = "-";
    expectRefused(paths, {}, "--json -: the same place as --report -");
}

TEST(OutputPaths, AnInputIsNeverAnOutput) {
    const support::TempDir dir;
    const std::string input = dir.write("x.fastq", "@");
    fs::create_symlink(input, dir.file("link"));
    fs::create_hard_link(input, dir.file("hard"));
    for (const std::string& name : {input, dir.file("link"), dir.file("hard")}) {
        OutputPaths paths;
        paths.unassigned = name;
        expectRefused(paths, {input}, "--unassigned " + name + ": this is the input " + input);
    }
}

TEST(OutputPaths, APlaceWhereNoFileCanBeMadeIsRefused) {
    const support::TempDir dir;
    OutputPaths paths;
    paths.summary = dir.path();
    expectRefused(paths, {}, "--summary " + dir.path() + ": is a directory");
    paths.summary = dir.file("missing/summary");
    expectRefused(paths, {}, "No such file or directory");
    paths.summary = "";
    expectRefused(paths, {}, "expected a file name");
}

TEST(OutputPaths, OrdinaryPlacesAreAccepted) {
    const support::TempDir dir;
    OutputPaths paths;
    paths.report = dir.file("new");
    paths.json = dir.write("old", "");
    paths.summary = "-";
    paths.unassigned = "/dev/null";
    EXPECT_TRUE(cli::checkOutputPaths(paths, {dir.file("input")}).ok());
}

TEST(Outputs, FilesAreReplacedAndDashIsStandardOutput) {
    const support::TempDir dir;
    std::ostringstream out;
    const std::string path = dir.write("report", "old and longer");
    const Status status =
        cli::writeOutputs({textOutput("-", "to out"), textOutput(path, "new")}, out);
    EXPECT_TRUE(status.ok());
    EXPECT_EQ(support::readFile(path), "new");
    EXPECT_EQ(out.str(), "to out");
    EXPECT_EQ(fileCount(dir.path()), 1U);
}

TEST(Outputs, NoneAppearsWhenOneCannotBeRendered) {
    const support::TempDir dir;
    std::ostringstream out;
    const Status status =
        cli::writeOutputs({textOutput("-", "to out"), textOutput(dir.file("report"), "text"),
                           failingOutput(dir.file("json"))},
                          out);
    ASSERT_FALSE(status.ok());
    EXPECT_EQ(status.error().message, "--json: no text");
    EXPECT_EQ(fileCount(dir.path()), 0U);
    EXPECT_EQ(out.str(), "");
}

TEST(Outputs, ALinkStaysALinkAndItsFileIsReplaced) {
    const support::TempDir dir;
    const std::string file = dir.write("file", "old");
    fs::create_symlink(file, dir.file("link"));
    std::ostringstream out;
    EXPECT_TRUE(cli::writeOutputs({textOutput(dir.file("link"), "new")}, out).ok());
    EXPECT_TRUE(fs::is_symlink(dir.file("link")));
    EXPECT_EQ(support::readFile(file), "new");
}

TEST(Outputs, ADeviceIsWrittenToAndNeverReplaced) {
    std::ostringstream out;
    EXPECT_TRUE(cli::writeOutputs({textOutput("/dev/null", "text")}, out).ok());
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(Outputs, AFullDeviceIsAnErrorThatNamesOptionAndPath) {
    std::ostringstream out;
    const Status status = cli::writeOutputs({textOutput("/dev/full", "text")}, out);
    ASSERT_FALSE(status.ok());
    EXPECT_THAT(status.error().message, HasSubstr("--report: cannot write to /dev/full"));
}

TEST(Outputs, AStandardOutputThatFailsIsAnError) {
    std::ofstream out("/dev/full");
    const Status status = cli::writeOutputs({textOutput("-", "text")}, out);
    ASSERT_FALSE(status.ok());
    EXPECT_EQ(status.error().message,
              "--report: cannot write to standard output: No space left on device");
}

TEST(UnassignedOutput, LeavesNothingBehindWithoutDelivery) {
    const support::TempDir dir;
    const std::string target = dir.write("unassigned", "old");
    {
        const auto output = cli::UnassignedOutput::create(target);
        ASSERT_TRUE(output.ok());
        EXPECT_EQ(fileCount(dir.path()), 2U);
    }
    EXPECT_EQ(fileCount(dir.path()), 1U);
    EXPECT_EQ(support::readFile(target), "old");
}

TEST(UnassignedOutput, ReplacesItsTargetOnDelivery) {
    const support::TempDir dir;
    std::ostringstream out;
    const std::string target = dir.write("unassigned", "old");
    auto output = cli::UnassignedOutput::create(target);
    ASSERT_TRUE(output.ok());
    std::ofstream(output.value()->temporaryPath()) << "pairs";
    EXPECT_TRUE(cli::writeOutputs({output.value()->output()}, out).ok());
    EXPECT_EQ(support::readFile(target), "pairs");
    output.value().reset();
    EXPECT_EQ(fileCount(dir.path()), 1U);
}

TEST(UnassignedOutput, IsCopiedToStandardOutput) {
    std::ostringstream out;
    auto output = cli::UnassignedOutput::create("-");
    ASSERT_TRUE(output.ok());
    const std::string text(200000, 'A');
    std::ofstream(output.value()->temporaryPath()) << text;
    EXPECT_TRUE(cli::writeOutputs({output.value()->output()}, out).ok());
    EXPECT_EQ(out.str(), text);
}

// --- What a file output keeps, and when it is on the disk

class ReplacedOutputs : public testing::Test {
protected:
    /// Writes "new" over the file that the option names.
    void replace() const { ASSERT_TRUE(cli::writeOutputs({textOutput(path, "new")}, out).ok()); }
    void deliverUnassigned() const {
        auto output = cli::UnassignedOutput::create(path);
        ASSERT_TRUE(output.ok());
        std::ofstream(output.value()->temporaryPath()) << "new";
        ASSERT_TRUE(cli::writeOutputs({output.value()->output()}, out).ok());
    }
    const support::TempDir dir;
    const std::string path = dir.write("output", "older");
    mutable std::ostringstream out;
};

TEST_F(ReplacedOutputs, KeepThePermissionsOfTheFileThatTheyReplace) {
    for (const fs::perms mode : {fs::perms{0600}, fs::perms{0664}}) {
        fs::permissions(path, mode);
        replace();
        EXPECT_EQ(fs::status(path).permissions(), mode);
        deliverUnassigned();
        EXPECT_EQ(fs::status(path).permissions(), mode);
    }
}

TEST_F(ReplacedOutputs, KeepThemBehindALinkToo) {
    fs::permissions(path, fs::perms{0600});
    fs::create_symlink(path, dir.file("link"));
    ASSERT_TRUE(cli::writeOutputs({textOutput(dir.file("link"), "new")}, out).ok());
    EXPECT_TRUE(fs::is_symlink(dir.file("link")));
    EXPECT_EQ(support::readFile(path), "new");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms{0600});
}

TEST_F(ReplacedOutputs, AreOnDiskBeforeTheyStandUnderTheirNamesAndTheirNamesBeforeTheyAreDone) {
    std::vector<std::string> seen;
    const support::WatchedFlushes flushes([&](const struct stat& flushed) {
        seen.push_back((S_ISDIR(flushed.st_mode) ? std::string("directory: ")
                                                 : std::to_string(flushed.st_size) + " bytes: ") +
                       support::readFile(path));
        return 0;
    });
    replace();
    EXPECT_THAT(seen, ElementsAre("3 bytes: older", "directory: new"));
    seen.clear();
    dir.write("output", "older");
    deliverUnassigned();
    EXPECT_THAT(seen, ElementsAre("3 bytes: older", "directory: new"));
}

TEST_F(ReplacedOutputs, AreAllOnDiskBeforeTheFirstOfThemStandsUnderItsName) {
    const std::string other = dir.write("other", "older");
    auto unassigned = cli::UnassignedOutput::create(dir.write("pairs", "older"));
    ASSERT_TRUE(unassigned.ok());
    std::ofstream(unassigned.value()->temporaryPath()) << "new";
    std::vector<std::string> seen;
    const support::WatchedFlushes flushes([&](const struct stat& flushed) {
        seen.push_back((S_ISDIR(flushed.st_mode) ? "directory: " : "file: ") +
                       support::readFile(path) + " " + support::readFile(other) + " " +
                       support::readFile(dir.file("pairs")));
        return 0;
    });
    ASSERT_TRUE(
        cli::writeOutputs(
            {textOutput(path, "new"), textOutput(other, "new"), unassigned.value()->output()}, out)
            .ok());
    const std::string allOld = "file: older older older";
    const std::string allNew = "directory: new new new";
    EXPECT_THAT(seen, ElementsAre(allOld, allOld, allOld, allNew, allNew, allNew));
}

TEST_F(ReplacedOutputs, NeverPutTheEndOfTheProgramOffWhileTheDiskIsWaitedFor) {
    for (const mode_t waitedFor : {S_IFREG, S_IFDIR}) {
        const auto endsWhileOneIsFlushed = [&] {
            const support::WatchedFlushes flushes([&](const struct stat& flushed) {
                if ((flushed.st_mode & S_IFMT) == waitedFor) {
                    std::thread([] {
                        ::_exit(platform::beginEnd(std::chrono::milliseconds(0)) ? 0 : 1);
                    }).join();
                }
                return 0;
            });
            replace();
            ::_exit(2);
        };
        EXPECT_EXIT(endsWhileOneIsFlushed(), testing::ExitedWithCode(0), "");
    }
}

TEST_F(ReplacedOutputs, SayThatTheDiskRefusesThem) {
    const support::WatchedFlushes flushes([](const struct stat&) { return EIO; });
    const Status written = cli::writeOutputs({textOutput(path, "new")}, out);
    ASSERT_FALSE(written.ok());
    EXPECT_EQ(written.error().message, "--report: Cannot write " + path + ": Input/output error");
    auto output = cli::UnassignedOutput::create(path);
    std::ofstream(output.value()->temporaryPath()) << "new";
    const Status delivered = cli::writeOutputs({output.value()->output()}, out);
    ASSERT_FALSE(delivered.ok());
    EXPECT_EQ(delivered.error().message,
              "--unassigned: Cannot write " + path + ": Input/output error");
    output.value().reset();
    EXPECT_EQ(support::readFile(path), "older");
    EXPECT_EQ(fileCount(dir.path()), 1U);
}

} // namespace
