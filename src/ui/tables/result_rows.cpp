// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/tables/result_rows.h"

#include <algorithm>

#include <QStringList>

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
    return {textOf(text), calling::callOf(text)};
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

} // namespace ui
