// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <type_traits>

#include <QtTest>

/// One program holds all window tests: as programs of their own they would take minutes more to
/// build. A process runs one test class, so each has an application object and a home of its own.
namespace support {

/// Runs a test class and returns how many of its functions failed.
using WindowTest = int (*)(int argc, char** argv);

/// The tests of this program by the names of their sources, without the extension.
const std::map<std::string, WindowTest>& windowTests();

/// Makes the test class in the source at `path` known; a source has one, or else this ends the
/// program.
bool addWindowTest(const std::string& path, WindowTest test);

/// For tests that need no application object or make one themselves.
struct NoApplication {};

template <class TestClass, class Application>
int runWindowTest(int argc, char** argv) {
    if constexpr (std::is_same_v<Application, NoApplication>) {
        TestClass test;
        return QTest::qExec(&test, argc, argv);
    } else {
        Application application(argc, argv);
        application.setAttribute(Qt::AA_Use96Dpi);
        TestClass test;
        return QTest::qExec(&test, argc, argv);
    }
}

} // namespace support

/// Stands where QTEST_MAIN would stand in a program of its own. The test class of the source runs
/// under an application object of that class: QApplication, QCoreApplication or
/// support::NoApplication.
#define WINDOW_TEST(TestClass, Application)                                                        \
    namespace {                                                                                    \
    [[maybe_unused]] const bool kIsKnown =                                                         \
        support::addWindowTest(__FILE__, support::runWindowTest<TestClass, Application>);          \
    }
