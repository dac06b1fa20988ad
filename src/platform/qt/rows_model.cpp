#include "platform/qt/rows_model.h"

#include "platform/qt/qt_text.h"

namespace larkspin {

int RowsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count_;
}

QVariant RowsModel::data(const QModelIndex& index, int role) const {
    return role == Qt::DisplayRole ? toQt(rows_.row(index.row())) : QVariant();
}

bool RowsModel::refresh() {
    if (revision_ == rows_.rowsRevision())
        return false;
    beginResetModel();
    revision_ = rows_.rowsRevision();
    count_ = rows_.count();
    endResetModel();
    return true;
}

} // namespace larkspin
