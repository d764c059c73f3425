// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// What the four result tables show, without a widget. A record's text becomes a cell once, with the
// call that the text says; colour, shape, notice and a patient's attention follow the call, so they
// cannot disagree. A text that no rule writes is shown as it stands, and counts as undecided.
// Tested by result_rows_test.cpp.
#include "ui/tables/result_rows.h"

#include <algorithm>

#include <QCoreApplication>
#include <QStringList>

#include "calling/assessability.h"

namespace ui {
namespace {

using calling::Call;

ResultRow cellsOf(const calling::ReportGermlineDNA& row) {
    return {cellOf(row.areaSearched), cellOf(row.allelicType), {}, {}};
}

ResultRow cellsOf(const calling::ReportSomaticDNA& row) {
    return {cellOf(row.areaSearched), cellOf(row.diagnosis), cellOf(row.mutantCellRatio), {}};
}

template <class RNARow>
ResultRow cellsOf(const RNARow& row) {
    return {cellOf(row.gene), cellOf(row.diagnosis), cellOf(row.numberOfReads),
            cellOf(row.comment)};
}

template <class Row>
std::vector<ResultRow> rowsOf(const archive::ListOf<Row>& list) {
    std::vector<ResultRow> rows;
    for (const auto& row : archive::orEmpty(list)) {
        // A saved document may lack a record: its row stays, empty, so that rows keep their places.
        rows.push_back(row ? cellsOf(*row) : ResultRow());
    }
    return rows;
}

/// Calls `visit` with the patient's list of that table.
template <class Visit>
auto withList(ResultTable table, const run::SummaryForEachPatient& patient, Visit visit) {
    switch (table) {
    case ResultTable::germlineDNA:
        return visit(patient.germlineDNAResultMutAr);
    case ResultTable::somaticDNA:
        return visit(patient.somaticDNAResultMutAr);
    case ResultTable::germlineRNA:
        return visit(patient.germlineRNAResultMutAr);
    case ResultTable::somaticRNA:
        break;
    }
    return visit(patient.somaticRNAResultMutAr);
}

QString commentLineOf(const calling::ReportSomaticDNA& row) {
    const QString comment = textOf(row.comment);
    return comment.isEmpty() ? QString() : QStringLiteral("False positive rate = ") + comment;
}

template <class OtherRow>
QString commentLineOf(const OtherRow&) {
    return {};
}

bool isFinding(ResultTable table, Call call) {
    switch (table) {
    case ResultTable::germlineDNA:
        return call == Call::homozygousMutant || call == Call::heterozygous ||
               call == Call::notDetermined;
    case ResultTable::germlineRNA:
        return call == Call::rnaDegraded;
    case ResultTable::somaticDNA:
    case ResultTable::somaticRNA:
        break;
    }
    return call == Call::positive;
}

/// In every table but that of germline DNA.
ResultTone toneOf(Call call) {
    switch (call) {
    case Call::positive:
    case Call::rnaDegraded:
        return ResultTone::finding;
    case Call::negative:
    case Call::rnaNotDegraded:
    case Call::nothingDetected:
        return ResultTone::clear;
    case Call::controlNotWorking:
        return ResultTone::controlFault;
    default:
        return ResultTone::plain;
    }
}

CallShape alleleShape(Call call) {
    switch (call) {
    case Call::homozygousWildType:
        return CallShape::hollowDiamond;
    case Call::heterozygous:
        return CallShape::halfDiamond;
    case Call::homozygousMutant:
        return CallShape::filledDiamond;
    default:
        return CallShape::questionDiamond;
    }
}

} // namespace

QString textOf(const archive::Text& text) {
    return text ? QString::fromStdString(*text) : QString();
}

ResultCell cellOf(const archive::Text& text) {
    // The call of what is shown: the toolkit drops a byte order mark, which a document of another
    // program may hold, and a word must not stand there without its tone and shape.
    const QString shown = textOf(text);
    return {shown, calling::callOf(text ? archive::Text(shown.toStdString()) : archive::Text())};
}

std::vector<ResultRow> resultRows(ResultTable table, const run::SummaryForEachPatient* patient) {
    if (patient == nullptr) {
        return {};
    }
    return withList(table, *patient, [](const auto& list) { return rowsOf(list); });
}

bool holdsFinding(ResultTable table, const std::vector<ResultRow>& rows) {
    return std::any_of(rows.begin(), rows.end(), [table](const ResultRow& row) {
        return isFinding(table, row[kCallColumn].call);
    });
}

ResultTone toneOfCell(ResultTable table, const ResultCell& cell) {
    return table == ResultTable::germlineDNA ? ResultTone::plain : toneOf(cell.call);
}

CallShape shapeOfCell(ResultTable table, std::size_t column, const ResultCell& cell) {
    const bool isCall = column == kCallColumn && cell.call != Call::none;
    if (table == ResultTable::germlineDNA) {
        return isCall ? alleleShape(cell.call) : CallShape::none;
    }
    switch (toneOf(cell.call)) {
    case ResultTone::finding:
        return CallShape::triangle;
    case ResultTone::clear:
        return CallShape::circle;
    case ResultTone::controlFault:
        return CallShape::square;
    case ResultTone::plain:
    case ResultTone::muted: // no cell's
        break;
    }
    return isCall ? CallShape::questionDiamond : CallShape::none;
}

QString rowWords(const ResultRow& row) {
    QStringList words;
    for (const ResultCell& cell : row) {
        if (!cell.text.isEmpty()) {
            words.append(cell.text);
        }
    }
    return words.join(QStringLiteral(", "));
}

RowDetails rowDetails(ResultTable table, const run::SummaryForEachPatient* patient,
                      std::ptrdiff_t row) {
    if (patient == nullptr || row < 0) {
        return {};
    }
    return withList(table, *patient, [row](const auto& list) {
        const auto& rows = archive::orEmpty(list);
        const auto index = static_cast<std::size_t>(row);
        if (index >= rows.size() || !rows[index]) {
            return RowDetails();
        }
        return RowDetails{rows[index]->mutDomain, commentLineOf(*rows[index])};
    });
}

// --- What needs attention

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

namespace {

QStringList notAssessableKinds(const run::SummaryForEachPatient& patient) {
    QStringList kinds;
    for (const calling::NotAssessable& kind : calling::assess(patient.mutDomains).kinds) {
        kinds.append(QString::fromStdString(kind.text()));
    }
    return kinds;
}

PatientAttention attentionOfRows(const Reasons& reasons) {
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

} // namespace

PatientAttention attentionFor(const run::SummaryForEachPatient& patient) {
    PatientAttention attention{CallShape::none, ResultTone::plain, attentionText("No results")};
    if (patient.readsMapped <= 0) {
        attention = {CallShape::hollowSquare, ResultTone::muted,
                     attentionText("No read pair is mapped: nothing is assessable")};
    } else if (const Reasons reasons = reasonsFor(patient); reasons.anyRow) {
        attention = attentionOfRows(reasons);
    }
    attention.words =
        (QStringList(attention.words) + notAssessableKinds(patient)).join(QLatin1Char('\n'));
    return attention;
}

QString whyNotAssessable(ResultTable table, const run::SummaryForEachPatient* patient) {
    if (patient == nullptr) {
        return {};
    }
    for (const calling::NotAssessable& kind : calling::assess(patient->mutDomains).kinds) {
        const bool isGermline = kind.type == catalogue::DomainType::germline;
        if (table == (isGermline ? ResultTable::germlineDNA : ResultTable::somaticDNA)) {
            return QString::fromStdString(kind.reason());
        }
    }
    return {};
}

} // namespace ui
