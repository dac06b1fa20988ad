#include "platform/qt/room/people_view.h"

#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"
#include "text/row_list.h"
#include "text/visible.h"

#include <QAbstractListModel>
#include <QScrollBar>
#include <utility>

namespace larkspin {

// Qt isn't told of changes between two refreshes, so it reads the people as they were at the last
// one.
class PeopleView::Model : public QAbstractListModel {
public:
    Model(Source source, QColor dimmed) : source_(std::move(source)), dimmed_(dimmed) {}

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : people_.count();
    }

    QVariant data(const QModelIndex& index, int role) const override {
        const std::string_view name = people_.row(index.row());
        if (role == Qt::DisplayRole)
            return toQt(visibleName(name)) + (source_.isIgnored(name) ? " (ignored)" : "");
        if (role == Qt::ForegroundRole && source_.isIgnored(name))
            return dimmed_;
        return {};
    }

    void refresh() {
        beginResetModel();
        people_ = source_.people();
        endResetModel();
    }

private:
    Source source_;
    QColor dimmed_;
    RowList people_;
};

PeopleView::PeopleView(Source source)
    : model_(std::make_unique<Model>(std::move(source),
                                     between(palette().color(QPalette::Text), Qt::black, 0.5))) {
    setModel(model_.get());
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

PeopleView::~PeopleView() = default;

// The scrolled place and the chosen row stay, whoever comes and goes.
void PeopleView::refresh() {
    const QVariant chosen = currentIndex().data();
    const int top = verticalScrollBar()->value();
    model_->refresh();
    for (int row = 0; chosen.isValid() && row < model_->rowCount(); ++row)
        if (model_->index(row).data() == chosen)
            selectionModel()->setCurrentIndex(model_->index(row),
                                              QItemSelectionModel::ClearAndSelect);
    // Qt would do this later, and the scroll bar has no room before it.
    doItemsLayout();
    verticalScrollBar()->setValue(top);
}

} // namespace larkspin
