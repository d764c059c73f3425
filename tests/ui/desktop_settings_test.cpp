// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>

#include <QMessageBox>
#include <QtTest>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "settings/json_settings_store.h"
#include "support/temp_dir.h"
#include "ui/application/desktop_services.h"
#include "ui/application/desktop_settings.h"
#include "ui/application/qt_ports.h"
#include "ui/window_test.h"

namespace {

QMessageBox* shownBox() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == QStringLiteral("settingsTrouble") && widget->isVisible()) {
            return qobject_cast<QMessageBox*>(widget);
        }
    }
    return nullptr;
}

/// The lock of a settings file in another program's hands.
class ForeignLock {
public:
    explicit ForeignLock(const std::string& settingsPath)
        : m_file(::open((settingsPath + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        if (::flock(m_file, LOCK_EX | LOCK_NB) != 0) {
            qFatal("The lock cannot be taken.");
        }
    }
    ~ForeignLock() { ::close(m_file); }
    ForeignLock(const ForeignLock&) = delete;
    ForeignLock& operator=(const ForeignLock&) = delete;

private:
    int m_file;
};

bool holdsValue(const std::string& path, const char* key, const settings::SettingValue& value) {
    const auto values = settings::readSettingsFile(path);
    return values && values.value().count(key) == 1 && values.value().find(key)->second == value;
}

} // namespace

class DesktopSettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDamagedSettingsFileIsToldAndKept() {
        const support::TempDir dir;
        const std::string path = dir.write("settings.json", "{\"nD1Threshold\": ");
        ui::QtMainQueue queue;
        ui::SettingsTrouble trouble(queue);
        settings::JsonSettingsStore store(
            path, [&](const std::string& message) { trouble.report(message); });
        store.setValue("nD1Threshold", std::string("500")); // only a write sets the file aside
        QVERIFY(shownBox() == nullptr);
        QCoreApplication::processEvents();
        QVERIFY(shownBox() != nullptr);
        QVERIFY(shownBox()->informativeText().contains(QStringLiteral("settings.json.damaged")));
        QVERIFY(!shownBox()->isModal());
        QCOMPARE(support::readFile(dir.file("settings.json.damaged")),
                 std::string("{\"nD1Threshold\": "));
    }

    void whatIsWaitedForIsOnScreenWhileItIsWaitedFor() {
        const support::TempDir dir;
        const std::string path = dir.file("settings.json");
        ui::QtMainQueue queue;
        ui::SettingsTrouble trouble(queue);
        settings::JsonSettingsStore file(
            path, [&](const std::string& message) { trouble.report(message); },
            {std::chrono::milliseconds(0), std::chrono::hours(1)});
        ui::BackgroundSettings settings(file);
        auto lock = std::make_unique<ForeignLock>(path); // goes first, also where a check fails
        settings.setMissing({{"first", true}, {"set", false}});
        settings.setValue("set", std::string("1"));
        settings.setValue("set", std::string("2"));
        QVERIFY(settings.value("first") == settings::SettingValue(true));
        QVERIFY(settings.value("set") == settings::SettingValue(std::string("2")));
        QVERIFY(!settings.value("other"));
        QTRY_VERIFY(shownBox() != nullptr);
        QVERIFY(shownBox()->informativeText().startsWith(QStringLiteral("Waiting")));
        QVERIFY(!holdsValue(path, "set", std::string("2")));
        lock.reset();
        QTRY_VERIFY(holdsValue(path, "set", std::string("2")));
        QVERIFY(holdsValue(path, "first", true));
        QVERIFY(settings.value("first") == settings::SettingValue(true));
        QVERIFY(settings.value("set") == settings::SettingValue(std::string("2")));
    }

    void settingsOnTheirWayAreStoredBeforeTheirStoreGoes() {
        const support::TempDir dir;
        const std::string path = dir.file("settings.json");
        settings::JsonSettingsStore file(path, [](const std::string&) {});
        {
            ui::BackgroundSettings settings(file);
            for (std::int64_t i = 0; i < 20; ++i) {
                settings.setValue("key", i);
            }
        }
        QVERIFY(holdsValue(path, "key", std::int64_t{19}));
    }

    void theDesktopStoresSettingsWithoutHoldingItsMainThread() {
        const support::TempDir dir;
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(dir.path()));
        QVERIFY(QDir().mkpath(QString::fromStdString(dir.file("vexta"))));
        const std::string path = dir.file("vexta/settings.json");
        ui::DesktopServices services({}, run::DefinitionOrigin::shipped);
        auto lock = std::make_unique<ForeignLock>(path);
        settings::SettingsStore& settings = services.documentServices().run.settings;
        settings.setValue("nD1Threshold", std::string("700"));
        QVERIFY(settings.value("nD1Threshold") == settings::SettingValue(std::string("700")));
        // Whoever had waited for the lock before would have given up and kept it to himself.
        lock.reset();
        QTRY_VERIFY(holdsValue(path, "nD1Threshold", std::string("700")));
    }

    void aFurtherMessageJoinsTheOneOnScreen() {
        ui::QtMainQueue queue;
        ui::SettingsTrouble trouble(queue);
        std::thread([&] {
            trouble.report("first");
            trouble.report("second");
        }).join();
        QCoreApplication::processEvents();
        QCOMPARE(shownBox()->informativeText(), QStringLiteral("first\n\nsecond"));
        QTest::keyClick(shownBox(), Qt::Key_Escape);
        QTRY_VERIFY(shownBox() == nullptr);
        trouble.report("third");
        QCoreApplication::processEvents();
        QCOMPARE(shownBox()->informativeText(), QStringLiteral("third"));
    }
};

WINDOW_TEST(DesktopSettingsTest, QApplication)
#include "desktop_settings_test.moc"
