#include "platform/qt/room/rooms_view.h"

#include "host/conversation_rows.h"
#include "host/conversations.h"
#include "platform/qt/keys.h"
#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/room/said_text.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>
#include <vector>

namespace larkspin {

namespace {

constexpr int rowGap = 6, sideGap = 6, headingGap = 8; // in pixels
constexpr double frontGround = 0.22, dimmedBy = 0.45;  // shares of the other colour

} // namespace

class RoomsView::Model : public QAbstractListModel {
public:
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows_.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::DisplayRole)
            return toQt(at(index).caption);
        return role == Qt::AccessibleTextRole ? toQt(at(index).spoken()) : QVariant();
    }
    // The name of a network can't be chosen.
    Qt::ItemFlags flags(const QModelIndex& index) const override {
        return at(index).conversation ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::ItemFlags();
    }
    const ConversationRow& at(const QModelIndex& index) const {
        return rows_[static_cast<std::size_t>(index.row())];
    }
    QModelIndex front() const { return find(&ConversationRow::isFront, true); }
    QModelIndex placed(const std::string& place) const {
        return place.empty() ? QModelIndex() : find(&ConversationRow::place, place);
    }
    // False if they are as they were. A screen reader loses its place when the list is another.
    bool take(std::vector<ConversationRow> rows) {
        if (rows == rows_)
            return false;
        const bool areSame =
            std::ranges::equal(rows, rows_, {}, &ConversationRow::place, &ConversationRow::place);
        if (!areSame)
            beginResetModel();
        rows_ = std::move(rows);
        if (!areSame)
            endResetModel();
        else
            Q_EMIT dataChanged(index(0), index(rowCount() - 1));
        return true;
    }

private:
    template <typename Field, typename Value>
    QModelIndex find(Field field, const Value& wanted) const {
        const auto found = std::ranges::find(rows_, wanted, field);
        return found == rows_.end() ? QModelIndex()
                                    : index(static_cast<int>(found - rows_.begin()));
    }

    std::vector<ConversationRow> rows_;
};

class RoomsView::Drawing : public QStyledItemDelegate {
public:
    explicit Drawing(const Model& model) : model_(model) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const int height = option.fontMetrics.height() + rowGap;
        return {height, height + (model_.at(index).conversation ? 0 : headingGap)};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const ConversationRow& row = model_.at(index);
        const QColor ground = option.palette.color(QPalette::Active, QPalette::Base);
        const QColor front = option.palette.color(QPalette::Active, QPalette::Text);
        const QColor dim = between(front, ground, dimmedBy);
        if (row.isFront)
            painter->fillRect(option.rect, between(ground, front, frontGround));
        QRect area = option.rect.adjusted(sideGap, 0, -sideGap, 0);
        if (!row.conversation)
            return drawText(*painter, area.adjusted(0, headingGap, 0, 0), option.font, dim,
                            row.caption);
        if (option.state & QStyle::State_HasFocus)
            drawOutline(*painter, option.rect, dim);
        area.setLeft(drawNumber(*painter, area, option.font, dim, row));
        area.setRight(drawUnread(*painter, area, option.font, row, front, ground));
        QFont font = option.font;
        font.setBold(row.unread > 0);
        drawText(*painter, area, font, row.isOpen ? front : dim, row.caption);
    }

private:
    static void drawText(QPainter& painter, const QRect& area, const QFont& font,
                         const QColor& color, const std::string& text) {
        painter.setFont(font);
        painter.setPen(color);
        painter.drawText(
            area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
            painter.fontMetrics().elidedText(toQt(text), Qt::ElideRight, area.width()));
    }
    // By which Alt leads there. Gives where the name begins.
    static int drawNumber(QPainter& painter, const QRect& area, const QFont& font,
                          const QColor& color, const ConversationRow& row) {
        painter.setFont(font);
        painter.setPen(color);
        const int width = painter.fontMetrics().horizontalAdvance("00");
        if (row.number)
            painter.drawText(QRect(area.left(), area.top(), width, area.height()),
                             Qt::AlignRight | Qt::AlignVCenter, QString::number(*row.number));
        return area.left() + width + sideGap;
    }
    // With a dot where he was called. Gives where the name ends.
    static int drawUnread(QPainter& painter, const QRect& area, QFont font,
                          const ConversationRow& row, const QColor& front, const QColor& ground) {
        if (row.unread == 0)
            return area.right();
        const bool calls = row.unreadForOwner > 0;
        const QString text =
            (calls ? QString::fromUtf8("\u25CF ") : QString()) + QString::number(row.unread);
        font.setBold(true);
        painter.setFont(font);
        painter.setPen(calls ? readable(callColor, ground) : front);
        painter.drawText(area, Qt::AlignRight | Qt::AlignVCenter, text);
        return area.right() - painter.fontMetrics().horizontalAdvance(text) - sideGap;
    }

    const Model& model_;
};

RoomsView::RoomsView(const Conversations& conversations)
    : conversations_(conversations), model_(std::make_unique<Model>()),
      drawing_(std::make_unique<Drawing>(*model_)) {
    setModel(model_.get());
    setItemDelegate(drawing_.get());
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName("rooms and private talks");
    connect(this, &QListView::clicked, this, [this](const QModelIndex& index) { choose(index); });
}

RoomsView::~RoomsView() = default;

bool RoomsView::refresh() {
    if (std::exchange(revision_, conversations_.revision()) == conversations_.revision())
        return false;
    // While he goes through the list by keys, the one that he has reached stays.
    const std::string reached =
        hasFocus() && currentIndex().isValid() ? model_->at(currentIndex()).place : "";
    if (!model_->take(conversationRows(conversations_)))
        return false;
    const QModelIndex there = model_->placed(reached);
    setCurrentIndex(there.isValid() ? there : model_->front());
    return true;
}

void RoomsView::choose(const QModelIndex& index) {
    if (index.isValid() && model_->at(index).conversation)
        chosen_(model_->at(index).place);
}

void RoomsView::keyPressEvent(QKeyEvent* event) {
    if (isReturn(event->key()) || event->key() == Qt::Key_Space)
        choose(currentIndex());
    else
        QListView::keyPressEvent(event);
}

} // namespace larkspin
