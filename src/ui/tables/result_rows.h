// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include <QString>

#include "calling/call.h"
#include "run/summary_for_each_patient.h"
#include "ui/tables/call_icons.h"
#include "ui/tables/result_tones.h"

namespace ui {

/// The four result tables of a patient.
enum class ResultTable { germlineDNA, somaticDNA, germlineRNA, somaticRNA };
inline constexpr std::array kResultTables = {ResultTable::germlineDNA, ResultTable::somaticDNA,
                                             ResultTable::germlineRNA, ResultTable::somaticRNA};

/// A cell of a result table: the text that it shows, and what the text says.
struct ResultCell {
    QString text;
    calling::Call call = calling::Call::none;
};

/// The cell for a record's text. An absent one is empty.
ResultCell cellOf(const archive::Text& text);

/// A result row as its table shows it: the cells of the columns "0" to "3". A table with fewer
/// columns leaves the rest empty.
using ResultRow = std::array<ResultCell, 4>;

/// The column in which a result row has its call.
inline constexpr std::size_t kCallColumn = 1;

/// The rows of one table of the patient; none without a patient.
std::vector<ResultRow> resultRows(ResultTable table, const run::SummaryForEachPatient* patient);

/// Whether the table holds a finding, which the notice beside it tells.
bool holdsFinding(ResultTable table, const std::vector<ResultRow>& rows);

/// The role of a cell. Deliberate: the germline DNA table keeps the default colour, whatever the
/// words.
ResultTone toneOfCell(ResultTable table, const ResultCell& cell);

/// The shape beside a cell; none where the text is no call.
CallShape shapeOfCell(ResultTable table, std::size_t column, const ResultCell& cell);

/// The row in words, for a screen reader: "KRAS G12D, Positive, 6.4%".
QString rowWords(const ResultRow& row);

/// What the popover shows for a result row.
struct RowDetails {
    /// Null where there is no such row, or the row names no domain.
    std::shared_ptr<const catalogue::MutDomain> mutDomain;
    QString commentLine;
};

RowDetails rowDetails(ResultTable table, const run::SummaryForEachPatient* patient,
                      std::ptrdiff_t row);

/// What in a patient's results needs a person's attention: the weightiest as a shape, all of it in
/// words, one line each.
struct PatientAttention {
    CallShape shape = CallShape::none;
    ResultTone tone = ResultTone::plain;
    QString words;
};

/// Findings weigh most, then degraded RNA, a control that does not work, calls that are not
/// decided, and a germline variant. Kinds of which no target had reads enough are named as well. A
/// patient without a row gets no shape. One without a mapped read pair has a shape and words of its
/// own, whatever its rows say: they tell of no reads, as those of an empty control do.
PatientAttention attentionFor(const run::SummaryForEachPatient& patient);

/// "not assessable (15 of 15 targets ND *1)" where none of the table's targets had reads enough;
/// else empty.
QString whyNotAssessable(ResultTable table, const run::SummaryForEachPatient* patient);

/// A record's text, an absent one as empty.
QString textOf(const archive::Text& text);

} // namespace ui
