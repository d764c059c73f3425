// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/help_texts.h"

#include <QCoreApplication>

namespace ui {

namespace {

QString helpText(const char* text) {
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
    return heading(helpText("From reads to results")) +
           paragraph(
               helpText("Open one FASTQ file of a patient; its partner is found by \"_R1_\" and "
                        "\"_R2_\" in the name. Analyze runs this patient. Analyze All runs every "
                        "patient of the folder whose files are named like "
                        "x_S7_L001_R1_001.fastq, by rising number.")) +
           paragraph(helpText(
               "Select a patient at the left to see its four result tables. A double click "
               "or Enter on a row shows the counts behind it. Positive findings have a "
               "notice beside the table's title.")) +
           paragraph(helpText(
               "Save Result keeps the patients in a .vexta file, which opens again for "
               "viewing and exporting. Copy puts the report of the selected patients on the "
               "clipboard, Summary Table one line for every patient.")) +
           heading(helpText("When something fails")) +
           paragraph(
               helpText("The error log tells which files failed and why. After a failed single run "
                        "close the document and open it again to analyse once more.")) +
           paragraph(helpText(
               "During Analyze All, Esc or Stop ends the batch after the running patient, "
               "also when the error log is in front. A single run always goes on to its end."));
}

} // namespace

QList<HelpKey> helpKeys() {
    return {
        {QStringLiteral("Ctrl+O"), helpText("Open reads or a saved result")},
        {QStringLiteral("Ctrl+R"), helpText("Analyze the opened patient")},
        {QStringLiteral("Ctrl+Shift+R"), helpText("Analyze every patient of the folder")},
        {QStringLiteral("Esc"),
         helpText("Close the details; else stop the batch after this patient")},
        {QStringLiteral("Ctrl+0"), helpText("Go to the patients")},
        {QStringLiteral("Ctrl+1 ... Ctrl+4"), helpText("Go to one of the four result tables")},
        {QStringLiteral("Enter"), helpText("Details of the selected result row")},
        {QStringLiteral("Ctrl+C"), helpText("Copy the report of the selected patients")},
        {QStringLiteral("Ctrl+T"), helpText("Copy the summary table of every patient")},
        {QStringLiteral("Ctrl+S"), helpText("Save the result")},
        {QStringLiteral("F8"), helpText("Show the error log")},
        {QStringLiteral("Ctrl+,"), helpText("Preferences")},
        {QStringLiteral("Ctrl+W"), helpText("Close the window")},
        {QStringLiteral("Ctrl+Q"), helpText("Quit")},
        {QStringLiteral("F1"), helpText("This help")},
    };
}

QString helpPage() {
    return work() + heading(helpText("Keys")) + keyTable();
}

} // namespace ui
