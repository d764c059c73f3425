// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/help_texts.h"

#include <QCoreApplication>

namespace ui {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("Help", text);
}

QString paragraph(const QString& text) {
    return QStringLiteral("<p>") + text.toHtmlEscaped() + QStringLiteral("</p>");
}

QString heading(const QString& text) {
    return QStringLiteral("<h3>") + text.toHtmlEscaped() + QStringLiteral("</h3>");
}

QString keyTable() {
    QString table = QStringLiteral("<table cellpadding=\"3\">");
    for (const HelpKey& key : helpKeys()) {
        table += QStringLiteral("<tr><td><b>%1</b></td><td>&nbsp;&nbsp;%2</td></tr>")
                     .arg(key.keys.toHtmlEscaped(), key.what.toHtmlEscaped());
    }
    return table + QStringLiteral("</table>");
}

QString work() {
    return heading(tr("From reads to results")) +
           paragraph(tr("Open one FASTQ file of a patient; its partner is found by \"_R1_\" and "
                        "\"_R2_\" in the name. Analyze runs this patient. Analyze All runs every "
                        "patient of the folder whose files are named like "
                        "x_S7_L001_R1_001.fastq, by rising number.")) +
           paragraph(
               tr("Select a patient at the left to see its four result tables. A double click "
                  "or Enter on a row shows the counts behind it. Positive findings have a "
                  "notice beside the table's title.")) +
           paragraph(
               tr("Save Result keeps the patients in a .vexta file, which opens again for "
                  "viewing and exporting. Copy puts the report of the selected patients on the "
                  "clipboard, Summary Table one line for every patient.")) +
           heading(tr("When something fails")) +
           paragraph(tr("The error log tells which files failed and why. After a failed single run "
                        "close the document and open it again to analyse once more.")) +
           paragraph(
               tr("During Analyze All, Esc or Stop ends the batch after the running patient, "
                  "also when the error log is in front. A single run always goes on to its end."));
}

} // namespace

QList<HelpKey> helpKeys() {
    return {
        {QStringLiteral("Ctrl+O"), tr("Open reads or a saved result")},
        {QStringLiteral("Ctrl+R"), tr("Analyze the opened patient")},
        {QStringLiteral("Ctrl+Shift+R"), tr("Analyze every patient of the folder")},
        {QStringLiteral("Esc"), tr("Close the details; else stop the batch after this patient")},
        {QStringLiteral("Ctrl+0"), tr("Go to the patients")},
        {QStringLiteral("Ctrl+1 ... Ctrl+4"), tr("Go to one of the four result tables")},
        {QStringLiteral("Enter"), tr("Details of the selected result row")},
        {QStringLiteral("Ctrl+C"), tr("Copy the report of the selected patients")},
        {QStringLiteral("Ctrl+T"), tr("Copy the summary table of every patient")},
        {QStringLiteral("Ctrl+S"), tr("Save the result")},
        {QStringLiteral("F8"), tr("Show the error log")},
        {QStringLiteral("Ctrl+,"), tr("Preferences")},
        {QStringLiteral("Ctrl+W"), tr("Close the window")},
        {QStringLiteral("Ctrl+Q"), tr("Quit")},
        {QStringLiteral("F1"), tr("This help")},
    };
}

QString helpPage() {
    return work() + heading(tr("Keys")) + keyTable();
}

} // namespace ui
