// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A run may warn of a hundred things, and a line has room for one. So the line tells the gravest
// and how many more there are, and a window behind it tells all of them. A new warning takes the
// line only where it is graver than the one that stands there, and none is dropped.
//
// Red is for what may make a result wrong without a trace in it: reads that are not in the counts,
// or that may be another person's. A sample with too few reads shows that itself.
//
// Tested by warnings_test.cpp and, on real runs, by window_warnings_test.cpp.
#include "ui/window/warnings.h"

#include <algorithm>

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

using Kind = run::Warning::Kind;

NoticeLine::Kind noticeKindOf(Kind kind) {
    switch (kind) {
    case Kind::doubtfulNames:
    case Kind::earlyEnd:
    case Kind::zeroBytes:
    case Kind::surplusRecords:
    case Kind::headersOfOtherRead:
        return NoticeLine::Kind::danger;
    case Kind::notAssessable:
    case Kind::usualFiles:
        return NoticeLine::Kind::information;
    default:
        return NoticeLine::Kind::problem;
    }
}

namespace {

/// The higher, the graver. Nothing weighs as much as reads of two people in one result.
int weightOf(Kind kind) {
    return kind == Kind::doubtfulNames ? static_cast<int>(NoticeLine::Kind::danger) + 1
                                       : static_cast<int>(noticeKindOf(kind));
}

QString sentence(const run::Warning& warning) {
    return QString::fromStdString(run::logLine(warning)).trimmed();
}

} // namespace

// --- All of a run

RunWarnings::Group& RunWarnings::groupOf(const document::PatientAccount* patient) {
    const std::string file1 = patient != nullptr ? patient->file1 : std::string();
    // From the end: the patient that runs was added last.
    const auto found = std::find_if(m_groups.rbegin(), m_groups.rend(),
                                    [&](const Group& group) { return group.file1 == file1; });
    if (found != m_groups.rend()) {
        return *found;
    }
    if (patient == nullptr) {
        return *m_groups.insert(m_groups.begin(), {file1, tr("The whole run"), {}});
    }
    const QString number = QString::fromStdString(patient->number);
    const QString title =
        patient->sample.empty()
            ? tr("Patient %1").arg(number)
            : tr("Patient %1, sample %2").arg(number, QString::fromStdString(patient->sample));
    m_groups.push_back({file1, title, {}});
    return m_groups.back();
}

void RunWarnings::add(const run::Warning& warning, const document::PatientAccount* patient) {
    groupOf(patient).lines.append(sentence(warning));
    if (m_count == 0 || weightOf(warning.kind) > weightOf(m_gravest.kind)) {
        m_gravest = warning;
    }
    ++m_count;
}

QString RunWarnings::line() const {
    return sentence(m_gravest);
}

QString RunWarnings::more() const {
    return m_count > 1 ? tr("and %1 more…").arg(m_count - 1) : QString();
}

QString RunWarnings::details() const {
    QStringList paragraphs;
    for (const Group& group : m_groups) {
        const QString bullet = QStringLiteral("\n  • ");
        paragraphs.append(group.title + bullet + group.lines.join(bullet));
    }
    return paragraphs.join(QStringLiteral("\n\n")) + QLatin1Char('\n');
}

// --- Their window

WarningsWindow::WarningsWindow(QWidget* parent)
    : QDialog(parent), m_text(new QPlainTextEdit(this)) {
    setObjectName(QStringLiteral("warningsWindow"));
    setWindowTitle(tr("Warnings"));
    resize(760, 380);
    m_text->setObjectName(QStringLiteral("warningsTextView"));
    m_text->setAccessibleName(tr("Warnings of the run, by patient"));
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    const auto* copy = buttons->addButton(tr("&Copy All"), QDialogButtonBox::ActionRole);
    connect(copy, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(m_text->toPlainText()); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_text, 1);
    layout->addWidget(buttons);
}

void WarningsWindow::tell(const QString& text) {
    m_text->setPlainText(text);
    show();
    raise();
    activateWindow();
    m_text->setFocus();
}

} // namespace ui
