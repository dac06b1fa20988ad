#include "platform/qt/room/people_view.h"

#include "platform/qt/keys.h"
#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"
#include "text/visible.h"

#include <QAbstractListModel>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr int betweenPeople = 3, besidePeople = 3, abovePeople = 4; // in pixels
constexpr double chosenGround = 0.22; // the text's share, while the keyboard is elsewhere

} // namespace

// Who is chosen stands out only as long as keys go to the list.
class PeopleView::Drawing : public QStyledItemDelegate {
public:
    explicit Drawing(const PeopleView& view) : view_(view) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, betweenPeople);
    }
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (view_.hasFocus())
            return;
        QPalette& palette = option->palette;
        const QColor front = palette.color(QPalette::Text);
        palette.setColor(QPalette::Highlight,
                         between(palette.color(QPalette::Base), front, chosenGround));
        palette.setColor(QPalette::HighlightedText, front);
    }

private:
    const PeopleView& view_;
};

// Qt isn't told of changes between two refreshes, so it reads the people as they were at the last
// one.
class PeopleView::Model : public QAbstractListModel {
public:
    explicit Model(Source source) : source_(std::move(source)) {}

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(people_.size());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        const auto& [name, rank] = at(index);
        if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole) {
            const bool isAloud = role == Qt::AccessibleTextRole;
            return toQt(isAloud ? at(index).spoken() : rank + visibleName(name)) +
                   (source_.isIgnored(name) ? " (ignored)" : "");
        }
        if (role == Qt::ForegroundRole && source_.isIgnored(name)) {
            const QPalette palette = QGuiApplication::palette();
            return between(palette.color(QPalette::Text), palette.color(QPalette::Base), 0.5);
        }
        return {};
    }
    const PeopleRow& at(const QModelIndex& index) const {
        return people_[static_cast<std::size_t>(index.row())];
    }
    QModelIndex find(const std::string& name) const {
        const auto found = std::ranges::find(people_, name, &PeopleRow::name);
        return found == people_.end() ? QModelIndex()
                                      : index(static_cast<int>(found - people_.begin()));
    }

    void refresh() {
        beginResetModel();
        people_ = source_.people();
        endResetModel();
    }

private:
    Source source_;
    std::vector<PeopleRow> people_;
};

PeopleView::PeopleView(Source source)
    : model_(std::make_unique<Model>(std::move(source))),
      drawing_(std::make_unique<Drawing>(*this)) {
    setModel(model_.get());
    setItemDelegate(drawing_.get());
    // They begin where the lines of what is said do. What is around them is drawn like their list.
    setViewportMargins(besidePeople, abovePeople, besidePeople, 0);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

PeopleView::~PeopleView() = default;

// The scrolled place and the chosen row stay, whoever comes and goes.
void PeopleView::refresh() {
    const std::string chosen = nameAt(currentIndex());
    const int top = verticalScrollBar()->value();
    model_->refresh();
    if (!chosen.empty())
        selectionModel()->setCurrentIndex(model_->find(chosen),
                                          QItemSelectionModel::ClearAndSelect);
    // Qt would do this later, and the scroll bar has no room before it.
    doItemsLayout();
    verticalScrollBar()->setValue(top);
}

std::string PeopleView::nameAt(const QModelIndex& index) const {
    return index.isValid() ? model_->at(index).name : "";
}

// At the pointer; by the menu key at whoever is chosen.
void PeopleView::contextMenuEvent(QContextMenuEvent* event) {
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = isByKey ? currentIndex() : indexAt(event->pos());
    const std::string name = nameAt(index);
    std::vector<MenuEntry> entries = name.empty() ? std::vector<MenuEntry>() : menuOf_(name);
    if (entries.empty())
        return;
    setCurrentIndex(index);
    popUp(*this, {.name = name, .entries = [&] { return entries; }},
          isByKey ? viewport()->mapToGlobal(visualRect(index).bottomLeft()) : event->globalPos(),
          choose_);
}

void PeopleView::mouseDoubleClickEvent(QMouseEvent* event) {
    const std::string name = nameAt(indexAt(event->position().toPoint()));
    if (!name.empty() && event->button() == Qt::LeftButton)
        activated_(name);
}

void PeopleView::keyPressEvent(QKeyEvent* event) {
    if (isReturn(event->key()) && currentIndex().isValid())
        activated_(nameAt(currentIndex()));
    else
        QListView::keyPressEvent(event);
}

} // namespace larkspin
