// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <QCoreApplication>
#include <QDialog>
#include <QString>
#include <QStringList>

#include "document/analysis_account.h"
#include "ui/window/notices.h"

class QPlainTextEdit;

namespace ui {

/// How loud a warning is: red where reads are missing, or may be those of somebody else.
NoticeLine::Kind noticeKindOf(run::Warning::Kind kind);

/// All that a run warned of: the gravest for a line that is always on show, and everything, by
/// patient, for whoever asks.
class RunWarnings {
    Q_DECLARE_TR_FUNCTIONS(ui::RunWarnings)

public:
    /// `patient` is whose warning it is; null: that of the whole run.
    void add(const run::Warning& warning, const document::PatientAccount* patient);

    /// The gravest; of several the first. REQUIRES, as the next: there is one.
    const run::Warning& gravest() const { return m_gravest; }
    QString line() const;
    /// "and 3 more…"; empty where the line tells all.
    QString more() const;
    /// Every warning, under its patient. Those of the whole run come first.
    QString details() const;

private:
    struct Group {
        std::string file1; ///< the patient's; empty for the whole run
        QString title;
        QStringList lines;
    };
    Group& groupOf(const document::PatientAccount* patient);

    std::vector<Group> m_groups;
    run::Warning m_gravest;
    std::size_t m_count = 0;
};

/// Lists the warnings of a run. It holds nothing up, and the keyboard alone can read and copy all
/// of it.
class WarningsWindow : public QDialog {
    Q_OBJECT

public:
    explicit WarningsWindow(QWidget* parent);

    /// Shows the text in front, from its start.
    void tell(const QString& text);

private:
    QPlainTextEdit* m_text;
};

} // namespace ui
