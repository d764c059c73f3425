// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QAccessible>
#include <QAccessibleInterface>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

#include "ui/accessible_tree.h"
#include "ui/open_window.h"
#include "ui/record_builder.h"
#include "ui/tables/record_table_view.h"
#include "ui/window/window_description.h"
#include "ui/window_test.h"

namespace {

struct Outlet {
    const char* name;
    const char* kind;
};

constexpr Outlet kOutlets[] = {
    {"file1TextField", "QLineEdit"},
    {"file2TextField", "QLineEdit"},
    {"totalNumberOfReadsTextField", "QLineEdit"},
    {"readsMappedTextField", "QLineEdit"},
    {"readsFailedToBeMappedTextField", "QLineEdit"},
    {"totalNumberOfIntormativeReadsTextField", "QLineEdit"},
    {"germlineDNAResultTableView", "QTableView"},
    {"somaticDNAResultTableView", "QTableView"},
    {"germlineRNAResultTableView", "QTableView"},
    {"somaticRNAResultTableView", "QTableView"},
    {"germlineDNAResultTextField", "QLabel"},
    {"somaticDNAResultTextField", "QLabel"},
    {"germlineRNAResultTextField", "QLabel"},
    {"somaticRNAResultTextField", "QLabel"},
    {"analyzeButton", "QPushButton"},
    {"analyzeAllButton", "QPushButton"},
    {"stopButton", "ui::ButtonForwardingCancelOperationToDelegate"},
    {"errorLogTextView", "QPlainTextEdit"},
    {"errorLogWindow", "QWidget"},
    {"patientsNoTableView", "QTableView"},
    {"popoverViewControllerHUD", "QWidget"},
    {"popoverTableView", "QTableView"},
    {"popoverCommentTextField", "QLabel"},
    {"germlineDNANotAssessableTextField", "QLabel"},
    {"somaticDNANotAssessableTextField", "QLabel"},
    {"noticeLine", "ui::NoticeLine"},
    {"warningLine", "ui::NoticeLine"},
    {"runProgressContainer", "QWidget"},
};

const char* const kDescriptions[] = {"VextaDocument", "VextaDocumentMidi"};

bool needsName(const QAccessibleInterface& item) {
    switch (item.role()) {
    case QAccessible::PushButton:
    case QAccessible::ButtonMenu:
    case QAccessible::EditableText:
    case QAccessible::Table:
    case QAccessible::ProgressBar:
    case QAccessible::CheckBox:
    case QAccessible::ComboBox:
    case QAccessible::MenuItem:
        return true;
    default:
        return false;
    }
}

void descriptions() {
    QTest::addColumn<QString>("description");
    for (const char* name : kDescriptions) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

/// The controls below `item` that a screen reader could not name.
void collectNameless(QAccessibleInterface* item, QStringList& nameless) {
    if (item == nullptr || item->role() == QAccessible::Cell) {
        return;
    }
    const QString own = item->object() == nullptr ? QString() : item->object()->objectName();
    if (needsName(*item) && item->text(QAccessible::Name).isEmpty() && !item->state().invisible) {
        nameless.append(QStringLiteral("%1 (role %2)").arg(own).arg(item->role()));
    }
    for (int child = 0; child < item->childCount(); ++child) {
        collectNameless(item->child(child), nameless);
    }
}

QStringList namelessControls(QObject* root) {
    QStringList nameless;
    collectNameless(QAccessible::queryAccessibleInterface(root), nameless);
    return nameless;
}

} // namespace

/// What the two window descriptions carry.
class WindowDescriptionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QAccessible::setActive(true); }

    void bothDescriptionsCarryEveryOutlet_data() { descriptions(); }
    void bothDescriptionsCarryEveryOutlet() {
        QFETCH(QString, description);
        const auto window = ui::loadWindowDescription(description);
        for (const Outlet& outlet : kOutlets) {
            const auto found = window->findChildren<QWidget*>(QLatin1String(outlet.name));
            QVERIFY2(found.size() == 1, outlet.name);
            QVERIFY2(found.first()->inherits(outlet.kind), outlet.name);
        }
    }

    void columnsAreNamedByTheirIdentifiers_data() { descriptions(); }
    void columnsAreNamedByTheirIdentifiers() {
        QFETCH(QString, description);
        const auto window = ui::loadWindowDescription(description);
        const auto identifiers = [&window](const char* name) {
            return ui::outlet<ui::RecordTableView>(*window, name)
                ->columns()
                .identifiers.join(QLatin1Char(' '));
        };
        QCOMPARE(identifiers("germlineDNAResultTableView"), QStringLiteral("0 1"));
        QCOMPARE(identifiers("somaticDNAResultTableView"), QStringLiteral("0 1 2"));
        QCOMPARE(identifiers("germlineRNAResultTableView"), QStringLiteral("0 1 2 3"));
        QCOMPARE(identifiers("somaticRNAResultTableView"), QStringLiteral("0 1 2 3"));
        QCOMPARE(identifiers("patientsNoTableView"), QStringLiteral("0"));
        QCOMPARE(identifiers("popoverTableView"), QStringLiteral("0 1 bar"));
    }

    void theMidiWindowIsTheLarger() {
        const auto usual = ui::loadWindowDescription(QStringLiteral("VextaDocument"));
        const auto midi = ui::loadWindowDescription(QStringLiteral("VextaDocumentMidi"));
        QVERIFY(midi->width() > usual->width());
        QVERIFY(midi->height() > usual->height());
    }

    void everyControlHasANameForAScreenReader_data() { descriptions(); }
    void everyControlHasANameForAScreenReader() {
        QFETCH(QString, description);
        support::OpenWindow open(description);
        open.openSaved({support::PatientBuilder("1").somaticDNA("KRAS", "Positive").patient}, 0);
        ui::WindowController& window = open.show();
        QCOMPARE(namelessControls(window.mainWindow), QStringList());
        window.showErrorLogWindow();
        QCOMPARE(namelessControls(
                     window.mainWindow->findChild<QWidget*>(QStringLiteral("errorLogWindow"))),
                 QStringList());
        QCOMPARE(namelessControls(window.mainWindow->findChild<QWidget*>(
                     QStringLiteral("popoverViewControllerHUD"))),
                 QStringList());
    }

    void everyTableSaysWhatItsRowsAreFor_data() { descriptions(); }
    void everyTableSaysWhatItsRowsAreFor() {
        QFETCH(QString, description);
        support::OpenWindow open(description);
        open.openSaved({support::PatientBuilder("1")
                            .germlineDNA("BIM", "wt/wt")
                            .somaticDNA("KRAS", "Positive")
                            .germlineRNA("OAZ1", "RNA OK")
                            .somaticRNA("ALK", "Negative")
                            .patient},
                       0);
        ui::WindowController& window = open.show();
        window.somaticDNAResultTableView->selectRow(0);
        window.doubleClickAction(window.somaticDNAResultTableView);
        for (const ui::RecordTableView* table :
             window.mainWindow->findChildren<ui::RecordTableView*>()) {
            QVERIFY2(table->model()->rowCount() > 0, qPrintable(table->objectName()));
            QVERIFY2(!table->accessibleDescription().contains(QStringLiteral("no ")),
                     qPrintable(table->accessibleDescription()));
        }
        QCOMPARE(support::controlsWithoutDescription<QTableView>(*window.mainWindow),
                 QStringList());
    }

    void everyTitleLeadsToItsTable_data() { descriptions(); }
    void everyTitleLeadsToItsTable() {
        QFETCH(QString, description);
        const auto window = ui::loadWindowDescription(description);
        for (const char* table :
             {"patientsNoTableView", "germlineDNAResultTableView", "somaticDNAResultTableView",
              "germlineRNAResultTableView", "somaticRNAResultTableView", "file1TextField",
              "totalNumberOfReadsTextField"}) {
            const auto labels = window->findChildren<QLabel*>();
            const bool led = std::any_of(labels.begin(), labels.end(), [table](QLabel* label) {
                return label->buddy() != nullptr &&
                       label->buddy()->objectName() == QLatin1String(table);
            });
            QVERIFY2(led, table);
        }
    }
};

WINDOW_TEST(WindowDescriptionTest, QApplication)
#include "window_description_test.moc"
