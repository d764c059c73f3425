// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/boolean_preference_row.h"

#include <utility>

#include <QCheckBox>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

#include "ui/application/preference_texts.h"

namespace ui {

BooleanPreferenceRow::BooleanPreferenceRow(Setting setting, QWidget* parent)
    : QWidget(parent), m_setting(std::move(setting)), m_box(new QCheckBox(m_setting.label)) {
    m_box->setObjectName(m_setting.name);
    m_box->setAccessibleDescription(m_setting.effect);
    QLabel* effect = makeEffectLabel(m_setting.effect);
    // Under the check box's text.
    effect->setIndent(style()->pixelMetric(QStyle::PM_IndicatorWidth) +
                      style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing));
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(m_box);
    rows->addWidget(effect);
    connect(m_box, &QCheckBox::clicked, this, [this](bool on) { m_setting.write(on); });
    reload();
}

void BooleanPreferenceRow::reload() {
    m_box->setChecked(m_setting.read());
}

} // namespace ui
