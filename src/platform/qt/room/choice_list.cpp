#include "platform/qt/room/choice_list.h"

#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>

namespace larkspin {

namespace {

constexpr int rowsInSight = 10;
constexpr int besideText = 6, aboveText = 2, betweenColumns = 18; // in pixels
constexpr double mostOfWidth = 0.4; // for the first column, where there is a second one
constexpr int helpRole = Qt::UserRole;

// The widest of the rows as they are shown.
int firstColumn(const QListWidget& list) {
    int width = 0;
    for (int row = 0; row < list.count(); ++row)
        width = std::max(width, list.fontMetrics().horizontalAdvance(list.item(row)->text()));
    return width;
}

class ChoicePainter : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const QPalette& palette = option.palette;
        const bool isMarked = option.state & QStyle::State_Selected;
        const QColor ground = palette.color(isMarked ? QPalette::Highlight : QPalette::Base);
        const QColor front = palette.color(isMarked ? QPalette::HighlightedText : QPalette::Text);
        const bool isChoice = index.flags() & Qt::ItemIsEnabled;
        const QColor dim = dimText(front, ground);
        painter->fillRect(option.rect, ground);
        QRect within = option.rect.adjusted(besideText, 0, -besideText, 0);
        const QString help = index.data(helpRole).toString();
        const int column = help.isEmpty() ? within.width()
                                          : std::min(firstWidth, int(within.width() * mostOfWidth));
        const auto draw = [&](const QString& text, int width) {
            const QRect box(within.topLeft(), QSize(width, within.height()));
            painter->drawText(box, Qt::AlignVCenter | Qt::TextSingleLine,
                              option.fontMetrics.elidedText(text, Qt::ElideRight, width));
        };
        painter->setFont(option.font);
        painter->setPen(isChoice ? front : dim);
        draw(index.data().toString(), column);
        within.setLeft(within.left() + column + betweenColumns);
        painter->setPen(dim);
        draw(help, std::max(within.width(), 0));
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return {1, option.fontMetrics.height() + 2 * aboveText};
    }

    int firstWidth = 0;
};

} // namespace

ChoiceList::ChoiceList() {
    setItemDelegate(new ChoicePainter(this));
    setUniformItemSizes(true);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMouseTracking(true);
    setAutoScroll(false); // the row at the edge doesn't move under the mouse
    setAccessibleName("what the line can become");
}

void ChoiceList::offer(const Completion& completion) {
    clear();
    for (const Completion::Choice& choice : completion.choices) {
        auto* const row = new QListWidgetItem(toQt(choice.shown), this);
        const QString help = toQt(choice.help);
        row->setData(helpRole, help);
        row->setToolTip(help.isEmpty() ? help : "<qt>" + help.toHtmlEscaped());
        if (!help.isEmpty())
            row->setData(Qt::AccessibleTextRole, row->text() + ", " + help);
    }
    if (completion.others > 0)
        (new QListWidgetItem("and " + QString::number(completion.others) + " more", this))
            ->setFlags(Qt::NoItemFlags);
    static_cast<ChoicePainter&>(*itemDelegate()).firstWidth = firstColumn(*this);
    setCurrentRow(0);
    scrollToTop();
}

int ChoiceList::page() const {
    return std::max(1, viewport()->height() / std::max(1, sizeHintForRow(0)) - 1);
}

// As wide as its widest row, and high enough for some rows.
QSize ChoiceList::sizeHint() const {
    int helpWidth = 0;
    for (int row = 0; row < count(); ++row)
        helpWidth = std::max(helpWidth,
                             fontMetrics().horizontalAdvance(item(row)->data(helpRole).toString()));
    const int text = static_cast<const ChoicePainter&>(*itemDelegate()).firstWidth +
                     (helpWidth > 0 ? betweenColumns + helpWidth : 0);
    const int frame = 2 * frameWidth();
    const int rows = std::min(count(), rowsInSight);
    return {text + 2 * besideText + 1 + frame + verticalScrollBar()->sizeHint().width(),
            rows * sizeHintForRow(0) + frame};
}

int ChoiceList::choiceAt(const QMouseEvent& event) const {
    const QModelIndex index = indexAt(event.position().toPoint());
    return index.flags() & Qt::ItemIsEnabled ? index.row() : -1;
}

void ChoiceList::mouseMoveEvent(QMouseEvent* event) {
    const int row = choiceAt(*event);
    if (row < 0 || row == currentRow())
        return;
    mark_(row);
}

void ChoiceList::mousePressEvent(QMouseEvent* event) {
    mouseMoveEvent(event);
}

void ChoiceList::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && choiceAt(*event) >= 0)
        take_();
}

} // namespace larkspin
