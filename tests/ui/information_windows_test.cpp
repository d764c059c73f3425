// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QCryptographicHash>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTextBrowser>
#include <QtTest>

#include "support/small_run.h"
#include "support/temp_dir.h"
#include "ui/accessible_tree.h"
#include "ui/application/catalogue_facts.h"
#include "ui/application/information_windows.h"
#include "ui/window_test.h"

namespace {

QString digestOfSmallCatalogue() {
    return QString::fromLatin1(
        QCryptographicHash::hash(QByteArray::fromStdString(support::kSmallCatalogue),
                                 QCryptographicHash::Sha256)
            .toHex());
}

} // namespace

class InformationWindowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aboutNamesTheCatalogueAndCountsIt() {
        const support::TempDir dir;
        const std::string path = dir.write("<b>panel.txt", support::kSmallCatalogue);
        const auto window = ui::makeAboutWindow(path);
        const auto* label = window->findChild<QLabel*>(QStringLiteral("aboutCatalogue"));
        QCOMPARE(label->text(),
                 QStringLiteral("Catalogue: %1\n1 domains with 2 mutations\nSHA-256: %2")
                     .arg(QString::fromStdString(path), digestOfSmallCatalogue()));
        QVERIFY(label->textFormat() == Qt::PlainText);
        QVERIFY(label->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
        QVERIFY(label->textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
    }

    void aboutSaysThatNoRunCanStartWithAFaultyCatalogue() {
        const support::TempDir dir;
        const QString facts = ui::catalogueFacts(dir.write("panel.txt", support::kFaultyCatalogue));
        QVERIFY(facts.contains(QStringLiteral("1 faults: no run can start with it")));
    }

    void aPercentSignInTheCataloguesPathIsPartOfThePath() {
        const support::TempDir dir;
        const std::string path = dir.write("50%2.txt", support::kSmallCatalogue);
        QCOMPARE(ui::catalogueFacts(path),
                 QStringLiteral("Catalogue: ") + QString::fromStdString(path) +
                     QStringLiteral("\n1 domains with 2 mutations\n") +
                     QStringLiteral("SHA-256: ") + digestOfSmallCatalogue());
    }

    void aMissingCatalogueIsTold() {
        const support::TempDir dir;
        QVERIFY(ui::catalogueFacts({}).contains(QStringLiteral("is missing")));
        QVERIFY(ui::catalogueFacts(dir.file("gone.txt")).contains(QStringLiteral("gone.txt")));
        QVERIFY(ui::catalogueNotice(dir.file("gone.txt"))
                    .contains(QStringLiteral("No read pair will be assigned.")));
        QCOMPARE(ui::catalogueNotice(dir.write("there.txt", "")), QString());
    }

    void aboutLeadsToTheLicences() {
        const auto window = ui::makeAboutWindow({});
        const QSignalSpy asked(window.get(), &ui::InformationWindow::licencesRequested);
        for (QPushButton* button : window->findChildren<QPushButton*>()) {
            if (button->text().contains(QStringLiteral("Licences"))) {
                button->click();
            }
        }
        QCOMPARE(asked.size(), 1);
    }

    void everyLibraryIsNamedWithItsLicence() {
        const auto window = ui::makeLicencesWindow();
        const QString text = window->findChild<QPlainTextEdit*>()->toPlainText();
        for (const char* name :
             {"Apache License, Version 2.0", "Qt", "Lesser General Public License", "Expat", "zlib",
              "Asio", "Boost Software License", "JSON for Modern C++", "Permission is hereby"}) {
            QVERIFY2(text.contains(QString::fromLatin1(name)), name);
        }
    }

    void helpNamesEveryKey() {
        const auto window = ui::makeHelpWindow();
        const QString text = window->findChild<QTextBrowser*>()->toPlainText();
        QVERIFY(!ui::helpKeys().isEmpty());
        for (const ui::HelpKey& key : ui::helpKeys()) {
            QVERIFY2(text.contains(key.keys), qPrintable(key.keys));
            QVERIFY2(text.contains(key.what), qPrintable(key.what));
        }
    }

    void everyControlHasANameAndTheKeyboardReachesIt() {
        const auto about = ui::makeAboutWindow({});
        const auto licences = ui::makeLicencesWindow();
        const auto help = ui::makeHelpWindow();
        for (QWidget* window : QList<QWidget*>{about.get(), licences.get(), help.get()}) {
            window->show();
            QVERIFY(QTest::qWaitForWindowActive(window));
            QCOMPARE(support::controlsWithoutName(*window), QStringList());
            QCOMPARE(support::controlsThatTabMisses(*window), QStringList());
        }
    }
};

WINDOW_TEST(InformationWindowsTest, QApplication)
#include "information_windows_test.moc"
