// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/tables/result_rows.h"

#include <algorithm>

#include <QStringList>

namespace ui {
namespace {

ResultRow cellsOf(const calling::ReportGermlineDNA& row) {
    return {textOf(row.areaSearched), textOf(row.allelicType), {}, {}};
}

ResultRow cellsOf(const calling::ReportSomaticDNA& row) {
    return {textOf(row.areaSearched), textOf(row.diagnosis), textOf(row.mutantCellRatio), {}};
}

template <class RNARow>
ResultRow cellsOf(const RNARow& row) {
    return {textOf(row.gene), textOf(row.diagnosis), textOf(row.numberOfReads),
            textOf(row.comment)};
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

bool isFinding(ResultTable table, const QString& call) {
    switch (table) {
    case ResultTable::germlineDNA:
        return call == QLatin1String("mut/mut") || call == QLatin1String("wt/mut") ||
               call == QLatin1String("Not Determined");
    case ResultTable::germlineRNA:
        return call == QLatin1String("RNA degraded");
    case ResultTable::somaticDNA:
    case ResultTable::somaticRNA:
        break;
    }
    return call == QLatin1String("Positive");
}

CallShape alleleShape(const QString& allelicType) {
    if (allelicType == QLatin1String("wt/wt")) {
        return CallShape::hollowDiamond;
    }
    if (allelicType == QLatin1String("wt/mut")) {
        return CallShape::halfDiamond;
    }
    return allelicType == QLatin1String("mut/mut") ? CallShape::filledDiamond
                                                   : CallShape::questionDiamond;
}

} // namespace

QString textOf(const archive::Text& text) {
    return text ? QString::fromStdString(*text) : QString();
}

std::vector<ResultRow> resultRows(ResultTable table, const run::SummaryForEachPatient* patient) {
    if (patient == nullptr) {
        return {};
    }
    return withList(table, *patient, [](const auto& list) { return rowsOf(list); });
}

bool holdsFinding(ResultTable table, const std::vector<ResultRow>& rows) {
    return std::any_of(rows.begin(), rows.end(), [table](const ResultRow& row) {
        return isFinding(table, row[kCallColumn]);
    });
}

ResultTone toneOfCell(ResultTable table, const QString& text) {
    return table == ResultTable::germlineDNA ? ResultTone::plain : toneOfText(text);
}

CallShape shapeOfCell(ResultTable table, std::size_t column, const QString& text) {
    const bool isCall = column == kCallColumn && !text.isEmpty();
    if (table == ResultTable::germlineDNA) {
        return isCall ? alleleShape(text) : CallShape::none;
    }
    switch (toneOfText(text)) {
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
    for (const QString& text : row) {
        if (!text.isEmpty()) {
            words.append(text);
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
