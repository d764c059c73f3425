// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <string>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QRegularExpression>
#include <QtTest>

#include "support/temp_dir.h"
#include "ui/open_window.h"
#include "ui/window/notices.h"
#include "ui/window/save_dialog.h"

using support::OpenWindow;

namespace {

constexpr const char* kOld = "what stood there before";

/// The save panel of a real window, into which a user types.
class OpenPanel {
public:
    OpenPanel() {
        m_open.openPair(7);
        m_window = &m_open.show();
        QTest::keyClick(m_window->mainWindow, Qt::Key_S, Qt::ControlModifier);
        panel = m_window->mainWindow->findChild<ui::SaveDialog*>(QStringLiteral("savePanel"));
        // Until it has the keyboard: a window counts as active while a panel of its own is.
        if (!panel || !QTest::qWaitFor([this] { return QApplication::activeWindow() == panel; })) {
            qFatal("the save panel did not come up");
        }
    }

    /// Types in place of what stands in the name's field, then presses Enter.
    void enter(const QString& typed) const {
        auto* name = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(name != nullptr);
        QTest::keyClick(name, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(name, Qt::Key_Delete);
        QTest::keyClicks(name, typed);
        QCOMPARE(name->text(), typed);
        // Suggestions come when the folder was read, and take the first Enter for themselves.
        if (QCompleter* suggestions = name->completer()) {
            suggestions->popup()->hide();
        }
        QTest::keyClick(name, Qt::Key_Return);
    }

    /// The box that stands on the panel under that name; null where none does.
    QMessageBox* box(const char* name) const {
        if (panel) {
            for (auto* found : panel->findChildren<QMessageBox*>(QLatin1String(name))) {
                if (found->isVisible()) {
                    return found;
                }
            }
        }
        return nullptr;
    }
    /// The question after `typed` was entered. The list of suggestions opens when the folder was
    /// read, and may take an Enter for itself: then it is pressed again, as a user would.
    QMessageBox* questionAfter(const QString& typed) const {
        const auto isAsked = [this] { return box("replaceQuestion") != nullptr; };
        enter(typed);
        for (int time = 0; time < 2 && !QTest::qWaitFor(isAsked, 1000); ++time) {
            enter(typed);
        }
        return box("replaceQuestion");
    }
    static void press(const QMessageBox& box, QMessageBox::ButtonRole role) {
        for (QAbstractButton* button : box.buttons()) {
            if (box.buttonRole(button) == role) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        QFAIL("the box has no such button");
    }

    QString folder() const { return QString::fromStdString(m_open.reads.path()); }
    void write(const std::string& name) const { m_open.reads.write(name, kOld); }
    std::string bytesOf(const std::string& name) const {
        return support::readFile(m_open.reads.file(name));
    }
    /// The names in the folder, without those of the reads.
    QStringList names() const {
        return QDir(folder())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
            .filter(QRegularExpression(QStringLiteral("^(?!p_S7_)")));
    }
    QString notice() const { return m_window->noticeLine->text(); }
    bool isOver() const { return panel.isNull() || !panel->isVisible(); }

    QPointer<ui::SaveDialog> panel;

private:
    OpenWindow m_open;
    ui::WindowController* m_window = nullptr;
};

} // namespace

/// Names as users type them, in the panel that they see.
class SaveDialogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// With the home elsewhere, a full name that is typed again after "no" is not asked for again:
    /// nothing happens, and nothing is written.
    void initTestCase() { QVERIFY(qputenv("HOME", m_home.path().c_str())); }

    void whatIsTypedGetsTheExtension_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("written");
        const auto row = [](const char* typed, const char* written) {
            QTest::newRow(typed) << QString::fromUtf8(typed) << QString::fromUtf8(written);
        };
        row("y", "y.vexta");
        row("y.txt", "y.txt.vexta");
        row("y.vexta", "y.vexta");
        row("Y.VEXTA", "Y.VEXTA");
        row("y.vexta.bak", "y.vexta.bak.vexta");
        row("yvexta", "yvexta.vexta");
        row("run 42.1", "run 42.1.vexta");
        row("y.", "y.vexta");
        row("y. ", "y.vexta");
        row("y.txt  ", "y.txt.vexta");
        row("y.vexta ", "y.vexta");
        row(".y", ".y.vexta");
    }
    void whatIsTypedGetsTheExtension() {
        QFETCH(QString, typed);
        QFETCH(QString, written);
        const OpenPanel open;
        open.enter(typed);
        QTRY_VERIFY(open.isOver());
        QCOMPARE(open.names(), QStringList{written});
        QCOMPARE(open.notice(), QStringLiteral("Saved as %1/%2").arg(open.folder(), written));
    }

    void aTypedPathIsFollowed_data() {
        QTest::addColumn<bool>("absolute");
        QTest::newRow("absolute") << true;
        QTest::newRow("within the folder on show") << false;
    }
    void aTypedPathIsFollowed() {
        QFETCH(bool, absolute);
        const OpenPanel open;
        QVERIFY(QDir(open.folder()).mkdir(QStringLiteral("my runs")));
        const QString path = QStringLiteral("my runs/y.txt");
        open.enter(absolute ? open.folder() + QLatin1Char('/') + path : path);
        QTRY_VERIFY(open.isOver());
        QCOMPARE(open.names(), QStringList{QStringLiteral("my runs")});
        QVERIFY(QFile::exists(open.folder() + QStringLiteral("/my runs/y.txt.vexta")));
    }

