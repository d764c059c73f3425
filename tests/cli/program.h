// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <sys/types.h>

#include "support/temp_dir.h"

/// Runs the built program in a world of its own: a home, settings, a catalogue and reads, all in
/// temporary directories.
namespace program {

struct Finished {
    /// Exit status; -1 when a signal ended the program.
    int status = -1;
    std::string out;
    std::string err;
};

/// Names and bytes of a directory's files, and their modification times, to show that nothing
/// changed.
using Snapshot = std::map<std::string, std::pair<std::string, std::string>>;
Snapshot snapshot(const std::string& directory);

/// `text` as a gzip member.
std::string gzipped(const std::string& text);

/// FASTQ text of `count` records with that sequence, all of high quality.
std::string fastq(const std::string& sequence, std::size_t count);

class ProgramTest : public testing::Test {
protected:
    ProgramTest();

    /// Cores of the test catalogue's entries, longer than any chance match.
    static const std::string kNormal;
    static const std::string kMutant;
    static const std::string kNothing;
    /// 100 pairs of the normal entry, 60 of the mutant, 40 of neither.
    static std::string ordinaryRead1();
    static std::string ordinaryRead2();

    /// What an analysis says of 200 ordinary pairs, fewer than a call needs.
    static std::string tooFewReadsOf(const std::string& name) {
        return "vexta: warning: " + name +
               ": somatic DNA: not assessable (1 of 1 targets ND *1).\n";
    }

    /// From now on the test catalogue is the one that ships, and an analysis is not given
    /// `--catalogue`. Returns its path.
    std::string shipCatalogue();
    /// From now on the program's environment holds the variable.
    void setVariable(const std::string& name, const std::string& value);

    /// Writes the pair PREFIX_R1_001.fastq and PREFIX_R2_001.fastq of 200 ordinary pairs into the
    /// directory of inputs and returns the path of read 1.
    std::string writePair(const std::string& prefix) const;

    /// Runs the program with the test catalogue and settings, and waits for it. An analysis is
    /// given `--catalogue`.
    Finished run(const std::vector<std::string>& arguments) const;
    /// The same with standard output going elsewhere; `out` of the result is empty.
    Finished runInto(const std::string& outPath, const std::vector<std::string>& arguments) const;

    /// Starts the program and returns its process id; its output goes to outPath() and errPath().
    pid_t start(const std::vector<std::string>& arguments) const;
    /// The same for a program that is started with the signal ignored, as nohup does it.
    pid_t startIgnoring(int signal, const std::vector<std::string>& arguments) const;
    /// The same for a program that was sent SIGINT before it did anything; what it says is not
    /// kept.
    pid_t startInterrupted(const std::vector<std::string>& arguments) const;
    Finished wait(pid_t process) const;
    std::string outPath() const { return m_home.file("out"); }
    std::string errPath() const { return m_home.file("err"); }

    /// Files that tests write besides inputs.
    const support::TempDir& outputs() const { return m_outputs; }
    const support::TempDir& inputs() const { return m_inputs; }
    const support::TempDir& home() const { return m_home; }
    /// The program's TMPDIR.
    const support::TempDir& temporary() const { return m_temporary; }
    std::string settingsPath() const { return m_home.file("config/vexta/settings.json"); }
    /// A directory that is first in the program's PATH.
    std::string commandDirectory() const { return m_home.file("bin"); }
    std::string cataloguePath() const { return m_home.file("catalogue.txt"); }

private:
    pid_t startInto(const std::string& outPath, const std::vector<std::string>& arguments,
                    int ignored = 0) const;
    /// The program and its arguments.
    std::vector<std::string> commandLine(const std::vector<std::string>& arguments) const;
    std::vector<std::string> environment() const;

    support::TempDir m_home;
    support::TempDir m_inputs;
    support::TempDir m_outputs;
    bool m_shipped = false;
    std::vector<std::string> m_variables;
    /// ThreadSanitizer's run-time library writes there as it starts, so it is none of the
    /// directories of which snapshots are taken.
    support::TempDir m_temporary;
};

} // namespace program
