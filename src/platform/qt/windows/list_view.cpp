// Lists, which read the rows from where they are, however many there are. Rows and marks are read
// anew when the list has another revision; what the owner selects goes back as one event.
#include "platform/qt/keys.h"
#include "platform/qt/looks.h"
#include "platform/qt/windows/control_view.h"
#include "platform/qt/windows/rows_model.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QListView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr int rowMargin = 4;   // in pixels, left of a row
constexpr int betweenRows = 2; // between two rows

class RowPainter : public QStyledItemDelegate {
public:
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const QPalette& palette = option.palette;
        const bool isOn = option.state & QStyle::State_Selected;
        if (isOn)
            painter->fillRect(option.rect, palette.color(QPalette::Highlight));
        painter->setPen(palette.color(isOn ? QPalette::HighlightedText : QPalette::Text));
        QFont font = option.font;
        if (index.data(RowsModel::isMarkedRole).toBool()) {
            font.setBold(true);
            painter->fillRect(markOf(option.rect), painter->pen().color());
        }
        painter->setFont(font);
        const QRect within = option.rect.adjusted(rowMargin, 0, -rowMargin, 0);
        painter->drawText(within, Qt::AlignVCenter | Qt::TextSingleLine, index.data().toString());
        if (option.state & QStyle::State_HasFocus) {
            const QColor front = painter->pen().color();
            drawOutline(*painter, option.rect.adjusted(1, 1, -1, -1),
                        between(front, palette.color(QPalette::Base), isOn ? 0 : 0.3));
        }
    }
    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return {1, rowHeight};
    }
    int rowHeight = 1;

private:
    static QRect markOf(const QRect& row) {
        return {row.left(), row.top() + 1, rowMargin - 2, row.height() - 2};
    }
};

class ListWidget : public QListView {
public:
    ListWidget() {
        setItemDelegate(&painter_);
        setUniformItemSizes(true);
        setFrameStyle(int{Box} | int{Plain});
    }

    // Only whole rows show. As many as fit share the height, and what is left over lies below the
    // last one.
    void fitRows() {
        const int height = contentsRect().height();
        if (std::exchange(fittedHeight_, height) == height)
            return;
        const int fitting = std::max(1, height / (fontMetrics().height() + betweenRows));
        painter_.rowHeight = std::max(height / fitting, 1);
        setViewportMargins(0, 0, 0, height - fitting * painter_.rowHeight);
        scheduleDelayedItemsLayout();
    }

private:
    RowPainter painter_;
    int fittedHeight_ = 0;
};

class ListView : public ControlView {
public:
    ListView(const ViewParts& parts, const Control& control)
        : ControlView(parts, control, std::make_unique<ListWidget>()),
          model_(*new RowsModel(*control.rows, widget())) {
        list().setModel(&model_);
        list().setSelectionMode(control.selectsMany ? QListView::ExtendedSelection
                                                    : QListView::SingleSelection);
        listenTo(*list().viewport());
        connect(list().selectionModel(), &QItemSelectionModel::selectionChanged, this,
                [this] { isTouched_ = true; });
    }

private:
    ListWidget& list() const { return static_cast<ListWidget&>(widget()); }
    int rowAt(const QMouseEvent& event) const {
        return list().indexAt(event.position().toPoint()).row();
    }

    void show(const Control& control) override {
        list().fitRows();
        const bool follows = control.markedRow && mark(control);
        showRows();
        if (follows && marked_ != noRow && !isInSight(marked_))
            list().scrollTo(model_.index(marked_), QListView::PositionAtCenter);
    }

    // The marked row is in sight as the list appears, and stays so when another one becomes it.
    bool mark(const Control& control) {
        const bool appears = list().isVisible() && !wasVisible_;
        wasVisible_ = list().isVisible();
        const bool wasInSight = marked_ == noRow || isInSight(marked_);
        const int before = std::exchange(marked_, control.markedRow());
        model_.mark(marked_, control.markedAs);
        return appears || (marked_ != before && wasInSight && !isHeld_);
    }
    bool isInSight(int row) const {
        return list().viewport()->rect().contains(list().visualRect(model_.index(row)));
    }

