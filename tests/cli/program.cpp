// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "program.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zlib.h>

namespace program {
namespace {

namespace fs = std::filesystem;

constexpr const char* kClosed = "";

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts) {
        result.push_back(text.data());
    }
    result.push_back(nullptr);
    return result;
}

std::string modificationTime(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) {
        throw std::runtime_error("cannot look at " + path);
    }
    return std::to_string(status.st_mtim.tv_sec) + "." + std::to_string(status.st_mtim.tv_nsec);
}

/// A domain of two entries with cores that are the whole sequence.
std::string catalogueText(const std::string& normal, const std::string& mutant) {
    const auto entry = [](const std::string& name, const std::string& sequence) {
        return ">" + name + " " + sequence.substr(0, 8) + " " +
               sequence.substr(sequence.size() - 8) + " R1 0.001 0.001 0.001 30\n" + sequence +
               "\n";
    };
    return "*KRAS SomaticDNA\n" + entry("KRAS_wt", normal) + entry("KRAS_G12D", mutant) +
           "//EntryEnds\n";
}

} // namespace

const std::string ProgramTest::kNormal = "ACTTGTGGTAGTTGGAGCTGGTGGCGTAGGCAAGAGTGCC";
const std::string ProgramTest::kMutant = "ACTTGTGGTAGTTGGAGCTGATGGCGTAGGCAAGAGTGCC";
const std::string ProgramTest::kNothing = "TTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTT";

Snapshot snapshot(const std::string& directory) {
    Snapshot files;
    for (const auto& entry : fs::directory_iterator(directory)) {
        const std::string path = entry.path().string();
        files[path] = {entry.is_regular_file() ? support::readFile(path) : "",
                       modificationTime(path)};
    }
    files["."] = {"", modificationTime(directory)};
    return files;
}

std::string gzipped(const std::string& text) {
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, MAX_WBITS + 16, 8, Z_DEFAULT_STRATEGY);
    std::string source = text;
    std::string packed(deflateBound(&stream, text.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(source.data());
    stream.avail_in = static_cast<uInt>(source.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    if (deflate(&stream, Z_FINISH) != Z_STREAM_END) {
        throw std::runtime_error("cannot compress");
    }
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::string fastq(const std::string& sequence, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += "@read\n" + sequence + "\n+\n" + std::string(sequence.size(), 'I') + "\n";
    }
    return text;
}

ProgramTest::ProgramTest() {
    fs::create_directories(commandDirectory());
    m_home.write("catalogue.txt", catalogueText(kNormal, kMutant));
}

std::string ProgramTest::ordinaryRead1() {
    return fastq("GG" + kNormal, 100) + fastq("GG" + kMutant, 60) + fastq(kNothing, 40);
}

std::string ProgramTest::ordinaryRead2() {
    return fastq(kNothing, 200);
}

std::string ProgramTest::writePair(const std::string& prefix) const {
    m_inputs.write(prefix + "_R2_001.fastq", ordinaryRead2());
    return m_inputs.write(prefix + "_R1_001.fastq", ordinaryRead1());
}

std::string ProgramTest::shipCatalogue() {
    m_shipped = true;
    fs::create_directories(m_home.file("resources"));
    return m_home.write("resources/ReferenceNucleotideSequence.txt",
                        support::readFile(cataloguePath()));
}

void ProgramTest::setVariable(const std::string& name, const std::string& value) {
    m_variables.push_back(name + "=" + value);
}

Finished ProgramTest::run(const std::vector<std::string>& arguments) const {
    return wait(start(arguments));
}

Finished ProgramTest::runInto(const std::string& outPath,
                              const std::vector<std::string>& arguments) const {
    m_home.write("out", "");
    return wait(startInto(outPath, arguments));
}

pid_t ProgramTest::start(const std::vector<std::string>& arguments) const {
    m_home.write("out", "");
    return startInto(outPath(), arguments);
}

pid_t ProgramTest::startIgnoring(int signal, const std::vector<std::string>& arguments) const {
    m_home.write("out", "");
    const auto before = std::signal(signal, SIG_IGN);
    const pid_t process = startInto(outPath(), arguments, signal);
    std::signal(signal, before);
    return process;
}

pid_t ProgramTest::startInterrupted(const std::vector<std::string>& arguments) const {
    m_home.write("out", "");
    m_home.write("err", "");
    std::vector<std::string> words = commandLine(arguments);
    std::vector<std::string> variables = environment();
    const auto wordPointers = pointers(words);
    const auto variablePointers = pointers(variables);
    const pid_t process = fork();
    if (process == 0) {
        // What is blocked and pending stays so in the program that takes this one's place.
        sigset_t interrupt;
        sigemptyset(&interrupt);
        sigaddset(&interrupt, SIGINT);
        sigprocmask(SIG_BLOCK, &interrupt, nullptr);
        std::signal(SIGINT, SIG_DFL);
        kill(getpid(), SIGINT);
        execve(VEXTA_PROGRAM, wordPointers.data(), variablePointers.data());
        _exit(127);
    }
    return process;
}

Finished ProgramTest::wait(pid_t process) const {
    int status = 0;
    if (waitpid(process, &status, 0) != process) {
        throw std::runtime_error("cannot wait for the program");
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, support::readFile(outPath()),
            support::readFile(errPath())};
}

std::vector<std::string> ProgramTest::environment() const {
    std::vector<std::string> variables = {"HOME=" + m_home.path(),
                                          "XDG_CONFIG_HOME=" + m_home.file("config"),
                                          "TMPDIR=" + m_temporary.path(), "LC_ALL=C",
                                          "PATH=" + commandDirectory() + ":" + std::getenv("PATH")};
    if (m_shipped) {
        variables.push_back("VEXTA_RESOURCES=" + m_home.file("resources"));
    }
    variables.insert(variables.end(), m_variables.begin(), m_variables.end());
    return variables;
}

std::vector<std::string> ProgramTest::commandLine(const std::vector<std::string>& arguments) const {
    std::vector<std::string> words = {VEXTA_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    if (!m_shipped && !arguments.empty() && arguments[0].rfind("analyze", 0) == 0) {
        words.insert(words.begin() + 2, {"--catalogue", cataloguePath()});
    }
    return words;
}

pid_t ProgramTest::startInto(const std::string& outPath, const std::vector<std::string>& arguments,
                             int ignored) const {
    std::vector<std::string> words = commandLine(arguments);
    std::vector<std::string> variables = environment();

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
    if (outPath == kClosed) {
        posix_spawn_file_actions_addclose(&files, 1);
    } else {
        posix_spawn_file_actions_addopen(&files, 1, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                         0600);
    }
    posix_spawn_file_actions_addopen(&files, 2, errPath().c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    // Whoever started the tests may have ignored or blocked the signals that end a program.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        if (signal != ignored) {
            sigaddset(&signals, signal);
        }
    }
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);

    pid_t process = 0;
    const int failure = posix_spawn(&process, VEXTA_PROGRAM, &files, &attributes,
                                    pointers(words).data(), pointers(variables).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    if (failure != 0) {
        throw std::runtime_error("cannot start the program");
    }
    return process;
}

} // namespace program
