// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "catalogue/mut_domain.h"
#include "ui/tables/record_table_model.h"

namespace ui {

/// The mutations of one domain with their counts, for the popover. A column "bar" shows no text:
/// its cells are bars whose lengths compare the counts.
class MutationsTableModel : public RecordTableModel {
    Q_OBJECT

public:
    using RecordTableModel::RecordTableModel;

    /// Takes over the domain's mutations as they are now; none without a domain.
    void reload(const catalogue::MutDomain* domain);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;

protected:
    QVariant value(int row, const QString& identifier, int role) const override;

private:
    struct Row {
        QString name;
        std::int64_t match = 0;
        bool isReference = false;
    };
    QString words(const Row& row) const;

    std::vector<Row> m_rows;
    std::int64_t m_largest = 0;
};

} // namespace ui
