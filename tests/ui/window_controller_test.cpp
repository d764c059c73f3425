// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QtTest>

#include "platform/setting_keys.h"
#include "ui/error_log_window.h"
#include "ui/notice_line.h"
#include "ui/open_window.h"
#include "ui/popover.h"
#include "ui/record_builder.h"
#include "ui/record_table_view.h"

using support::OpenWindow;
using support::PatientBuilder;
using ui::WindowController;

/// The document window's rules, on the real window.
class WindowControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withNoPatientsEveryTableIsEmptyAndTheCountsAreZero() {
        OpenWindow open;
        open.openPair(7);
        WindowController& window = open.show();
        for (const QTableView* table :
             {window.patientsNoTableView, window.germlineDNAResultTableView,
              window.somaticDNAResultTableView, window.germlineRNAResultTableView,
              window.somaticRNAResultTableView}) {
            QCOMPARE(window.numberOfRowsInTableView(table), 0);
        }
        QCOMPARE(window.file1TextField->text(), QStringLiteral("p_S7_L001_R1_001.fastq"));
        QCOMPARE(window.file2TextField->text(), QStringLiteral("p_S7_L001_R2_001.fastq"));
        QCOMPARE(window.totalNumberOfReadsTextField->text(), QStringLiteral("0"));
        QCOMPARE(window.readsMappedTextField->text(), QStringLiteral("0"));
        QCOMPARE(window.readsFailedToBeMappedTextField->text(), QStringLiteral("0"));
    }
};

QTEST_MAIN(WindowControllerTest)
#include "window_controller_test.moc"
