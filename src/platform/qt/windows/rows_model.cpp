#include "platform/qt/windows/rows_model.h"

#include "platform/qt/qt_text.h"

#include <string>
#include <string_view>
#include <utility>

namespace larkspin {

namespace {

// After this many blanks a row holds what isn't to be seen, such as a song's path, however wide the
// list is.
const std::string farAfter(40, ' ');

std::string_view seenOf(std::string_view row) {
    return row.substr(0, row.find(farAfter));
}

} // namespace

int RowsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count_;
}

QVariant RowsModel::data(const QModelIndex& index, int role) const {
    const bool isMarked = index.row() == marked_;
    if (role == isMarkedRole)
        return isMarked;
    if (role != Qt::DisplayRole && !(role == Qt::AccessibleTextRole && isMarked))
        return {};
    const QString text = toQt(seenOf(rows_.row(index.row())));
    return role == Qt::DisplayRole ? text : text + ", " + toQt(markedAs_);
}

void RowsModel::mark(int row, const std::string& word) {
    if (row == marked_)
        return;
    markedAs_ = word;
    for (const int changed : {std::exchange(marked_, row), row})
        if (changed >= 0 && changed < count_)
            Q_EMIT dataChanged(index(changed), index(changed));
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