    void aTypedDirectoryIsEntered_data() {
        QTest::addColumn<QString>("typed");
        QTest::newRow("by its name") << QStringLiteral("sub");
        QTest::newRow("with a slash") << QStringLiteral("sub/");
        QTest::newRow("with an extension") << QStringLiteral("sub.txt");
    }
    void aTypedDirectoryIsEntered() {
        QFETCH(QString, typed);
        const OpenPanel open;
        QVERIFY(QDir(open.folder()).mkdir(typed.section(QLatin1Char('/'), 0, 0)));
        open.enter(typed);
        QVERIFY(!open.isOver());
        QCOMPARE(open.panel->directory().dirName(), typed.section(QLatin1Char('/'), 0, 0));
        open.enter(QStringLiteral("y.txt"));
        QTRY_VERIFY(open.isOver());
        QVERIFY(QFile::exists(open.folder() + QLatin1Char('/') + typed +
                              QStringLiteral("/y.txt.vexta")));
    }

    void aNameThatCannotBeWrittenIsToldAndThePanelStays_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("reason");
        QTest::newRow("blanks") << QStringLiteral("   ") << QStringLiteral("needs a name");
        QTest::newRow("only the extension")
            << QStringLiteral(".vexta") << QStringLiteral("needs a name");
        QTest::newRow("no such folder")
            << QStringLiteral("nowhere/y") << QStringLiteral("There is no folder ");
        QTest::newRow("a folder to be") << QStringLiteral("nowhere/") << QStringLiteral("/nowhere");
        QTest::newRow("a folder of the name that is written")
            << QStringLiteral("taken") << QStringLiteral("taken.vexta is a folder");
    }
    void aNameThatCannotBeWrittenIsToldAndThePanelStays() {
        QFETCH(QString, typed);
        QFETCH(QString, reason);
        const OpenPanel open;
        QVERIFY(QDir(open.folder()).mkdir(QStringLiteral("taken.vexta")));
        open.enter(typed);
        const QMessageBox* box = open.box("refusedName");
        QVERIFY(box != nullptr);
        QVERIFY2(box->text().contains(reason), qUtf8Printable(box->text()));
        OpenPanel::press(*box, QMessageBox::AcceptRole);
        QVERIFY(!open.isOver());
        QCOMPARE(open.names(), QStringList{QStringLiteral("taken.vexta")});
    }

    void replacingIsAskedForTheNameThatIsWritten_data() {
        QTest::addColumn<QString>("typed");
        QTest::newRow("without the extension") << QStringLiteral("y.txt");
        QTest::newRow("with the extension") << QStringLiteral("y.txt.vexta");
        QTest::newRow("by a path") << QStringLiteral("./y.txt");
    }
    void replacingIsAskedForTheNameThatIsWritten() {
        QFETCH(QString, typed);
        const OpenPanel open;
        open.write("y.txt.vexta");
        QMessageBox* box = open.questionAfter(typed);
        QVERIFY(box != nullptr);
        QCOMPARE(box->text(),
                 QStringLiteral("y.txt.vexta already exists. Do you want to replace it?"));
        QTest::keyClick(box, Qt::Key_Return); // the button that replaces nothing is the default
        QTRY_VERIFY(open.box("replaceQuestion") == nullptr);
        QVERIFY(!open.isOver());
        QCOMPARE(open.bytesOf("y.txt.vexta"), std::string(kOld));
        QVERIFY(open.notice().isEmpty());

        box = open.questionAfter(typed);
        QVERIFY(box != nullptr);
        OpenPanel::press(*box, QMessageBox::AcceptRole);
        QTRY_VERIFY(open.isOver());
        QCOMPARE(open.bytesOf("y.txt.vexta").substr(0, 6), std::string("bplist"));
        QCOMPARE(open.names(), QStringList{QStringLiteral("y.txt.vexta")});
    }

    void aFileOfTheTypedNameStaysAsItIsUnasked() {
        const OpenPanel open;
        open.write("y.txt");
        open.enter(QStringLiteral("y.txt"));
        QVERIFY(open.box("replaceQuestion") == nullptr);
        QTRY_VERIFY(open.isOver());
        QCOMPARE(open.bytesOf("y.txt"), std::string(kOld));
        QCOMPARE(open.names(),
                 (QStringList{QStringLiteral("y.txt"), QStringLiteral("y.txt.vexta")}));
    }

    void theQuestionShowsANameAsItStands() {
        const OpenPanel open;
        open.write("<b>y.vexta");
        const QMessageBox* box = open.questionAfter(QStringLiteral("<b>y"));
        QVERIFY(box != nullptr);
        for (const QLabel* label : box->findChildren<QLabel*>()) {
            QCOMPARE(label->textFormat(), Qt::PlainText);
        }
    }

private:
    const support::TempDir m_home;
};

QTEST_MAIN(SaveDialogTest)
#include "save_dialog_test.moc"
