// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include "run/summary_for_each_patient.h"
#include "ui/tables/call_icons.h"
#include "ui/tables/result_tones.h"

namespace ui {

/// What in a patient's results needs a person's attention: the weightiest as a shape, all of it in
/// words, one line each.
struct PatientAttention {
    CallShape shape = CallShape::none;
    ResultTone tone = ResultTone::plain;
    QString words;
};

/// Findings weigh most, then degraded RNA, a control that does not work, calls that are not
/// decided, and a germline variant. A patient without a row gets no shape.
PatientAttention attentionFor(const run::SummaryForEachPatient& patient);

} // namespace ui
