// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/about_window.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/window/catalogue_facts.h"

namespace ui {

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

AboutWindow::AboutWindow(const std::string& definitionFilePath, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("aboutWindow"));
    setWindowTitle(tr("About Vexta"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    const QPushButton* licences = buttons->addButton(tr("&Licences"), QDialogButtonBox::ActionRole);
    connect(licences, &QPushButton::clicked, this, &AboutWindow::licencesRequested);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(makeHeading());
    rows->addWidget(makeLabel(QStringLiteral("aboutPurpose"),
                              tr("Finds read pairs that carry the target sequences of a catalogue, "
                                 "counts them, and calls "
                                 "each target with binomial thresholds.")));
    rows->addWidget(
        makeLabel(QStringLiteral("aboutCatalogue"), catalogueFacts(definitionFilePath)));
    rows->addWidget(
        makeLabel(QStringLiteral("aboutToolkit"), tr("Qt %1").arg(QLatin1String(qVersion()))));
    rows->addWidget(buttons);
    setMinimumWidth(fontMetrics().averageCharWidth() * 70);
}

} // namespace ui
