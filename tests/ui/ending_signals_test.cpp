// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include <QProcess>
#include <QtTest>

#include "platform/files.h"
#include "support/small_run.h"
#include "support/temp_dir.h"
#include "ui/window_test.h"

namespace {

namespace fs = std::filesystem;

constexpr int kAtMostMilliseconds = 60'000;

bool hasEnded(const std::string& process) {
    const std::string status = "/proc/" + process + "/status";
    return !fs::exists(status) || support::readFile(status).find("State:\tZ") != std::string::npos;
}

/// A program with windows in a world of its own, in which "gunzip" says that it started and then
/// waits for ever.
struct World {
    World() {
        fs::create_directories(home.file("bin"));
        const std::string command =
            home.write("bin/gunzip", "#!/bin/sh\necho $$ > '" + home.file("pid.new") + "'\nmv '" +
                                         home.file("pid.new") + "' '" + home.file("pid") +
                                         "'\nwhile :; do sleep 0.02; done\n");
        fs::permissions(command, fs::perms::owner_all);
        fs::create_directories(home.file("run"));
        fs::permissions(home.file("run"), fs::perms::owner_all);
        catalogue = home.write("catalogue.txt", support::kSmallCatalogue);
        read1 = inputs.write("p_S1_L001_R1_001.fastq", support::reads(2));
        inputs.write("p_S1_L001_R2_001.fastq.gz", "never expanded");
        names = namesOfInputs();

        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* place : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
            environment.insert(QString::fromLatin1(place), QString::fromStdString(home.path()));
        }
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"),
                           QString::fromStdString(home.file("run")));
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("PATH"), QString::fromStdString(home.file("bin")) +
                                                       QStringLiteral(":") +
                                                       environment.value(QStringLiteral("PATH")));
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }

    void start(const char* command) {
        program.start(QStringLiteral(ENDING_PROGRAM),
                      {QString::fromStdString(catalogue), QString::fromStdString(read1),
                       QString::fromLatin1(command)});
    }
    void send(int signal) const { ::kill(static_cast<pid_t>(program.processId()), signal); }
    bool saysReady() { return program.waitForReadyRead(kAtMostMilliseconds); }
    /// Whether it ends by itself, with status 0.
    bool endsWell() {
        return program.waitForFinished(kAtMostMilliseconds) &&
               program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0;
    }
    std::vector<std::string> namesOfInputs() const {
        std::vector<std::string> found = platform::namesInDirectory(inputs.path()).value();
        std::sort(found.begin(), found.end());
        return found;
    }
    std::string expandingChild() const {
        const std::string text = support::readFile(home.file("pid"));
        return text.substr(0, text.find('\n'));
    }

    support::TempDir home;
    support::TempDir inputs;
    std::string catalogue;
    std::string read1;
    std::vector<std::string> names;
    QProcess program;
};

} // namespace

class EndingSignalsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutARunTheApplicationQuits_data() { signals_data(); }
    void withoutARunTheApplicationQuits() {
        QFETCH(int, signal);
        World world;
        world.start("idle");
        QVERIFY(world.saysReady());
        world.send(signal);
        QVERIFY(world.endsWell());
    }

    void aRunIsBrokenOffWithItsChildAndItsCopies_data() {
        QTest::addColumn<int>("signal");
        QTest::addColumn<QByteArray>("command");
        for (const char* command : {"analyze", "analyze-all"}) {
            QTest::addRow("SIGTERM %s", command) << SIGTERM << QByteArray(command);
            QTest::addRow("SIGHUP %s", command) << SIGHUP << QByteArray(command);
        }
    }
    void aRunIsBrokenOffWithItsChildAndItsCopies() {
        QFETCH(int, signal);
        QFETCH(QByteArray, command);
        World world;
        world.start(command.constData());
        QTRY_VERIFY_WITH_TIMEOUT(fs::exists(world.home.file("pid")), kAtMostMilliseconds);
        QVERIFY(world.namesOfInputs() != world.names);
        world.send(signal);
        QVERIFY(world.endsWell());
        QTRY_VERIFY_WITH_TIMEOUT(hasEnded(world.expandingChild()), kAtMostMilliseconds);
        QCOMPARE(world.namesOfInputs(), world.names);
    }

    void aMainThreadThatIsBusyHoldsTheEndUpForAMomentOnly() {
        World world;
        world.inputs.write("unfinished", "");
        world.start("busy");
        QVERIFY(world.saysReady());
        world.send(SIGTERM);
        QVERIFY(world.endsWell());
        QCOMPARE(world.namesOfInputs(), world.names);
    }

    void aSecondSignalDoesNotCutTheQuittingOff() {
        World world;
        world.start("signal twice");
        QVERIFY(world.endsWell());
        QCOMPARE(world.program.readAllStandardOutput(), QByteArray("quit\n"));
    }

    void aSignalThatWasIgnoredAtTheStartStaysIgnored() {
        World world;
        world.program.setChildProcessModifier([] { std::signal(SIGHUP, SIG_IGN); });
        world.start("idle");
        QVERIFY(world.saysReady());
        const std::string status =
            support::readFile("/proc/" + std::to_string(world.program.processId()) + "/status");
        const std::string ignored = status.substr(status.find("SigIgn:") + 8, 16);
        QCOMPARE(std::stoull(ignored, nullptr, 16) & 1U, 1U); // SIGHUP is the first
        world.send(SIGTERM);
        QVERIFY(world.endsWell());
    }

    void theDesktopProgramTakesThem_data() { signals_data(); }
    void theDesktopProgramTakesThem() {
        QFETCH(int, signal);
        World world;
        world.program.start(QStringLiteral(VEXTA_DESKTOP),
                            {QStringLiteral("--catalogue"), QString::fromStdString(world.catalogue),
                             QString::fromStdString(world.read1)});
        // It remembers what it opened when its event loop turns.
        QTRY_VERIFY_WITH_TIMEOUT(fs::exists(world.home.file("vexta/vexta-desktop.conf")),
                                 kAtMostMilliseconds);
        world.send(signal);
        QVERIFY(world.endsWell());
        for (const auto& entry : fs::directory_iterator(world.home.file("run"))) {
            QVERIFY2(!entry.is_socket(), entry.path().c_str());
        }
    }

private:
    static void signals_data() {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGHUP") << SIGHUP;
        QTest::newRow("SIGINT") << SIGINT;
    }
};

WINDOW_TEST(EndingSignalsTest, QCoreApplication)
#include "ending_signals_test.moc"
