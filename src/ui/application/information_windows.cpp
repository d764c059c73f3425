// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// One kind of window for all that the program tells of itself: its texts stand here, in the order
// About, Help, Licences, and the window adds a title and a Close button. Every text can be selected
// and reached by the keyboard, so that a screen reader reads all of it. A library that is linked
// needs its line among the licences, and a command with a key its line in the help: both lists are
// written by hand. Tested by information_windows_test.cpp.
#include "ui/application/information_windows.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "reads/read_source.h"
#include "ui/application/catalogue_facts.h"

namespace ui {

InformationWindow::InformationWindow(const QString& name, const QString& title,
                                     const QList<QWidget*>& contents)
    : m_buttons(new QDialogButtonBox(QDialogButtonBox::Close)) {
    setObjectName(name);
    setWindowTitle(title);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* rows = new QVBoxLayout(this);
    for (QWidget* content : contents) {
        rows->addWidget(content);
    }
    rows->addWidget(m_buttons);
}

void InformationWindow::offerLicences() {
    const QPushButton* licences =
        m_buttons->addButton(tr("&Licences"), QDialogButtonBox::ActionRole);
    connect(licences, &QPushButton::clicked, this, &InformationWindow::licencesRequested);
}

// --- About

namespace {

constexpr qreal kProgramNameSize = 1.5;

QLabel* makeLabel(const QString& name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

QLabel* makeHeading() {
    auto* heading = makeLabel(QStringLiteral("aboutVersion"),
                              QStringLiteral("Vexta ") + QCoreApplication::applicationVersion());
    QFont font = heading->font();
    font.setPointSizeF(font.pointSizeF() * kProgramNameSize);
    heading->setFont(font);
    return heading;
}

} // namespace

std::unique_ptr<InformationWindow> makeAboutWindow(const std::string& definitionFilePath) {
    constexpr int kWidthInLetters = 70;
    auto window = std::make_unique<InformationWindow>(
        QStringLiteral("aboutWindow"), InformationWindow::tr("About Vexta"),
        QList<QWidget*>{
            makeHeading(),
            makeLabel(QStringLiteral("aboutPurpose"),
                      InformationWindow::tr(
                          "Finds read pairs that carry the target sequences of a catalogue, "
                          "counts them, and calls each target with binomial thresholds.")),
            makeLabel(QStringLiteral("aboutCatalogue"), catalogueFacts(definitionFilePath)),
            makeLabel(QStringLiteral("aboutToolkit"),
                      InformationWindow::tr("Qt %1").arg(QLatin1String(qVersion())))});
    window->offerLicences();
    window->setMinimumWidth(window->fontMetrics().averageCharWidth() * kWidthInLetters);
    return window;
}

// --- Help

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

QString helpPage() {
    return work() + heading(helpText("Keys")) + keyTable();
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

std::unique_ptr<InformationWindow> makeHelpWindow() {
    auto* page = new QTextBrowser;
    page->setHtml(helpPage());
    page->setAccessibleName(InformationWindow::tr("Help"));
    page->setTabChangesFocus(true);
    auto window = std::make_unique<InformationWindow>(
        QStringLiteral("helpWindow"), InformationWindow::tr("Vexta Help"), QList<QWidget*>{page});
    window->resize(640, 640);
    return window;
}

// --- Licences

namespace {

/// Licence terms are quoted, so none of this is translated.
struct Component {
    const char* name;
    const char* use;
    const char* licence;
    const char* copyright;
};

constexpr Component kQt{
    "Qt", "windows (linked dynamically: it may be replaced by another build of its version)",
    "GNU Lesser General Public License, version 3", "The Qt Company Ltd. and other contributors"};
constexpr Component kExpat{"Expat", "reads result documents in their XML form", "MIT",
                           "1998-2000 Thai Open Source Software Center Ltd and Clark Cooper, "
                           "2001-2017 Expat maintainers"};
constexpr Component kIsal{"ISA-L", "decodes .gz", "BSD 3-Clause", "2011-2019 Intel Corporation"};
constexpr Component kZlib{"zlib", "decodes .gz", "zlib", "Jean-loup Gailly and Mark Adler"};
constexpr Component kAsio{"Asio", "worker threads", "Boost Software License 1.0",
                          "2003-2022 Christopher M. Kohlhoff"};
constexpr Component kJson{"JSON for Modern C++", "the settings file", "MIT",
                          "2013-2022 Niels Lohmann, 2009 Florian Loitsch, 2008-2009 Bjoern "
                          "Hoehrmann"};

constexpr const char* kOwn =
    "Vexta\n"
    "Copyright: The Vexta authors\n"
    "Licence: Apache License, Version 2.0, https://www.apache.org/licenses/LICENSE-2.0\n"
    "Distributed on an \"AS IS\" basis, without warranties or conditions of any kind, either "
    "express "
    "or implied.\n"
    "\n"
    "It is built with:\n"
    "\n";

constexpr const char* kMit =
    "The MIT licence\n"
    "\n"
    "Permission is hereby granted, free of charge, to any person obtaining a copy of this software "
    "and associated documentation files (the \"Software\"), to deal in the Software without "
    "restriction, including without limitation the rights to use, copy, modify, merge, publish, "
    "distribute, sublicense, and/or sell copies of the Software, and to permit persons to whom the "
    "Software is furnished to do so, subject to the following conditions:\n"
    "\n"
    "The above copyright notice and this permission notice shall be included in all copies or "
    "substantial portions of the Software.\n"
    "\n"
    "THE SOFTWARE IS PROVIDED \"AS IS\", WITHOUT WARRANTY OF ANY KIND, EXPRESS OR IMPLIED, "
    "INCLUDING "
    "BUT NOT LIMITED TO THE WARRANTIES OF MERCHANTABILITY, FITNESS FOR A PARTICULAR PURPOSE AND "
    "NONINFRINGEMENT. IN NO EVENT SHALL THE AUTHORS OR COPYRIGHT HOLDERS BE LIABLE FOR ANY CLAIM, "
    "DAMAGES OR OTHER LIABILITY, WHETHER IN AN ACTION OF CONTRACT, TORT OR OTHERWISE, ARISING "
    "FROM, "
    "OUT OF OR IN CONNECTION WITH THE SOFTWARE OR THE USE OR OTHER DEALINGS IN THE SOFTWARE.\n"
    "\n"
    "On Debian the whole text of every licence stands in /usr/share/common-licenses and in "
    "/usr/share/doc/<package>/copyright.\n";

QString licenceOf(const Component& component) {
    return QStringLiteral("%1: %2\nLicence: %3\nCopyright: %4\n\n")
        .arg(QString::fromUtf8(component.name), QString::fromUtf8(component.use),
             QString::fromUtf8(component.licence), QString::fromUtf8(component.copyright));
}

QString licenceTexts() {
    QList<Component> components{kQt, kExpat};
    if (reads::gzipBackendAvailable(reads::GzipBackend::isal)) {
        components.append(kIsal);
    }
    components.append({kZlib, kAsio, kJson});
    QString text = QString::fromUtf8(kOwn);
    for (const Component& component : components) {
        text += licenceOf(component);
    }
    return text + QString::fromUtf8(kMit);
}

} // namespace

std::unique_ptr<InformationWindow> makeLicencesWindow() {
    auto* text = new QPlainTextEdit(licenceTexts());
    text->setReadOnly(true);
    // A read-only text still takes Tab unless told; the keyboard must be able to leave it.
    text->setTabChangesFocus(true);
    text->setAccessibleName(InformationWindow::tr("Licences"));
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto window = std::make_unique<InformationWindow>(
        QStringLiteral("licencesWindow"), InformationWindow::tr("Licences"), QList<QWidget*>{text});
    window->resize(640, 560);
    return window;
}

} // namespace ui
