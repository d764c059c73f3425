// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/tables/patient_attention.h"

#include <QCoreApplication>
#include <QStringList>

#include "ui/tables/result_rows.h"

namespace ui {
namespace {

QString attentionText(const char* words) {
    return QCoreApplication::translate("ui::PatientAttention", words);
}

/// The names of the rows that need attention, by why.
struct Reasons {
    QStringList positive;
    QStringList degraded;
    QStringList controlFaults;
    QStringList undecided;
    QStringList variants;
    CallShape variantShape = CallShape::none;
    bool anyRow = false;
};

void takeAlleleType(const ResultRow& row, Reasons& reasons) {
    const CallShape shape = shapeOfCell(ResultTable::germlineDNA, kCallColumn, row[kCallColumn]);
    if (shape == CallShape::questionDiamond) {
        reasons.undecided.append(row[0].text);
    } else if (shape == CallShape::halfDiamond || shape == CallShape::filledDiamond) {
        reasons.variants.append(row[0].text + QLatin1Char(' ') + row[kCallColumn].text);
        reasons.variantShape = shape;
    }
}

void takeCall(ResultTable table, const ResultRow& row, Reasons& reasons) {
    const QString& name = row[0].text;
    const ResultCell& cell = row[kCallColumn];
    switch (shapeOfCell(table, kCallColumn, cell)) {
    case CallShape::triangle:
        (cell.call == calling::Call::positive ? reasons.positive : reasons.degraded).append(name);
        break;
    case CallShape::square:
        reasons.controlFaults.append(name);
        break;
    case CallShape::questionDiamond:
        reasons.undecided.append(name);
        break;
    default:
        break;
    }
}

Reasons reasonsFor(const run::SummaryForEachPatient& patient) {
    Reasons reasons;
    for (const ResultTable table : kResultTables) {
        for (const ResultRow& row : resultRows(table, &patient)) {
            reasons.anyRow = true;
            if (table == ResultTable::germlineDNA) {
                takeAlleleType(row, reasons);
            } else {
                takeCall(table, row, reasons);
            }
        }
    }
    return reasons;
}

} // namespace

PatientAttention attentionFor(const run::SummaryForEachPatient& patient) {
    const Reasons reasons = reasonsFor(patient);
    if (!reasons.anyRow) {
        return {CallShape::none, ResultTone::plain, attentionText("No results")};
    }
    PatientAttention attention;
    QStringList lines;
    // In the order of weight: the first that applies gives the shape.
    const auto take = [&](const QStringList& names, const char* why, CallShape shape,
                          ResultTone tone) {
        if (names.isEmpty()) {
            return;
        }
        if (lines.isEmpty()) {
            attention.shape = shape;
            attention.tone = tone;
        }
        lines.append(attentionText(why).arg(names.join(QStringLiteral(", "))));
    };
    take(reasons.positive, "Positive: %1", CallShape::triangle, ResultTone::finding);
    take(reasons.degraded, "RNA degraded: %1", CallShape::triangle, ResultTone::finding);
    take(reasons.controlFaults, "Control not working: %1", CallShape::square,
         ResultTone::controlFault);
    take(reasons.undecided, "Not decided: %1", CallShape::questionDiamond, ResultTone::plain);
    take(reasons.variants, "Germline variant: %1", reasons.variantShape, ResultTone::plain);
    if (lines.isEmpty()) {
        return {CallShape::circle, ResultTone::clear, attentionText("Nothing found")};
    }
    attention.words = lines.join(QLatin1Char('\n'));
    return attention;
}

} // namespace ui
