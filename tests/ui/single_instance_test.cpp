// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <chrono>
#include <future>
#include <memory>
#include <string>

#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include "support/temp_dir.h"
#include "ui/application/single_instance.h"
#include "ui/window_test.h"

using ui::SingleInstance;

namespace {

/// Hands over from a thread of its own, as another process would, while this one's loop turns.
bool handOverFrom(const SingleInstance& second, const QStringList& files) {
    auto taken = std::async(std::launch::async, [&] { return second.handOver(files); });
    while (taken.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready) {
        QCoreApplication::processEvents();
    }
    return taken.get();
}

} // namespace

class SingleInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSecondOfANameHandsItsFilesToTheFirst() {
        const support::TempDir dir;
        const SingleInstance first(dir.path(), "name");
        const SingleInstance second(dir.path(), "name");
        QVERIFY(first.isFirst());
        QVERIFY(!second.isFirst());
        QSignalSpy handedOver(&first, &SingleInstance::handedOver);
        const QStringList files{QStringLiteral("/d/a b\n.vexta"),
                                QStringLiteral("/d/\u00E4.vexta")};
        QVERIFY(handOverFrom(second, files));
        QCOMPARE(handedOver.size(), 1);
        QCOMPARE(handedOver.takeFirst().first().toStringList(), files);
    }

    void aStartWithoutFilesIsHandedOverToo() {
        const support::TempDir dir;
        const SingleInstance first(dir.path(), "name");
        QSignalSpy handedOver(&first, &SingleInstance::handedOver);
        QVERIFY(handOverFrom(SingleInstance(dir.path(), "name"), {}));
        QCOMPARE(handedOver.takeFirst().first().toStringList(), QStringList());
    }

    void programsOfOtherNamesDoNotMeet() {
        const support::TempDir dir;
        const SingleInstance first(dir.path(), "name");
        const SingleInstance other(dir.path(), "other");
        QVERIFY(other.isFirst());
    }

    void theNextIsFirstWhenTheFirstHasEnded() {
        const support::TempDir dir;
        auto first = std::make_unique<SingleInstance>(dir.path(), "name");
        first.reset();
        const SingleInstance next(dir.path(), "name");
        QVERIFY(next.isFirst());
    }

    void aSocketLeftByAKilledProcessIsReplaced() {
        const support::TempDir dir;
        dir.write("name", "left behind");
        dir.write("name.lock", "");
        const SingleInstance first(dir.path(), "name");
        QVERIFY(first.isFirst());
        QVERIFY(handOverFrom(SingleInstance(dir.path(), "name"), {}));
    }

    void withoutAPrivateDirectoryNobodyMeets() {
        const SingleInstance alone({}, "name");
        QVERIFY(!alone.handOver({QStringLiteral("/d/a.vexta")}));
        const support::TempDir dir;
        QVERIFY(!SingleInstance(dir.file("missing"), "name").handOver({}));
    }

    void anyoneElsesDirectoryIsNotTheSessions() {
        const support::TempDir dir;
        qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(dir.path()));
        QCOMPARE(ui::sessionDirectory(), dir.path());
        QFile::setPermissions(QString::fromStdString(dir.path()),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                  QFile::ReadOther | QFile::ExeOther);
        QCOMPARE(ui::sessionDirectory(), std::string());
    }

    void anotherCatalogueOrDisplayIsAnotherProgram() {
        const std::string name = ui::sessionName("/a.txt");
        QVERIFY(ui::sessionName("/b.txt") != name);
        qputenv("DISPLAY", ":99");
        QVERIFY(ui::sessionName("/a.txt") != name);
    }
};

WINDOW_TEST(SingleInstanceTest, QCoreApplication)
#include "single_instance_test.moc"