    void showRows() {
        const RowList& rows = model_.rows();
        // A selection by the owner that the program hasn't taken over is undone, but not while the
        // mouse is still selecting.
        if (revision_ == rows.revision() && (!isTouched_ || isHeld_))
            return;
        const int top = list().verticalScrollBar()->value();
        const bool hasOtherRows = model_.refresh();
        if (hasOtherRows)
            list().doItemsLayout(); // or the view would be back at the top
        showMarks(rows);
        if (hasOtherRows)
            list().verticalScrollBar()->setValue(top);
        revision_ = rows.revision();
        isTouched_ = false; // what was shown here is no doing of the owner's
    }

    void showMarks(const RowList& rows) {
        QItemSelection selected;
        int left = rows.selectedCount();
        for (int row = 0; left > 0; ++row) {
            const int first = row;
            for (; rows.isSelected(row); ++row)
                --left;
            // Qt takes ranges of rows far more quickly than single ones.
            if (row > first)
                selected.select(model_.index(first), model_.index(row - 1));
        }
        QItemSelectionModel& marks = *list().selectionModel();
        marks.select(selected, QItemSelectionModel::ClearAndSelect);
        if (const auto current = model_.index(rows.currentIndex()); current != marks.currentIndex())
            marks.setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    }

    // The current row stands last, as `selectRows` takes it.
    std::vector<int> selectedRows() const {
        std::vector<int> rows;
        for (const QModelIndex& index : list().selectionModel()->selectedRows())
            rows.push_back(index.row());
        std::sort(rows.begin(), rows.end());
        const auto current = std::find(rows.begin(), rows.end(), list().currentIndex().row());
        if (current != rows.end())
            std::rotate(current, current + 1, rows.end());
        return rows;
    }

    // Tells the program of the selection after Qt has handled this mouse or key event.
    void tellSelectionLater() {
        hand().passes([view = QPointer<ListView>(this), name = name()](Window& window) {
            if (view && view->isTouched_)
                selectRows(window, name, view->selectedRows());
        });
    }

    bool pressed(const QMouseEvent& event) override {
        // With a modifier key Qt selects by its own rules, and the outcome is told when the button
        // is up.
        pressedRow_ = event.modifiers() == Qt::NoModifier ? rowAt(event) : noRow;
        isHeld_ = true;
        if (pressedRow_ != noRow)
            hand().does([name = name(), row = pressedRow_](Window& window) {
                mouseDown(window, name, row);
            });
        return false;
    }

    // It is a click if the button comes up over the row where it went down. Otherwise the mouse has
    // been drawn over several rows.
    bool released(const QMouseEvent& event) override {
        const int row = std::exchange(pressedRow_, noRow);
        isHeld_ = false;
        if (row == noRow || row != rowAt(event)) {
            tellSelectionLater();
            return false;
        }
        hand().does([name = name(), row](Window& window) { click(window, name, row); });
        return false;
    }

    bool pressedAgain(const QMouseEvent& event) override {
        hand().does([name = name(), row = rowAt(event)](Window& window) {
            doubleClick(window, name, row);
        });
        return true;
    }

    bool strike(const QKeyEvent& event) override {
        if (!isReturn(event.key())) {
            tellSelectionLater();
            return event.key() == Qt::Key_Delete;
        }
        hand().does([name = name(), row = list().currentIndex().row()](Window& window) {
            pressWithoutMouse(window, name, row);
        });
        return true;
    }

    // Of the row under the mouse, or of the current one. Where there is none a key still means the
    // window.
    bool menuAsked(const QContextMenuEvent& event) override {
        const bool isByMouse = event.reason() == QContextMenuEvent::Mouse;
        const int row = isByMouse ? list().indexAt(event.pos()).row() : list().currentIndex().row();
        if (const Control* const described = control(); !described || !described->onMenu)
            return ControlView::menuAsked(event);
        if (row == noRow)
            return isByMouse;
        hand().does([name = name(), row](Window& window) { askMenu(window, name, row); });
        return true;
    }

    RowsModel& model_;           // the widget's
    std::uint64_t revision_ = 0; // of the list that it shows
    int pressedRow_ = noRow;
    int marked_ = noRow;
    bool wasVisible_ = false;
    bool isHeld_ = false;    // the mouse is still selecting
    bool isTouched_ = false; // the owner has changed it
};

} // namespace

std::unique_ptr<ControlView> makeListView(const ViewParts& parts, const Control& control) {
    return std::make_unique<ListView>(parts, control);
}

} // namespace larkspin
