// The rows of a list as Qt reads them: from the list itself, as many as it paints.
#pragma once

#include "text/row_list.h"

#include <QAbstractListModel>

namespace larkspin {

class RowsModel : public QAbstractListModel {
public:
    RowsModel(const RowList& rows, QObject& owner) : QAbstractListModel(&owner), rows_(rows) {}

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    // Takes in that the rows have changed, and returns true if they have. Until then Qt sees as
    // many rows as before.
    bool refresh();

    const RowList& rows() const { return rows_; }

private:
    const RowList& rows_;
    int count_ = 0;
    std::uint64_t revision_ = 0;
};

} // namespace larkspin
