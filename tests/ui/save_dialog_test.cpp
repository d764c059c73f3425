// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <string>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileSystemModel>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

#include "support/temp_dir.h"
#include "ui/open_window.h"
#include "ui/window/notices.h"
#include "ui/window/save_dialog.h"
#include "ui/window_test.h"

using support::OpenWindow;

namespace {

constexpr const char* kOld = "what stood there before";

/// The user's home, as long as this lives. The panel lists it, and so knows the folders above it.
class HomeAt {
public:
    explicit HomeAt(const QString& path) : m_before(qgetenv("HOME")) {
        qputenv("HOME", QFile::encodeName(path));
    }
    ~HomeAt() { qputenv("HOME", m_before); }
    HomeAt(const HomeAt&) = delete;
    HomeAt& operator=(const HomeAt&) = delete;

private:
    QByteArray m_before;
};

/// The save panel of a real window, into which a user types.
class OpenPanel {
public:
    OpenPanel() {
        // The toolkit remembers the places of a panel's list. No test sees those of another.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(m_open.dir.path()));
        m_open.openPair(7);
        m_window = &m_open.show();
        QTest::keyClick(m_window->mainWindow, Qt::Key_S, Qt::ControlModifier);
        panel = m_window->mainWindow->findChild<ui::SaveDialog*>(QStringLiteral("savePanel"));
        // Until it has the keyboard: a window counts as active while a panel of its own is.
        if (!panel || !QTest::qWaitFor([this] { return QApplication::activeWindow() == panel; })) {
            qFatal("the save panel did not come up");
        }
    }

    /// Types in place of what stands in the name's field.
    void type(const QString& typed) const {
        auto* name = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(name != nullptr);
        QTest::keyClick(name, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(name, Qt::Key_Delete);
        QTest::keyClicks(name, typed);
        QCOMPARE(name->text(), typed);
    }
    /// To whatever has the keyboard: the list of suggestions, where it is open.
    static void press(Qt::Key key) { QTest::keyClick(static_cast<QWidget*>(nullptr), key); }
    void enter(const QString& typed) const {
        type(typed);
        press(Qt::Key_Return);
    }
    void clickSave() const {
        auto* buttons = panel->findChild<QDialogButtonBox*>();
        QTest::mouseClick(buttons->button(QDialogButtonBox::Save), Qt::LeftButton);
    }
    /// How many names the panel has read so far in that folder within the folder on show.
    int namesReadIn(const QString& name) const {
        const auto* model = panel->findChild<QFileSystemModel*>();
        return model->rowCount(model->index(folder() + QLatin1Char('/') + name));
    }
    QListView& list() const { return *panel->findChild<QListView*>(QStringLiteral("listView")); }
    /// Whether the suggestions for the name's field are open.
    bool suggests() const {
        const QWidget* popup = QApplication::activePopupWidget();
        return popup && popup == panel->findChild<QLineEdit*>()->completer()->popup();
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
    /// The question whether to replace, once it has the keyboard; null where none comes.
    QMessageBox* question() const {
        const auto isAsked = [this] {
            const QMessageBox* asked = box("replaceQuestion");
            return asked && QApplication::activeWindow() == asked;
        };
        return QTest::qWaitFor(isAsked) ? box("replaceQuestion") : nullptr;
    }
    QMessageBox* questionAfter(const QString& typed) const {
        enter(typed);
        return question();
    }
    /// Answers with the default button, which replaces nothing.
    void decline() const {
        press(Qt::Key_Return);
        QTRY_VERIFY(box("replaceQuestion") == nullptr);
        activate();
    }
    /// Gives the panel the keyboard back from a box or a list: no window manager does so here.
    void activate() const {
        panel->activateWindow();
        QTRY_VERIFY(QApplication::activeWindow() == panel);
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
        open.decline();
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

    void aDeclinedNameIsAskedForAgain_data() {
        QTest::addColumn<QString>("home");
        QTest::addColumn<bool>("byButton");
        QTest::newRow("home beside the folder, Enter") << m_beside.path() << false;
        QTest::newRow("home beside the folder, button") << m_beside.path() << true;
        QTest::newRow("home elsewhere, Enter") << QDir::rootPath() << false;
        QTest::newRow("home elsewhere, button") << QDir::rootPath() << true;
    }
    void aDeclinedNameIsAskedForAgain() {
        QFETCH(QString, home);
        QFETCH(bool, byButton);
        const HomeAt livesThere(home);
        const OpenPanel open;
        open.write("y.txt.vexta");
        for (int time = 0; time < 3; ++time) {
            open.type(QStringLiteral("y.txt.vexta"));
            if (byButton) {
                open.clickSave();
            } else {
                OpenPanel::press(Qt::Key_Return);
            }
            QVERIFY(open.question() != nullptr);
            open.decline();
            QVERIFY(!open.isOver());
            QCOMPARE(open.bytesOf("y.txt.vexta"), std::string(kOld));
        }
    }

    void theChosenSuggestionIsAskedFor_data() {
        QTest::addColumn<QString>("home");
        QTest::newRow("home beside the folder") << m_beside.path();
        QTest::newRow("home elsewhere") << QDir::rootPath();
    }
    void theChosenSuggestionIsAskedFor() {
        QFETCH(QString, home);
        const HomeAt livesThere(home);
        const OpenPanel open;
        QVERIFY(QDir(open.folder()).mkdir(QStringLiteral("sub")));
        open.write("sub/a.vexta");
        open.write("sub/b.vexta");
        open.type(QStringLiteral("sub/")); // has the folder read
        QTRY_COMPARE(open.namesReadIn(QStringLiteral("sub")), 2);
        open.activate();
        open.type(QStringLiteral("sub/"));
        QVERIFY(open.suggests());
        OpenPanel::press(Qt::Key_Down);
        OpenPanel::press(Qt::Key_Down);
        OpenPanel::press(Qt::Key_Return);
        const QMessageBox* box = open.question();
        QVERIFY(box != nullptr);
        QCOMPARE(box->text(), QStringLiteral("b.vexta already exists. Do you want to replace it?"));
    }

    void aClickedFileStaysSelectedAndIsAskedFor() {
        const OpenPanel open;
        open.write("a.vexta");
        open.write("b.vexta");
        open.type(QStringLiteral("a.vexta"));
        const QListView& list = open.list();
        QTRY_COMPARE(list.model()->rowCount(list.rootIndex()), 2);
        const QModelIndex clicked = list.model()->index(1, 0, list.rootIndex());
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(clicked).center());
        QCOMPARE(list.selectionModel()->selectedRows(), QModelIndexList{clicked});
        open.clickSave();
        const QMessageBox* box = open.question();
        QVERIFY(box != nullptr);
        QCOMPARE(box->text(), QStringLiteral("b.vexta already exists. Do you want to replace it?"));
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
    /// Comes before the tests' folders in the directory that holds them: with a home here, a folder
    /// is the second entry there that the panel knows, and else the first.
    const QTemporaryDir m_beside{QDir::tempPath() + QStringLiteral("/home-XXXXXX")};
};

WINDOW_TEST(SaveDialogTest, QApplication)
#include "save_dialog_test.moc"
