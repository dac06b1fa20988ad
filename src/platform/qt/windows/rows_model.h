// The rows of a list as Qt reads them: from the list itself, as many as it paints.
#pragma once

#include "text/row_list.h"

#include <QAbstractListModel>
#include <string>

namespace larkspin {

class RowsModel : public QAbstractListModel {
public:
    RowsModel(const RowList& rows, QObject& owner) : QAbstractListModel(&owner), rows_(rows) {}

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    // Takes in that the rows have changed, and returns true if they have. Until then Qt sees as
    // many rows as before.
    bool refresh();

    // One row stands out from the others, -1 for none. A screen reader tells it by that word.
    static constexpr int isMarkedRole = Qt::UserRole;
    void mark(int row, const std::string& word);

    const RowList& rows() const { return rows_; }

private:
    const RowList& rows_;
    int count_ = 0;
    int marked_ = -1;
    std::string markedAs_;
    std::uint64_t revision_ = 0;
};

} // namespace larkspin
