#include "platform/qt/room/line_offers.h"

#include "platform/qt/keys.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/room/choice_list.h"
#include "platform/qt/room/paste_question.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr int gapAbove = 2; // in pixels, between the line and what stands above it

// How many rows further down a key leads; 0 for all other keys.
template <typename List> int rowsOf(int key, const List& list) {
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Backtab:
        return -1;
    case Qt::Key_Down:
        return 1;
    case Qt::Key_PageUp:
        return -list.page();
    case Qt::Key_PageDown:
        return list.page();
    default:
        return 0;
    }
}

bool isModifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
           key == Qt::Key_AltGr || key == Qt::Key_Meta || key == Qt::Key_CapsLock;
}

} // namespace

LineOffers::LineOffers(QLineEdit& line, Take take, Say say)
    : line_(line), take_(std::move(take)), say_(std::move(say)) {}

LineOffers::~LineOffers() {
    delete choices_.data();
    delete question_.data();
}

bool LineOffers::isOffering() const {
    return shown_ && shown_ == choices_;
}

bool LineOffers::isAsking() const {
    return shown_ && shown_ == question_;
}

void LineOffers::open(QWidget& panel) {
    if (shown_ != &panel && shown_)
        shown_->hide();
    shown_ = &panel;
    place();
    panel.show();
    panel.raise();
}

void LineOffers::offer(const Completion& completion) {
    if (!choices_) {
        choices_ = new ChoiceList;
        choices_->setParent(line_.window()); // whose font it has from then on
        choices_->onTake([this] { takeMarked(); });
        choices_->onMark([this] { tellMarked(); });
    }
    choices_->offer(completion);
    open(*choices_);
}

void LineOffers::ask(PastedLines pasted) {
    if (!question_) {
        question_ = new PasteQuestion([this](bool says) { answer(says); });
        question_->setParent(line_.window());
    }
    pasted_ = std::move(pasted);
    question_->ask(pasted_);
    open(*question_);
}

void LineOffers::close() {
    if (shown_)
        shown_->hide();
    shown_ = nullptr;
    pasted_ = {};
    line_.setAccessibleDescription({});
}

void LineOffers::place() {
    if (!shown_)
        return;
    const QPoint corner = line_.mapTo(line_.window(), QPoint());
    const int above = std::max(corner.y() - gapAbove, 1);
    QSize size = shown_->sizeHint().boundedTo({line_.width(), above});
    if (isAsking())
        size.setWidth(line_.width());
    shown_->setGeometry(QRect(QPoint(corner.x(), above - size.height()), size));
}

bool LineOffers::takesKey(const QKeyEvent& key) {
    if (isOffering())
        return takesKeyToChoices(key);
    return isAsking() && takesKeyToQuestion(key);
}

// Where the owner goes on typing, the line brings other choices.
bool LineOffers::takesKeyToChoices(const QKeyEvent& key) {
    if (const int rows = rowsOf(key.key(), *choices_); rows != 0) {
        choices_->move(rows);
        return true;
    }
    if (isReturn(key.key()) || key.key() == Qt::Key_Tab)
        takeMarked();
    else if (key.key() == Qt::Key_Escape)
        close();
    else
        return false;
    return true;
}

// Whoever goes on typing doesn't want the lines said.
bool LineOffers::takesKeyToQuestion(const QKeyEvent& key) {
    if (const int rows = rowsOf(key.key(), *question_); rows != 0) {
        question_->scroll(rows);
        return true;
    }
    if (isReturn(key.key()))
        answer(true);
    else if (key.key() == Qt::Key_Escape)
        answer(false);
    else if (!isModifier(key.key()) && key.key() != Qt::Key_Tab)
        close();
    return isReturn(key.key()) || key.key() == Qt::Key_Escape || key.key() == Qt::Key_Tab;
}

void LineOffers::takeMarked() {
    const Completion::Choice choice = choices_->marked();
    close();
    take_(choice);
}

void LineOffers::answer(bool says) {
    std::vector<std::string> lines = std::move(pasted_.lines);
    close();
    if (says)
        say_(std::move(lines));
}

// To a screen reader, since the keyboard is in the line.
void LineOffers::tellMarked() {
    const Completion::Choice& choice = choices_->marked();
    line_.setAccessibleDescription(
        toQt(choice.shown + (choice.help.empty() ? "" : ", ") + choice.help));
}

} // namespace larkspin
