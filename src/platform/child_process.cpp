// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// One shell command at a time for each caller: start it, read both its streams, wait for its end. A
// child must never outlive the program, and a kill must never hit a stranger who got its number. So
// children that run stand in a list of process groups, which a signal handler can read without a
// lock:
//
//     put the end off | start, list, allow the end | read, wait | off the list | collect
//
// The system gives the number to nobody before the exit status is collected, and by then the child
// is off the list. Tested by child_process_test.cpp and program_end_test.cpp.
#include "platform/child_process.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/descriptor.h"
#include "platform/program_end.h"

namespace platform {
namespace {

/// The process groups of the children that run; 0 is a free place. A signal handler reads it,
/// hence atomics without a lock.
constexpr std::size_t kPlaces = 64;
std::array<std::atomic<pid_t>, kPlaces> runningChildren;
static_assert(std::atomic<pid_t>::is_always_lock_free);
std::atomic<bool> newChildrenRefused{false};

/// Keeps a child in the list while it lives. A child beyond the last place runs unlisted.
class Listed {
public:
    explicit Listed(pid_t child) noexcept {
        for (std::atomic<pid_t>& place : runningChildren) {
            pid_t free = 0;
            if (place.compare_exchange_strong(free, child)) {
                m_place = &place;
                return;
            }
        }
    }
    ~Listed() {
        if (m_place != nullptr) {
            m_place->store(0);
        }
    }
    Listed(const Listed&) = delete;
    Listed& operator=(const Listed&) = delete;

private:
    std::atomic<pid_t>* m_place = nullptr;
};

Error shellError(std::string_view action, int errorNumber) {
    return systemError(action, "/bin/sh", errorNumber);
}

/// What a child starts with: its descriptors, process group and signals.
class SpawnPlan {
public:
    SpawnPlan(int standardOutput, int standardError) {
        ::posix_spawn_file_actions_init(&m_actions);
        ::posix_spawnattr_init(&m_attributes);
        ::posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_adddup2(&m_actions, standardOutput, STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&m_actions, standardError, STDERR_FILENO);
        // A mask or an ignored signal of ours would be inherited through the shell by its programs.
        sigset_t signals;
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&m_attributes, &signals);
        ::sigfillset(&signals);
        ::posix_spawnattr_setsigdefault(&m_attributes, &signals);
        ::posix_spawnattr_setpgroup(&m_attributes, 0);
        ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK |
                                                      POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnPlan() {
        ::posix_spawnattr_destroy(&m_attributes);
        ::posix_spawn_file_actions_destroy(&m_actions);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    /// Starts the child and returns its process.
    Result<pid_t> run(const std::string& command) const {
        std::string shell = "sh";
        std::string option = "-c";
        std::string text = command;
        const std::array<char*, 4> arguments = {shell.data(), option.data(), text.data(), nullptr};
        pid_t child = 0;
        const int errorNumber =
            ::posix_spawn(&child, "/bin/sh", &m_actions, &m_attributes, arguments.data(), environ);
        return errorNumber == 0 ? Result<pid_t>(child) : shellError("start", errorNumber);
    }

private:
    posix_spawn_file_actions_t m_actions;
    posix_spawnattr_t m_attributes;
};

struct Pipe {
    Descriptor ours;
    Descriptor childs;
};

Result<Pipe> openPipe() {
    std::array<int, 2> ends = {-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return shellError("open a pipe to", errno);
    }
    return Pipe{Descriptor(ends[0]), Descriptor(ends[1])};
}

/// Reads both to their ends, whichever has something: a child that waits for a reader of one would
/// not go on with the other. Returns the last bytes of the second.
std::string readBothToTheEnd(const Descriptor& output, const Descriptor& errors) {
    std::string kept;
    std::array<char, kStandardErrorKept> piece;
    std::array<pollfd, 2> open = {pollfd{output.number(), POLLIN, 0},
                                  pollfd{errors.number(), POLLIN, 0}};
    while (open[0].fd >= 0 || open[1].fd >= 0) {
        if (::poll(open.data(), open.size(), -1) < 0) {
            if (errno == EINTR) {
                continue;
            }
            break;
        }
        for (pollfd& end : open) {
            if (end.fd < 0 || end.revents == 0) {
                continue;
            }
            const bool isErrors = end.fd == errors.number();
            const auto count = (isErrors ? errors : output).read(piece.data(), piece.size());
            if (!count || count.value() == 0) {
                end.fd = -1;
            } else if (isErrors) {
                kept.append(piece.data(), count.value());
                kept.erase(0, kept.size() - std::min(kept.size(), kStandardErrorKept));
            }
        }
    }
    return kept;
}

/// Waits until the child has ended and leaves its number taken, so that no new process gets it.
void waitUntilEnded(pid_t child) {
    siginfo_t facts = {};
    while (::waitid(P_PID, static_cast<id_t>(child), &facts, WEXITED | WNOWAIT) != 0 &&
           errno == EINTR) {
    }
}

Result<ChildExit> exitOf(pid_t child, std::string standardError) {
    int status = 0;
    pid_t ended = 0;
    do {
        ended = ::waitpid(child, &status, 0);
    } while (ended < 0 && errno == EINTR);
    if (ended < 0) {
        return shellError("wait for", errno);
    }
    if (WIFSIGNALED(status)) {
        return ChildExit{0, WTERMSIG(status), std::move(standardError)};
    }
    return ChildExit{WEXITSTATUS(status), 0, std::move(standardError)};
}

} // namespace

Result<ChildExit> runShellCommand(const std::string& command) {
    if (command.find('\0') != std::string::npos) {
        return Error{"Cannot run a shell command that holds a NUL byte"};
    }
    const Error refused{"Cannot start /bin/sh: the program is ending"};
    if (newChildrenRefused) {
        return refused;
    }
    Result<Pipe> output = openPipe();
    Result<Pipe> errors = openPipe();
    if (!output || !errors) {
        return output ? errors.error() : output.error();
    }
    const SpawnPlan plan(output.value().childs.number(), errors.value().childs.number());
    // A child that is not listed yet would outlive the program.
    std::optional<EndPutOff> untilListed(std::in_place);
    const Result<pid_t> child = plan.run(command);
    if (!child) {
        return child.error();
    }
    std::string standardError;
    {
        // Off the list before the number is given back: a kill never hits a stranger.
        const Listed listed(child.value());
        untilListed.reset();
        // Our copies of the writing ends would keep the pipes open for ever.
        output.value().childs = Descriptor();
        errors.value().childs = Descriptor();
        if (newChildrenRefused) {
            // It started before it could be seen in the list.
            ::kill(-child.value(), SIGKILL);
        }
        standardError = readBothToTheEnd(output.value().ours, errors.value().ours);
        waitUntilEnded(child.value());
    }
    return exitOf(child.value(), std::move(standardError));
}

std::string escapedForDoubleQuotes(const std::string& text) {
    constexpr std::string_view kExpandedByTheShell = "$`\\\"";
    std::string escaped;
    escaped.reserve(text.size());
    for (const char letter : text) {
        if (kExpandedByTheShell.find(letter) != std::string_view::npos) {
            escaped += '\\';
        }
        escaped += letter;
    }
    return escaped;
}

void killRunningChildren() noexcept {
    const int savedErrno = errno;
    for (const std::atomic<pid_t>& place : runningChildren) {
        if (const pid_t child = place.load(); child > 0) {
            ::kill(-child, SIGKILL);
        }
    }
    errno = savedErrno;
}

void refuseNewChildren() noexcept {
    newChildrenRefused = true;
}

bool waitUntilNoChildRuns(std::chrono::milliseconds patience) {
    const auto last = std::chrono::steady_clock::now() + patience;
    const auto oneRuns = [] {
        return std::any_of(runningChildren.begin(), runningChildren.end(),
                           [](const std::atomic<pid_t>& place) { return place.load() != 0; });
    };
    while (oneRuns()) {
        if (std::chrono::steady_clock::now() >= last) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace platform
