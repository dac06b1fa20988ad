#include "platform/qt/room/offer_panels.h"

#include "platform/qt/qt_text.h"

#include <QLineEdit>
#include <algorithm>

namespace larkspin {

namespace {

constexpr int gapAbove = 2; // in pixels, between the line and what stands above it

} // namespace

OfferPanels::OfferPanels(QLineEdit& line, LineOffers& offers) : line_(line), offers_(offers) {
    offers_.showBy({.show = [this] { show(); },
                    .mark = [this] { mark(); },
                    .scroll = [this](int rows) { question_->scroll(rows); },
                    .page = [this] { return page(); }});
}

OfferPanels::~OfferPanels() {
    delete choices_.data();
    delete question_.data();
}

void OfferPanels::show() {
    if (offers_.isOffering())
        showChoices();
    else if (offers_.isAsking())
        showQuestion();
    else
        open(nullptr);
}

void OfferPanels::showChoices() {
    if (!choices_) {
        choices_ = new ChoiceList;
        choices_->setParent(line_.window()); // whose font it has from then on
        choices_->onTake([this] { offers_.takeMarked(); });
        choices_->onMark([this](int choice) { offers_.mark(choice); });
    }
    choices_->offer(offers_.offered());
    open(choices_);
    mark();
}

void OfferPanels::showQuestion() {
    if (!question_) {
        question_ = new PasteQuestion([this](bool says) { offers_.answer(says); });
        question_->setParent(line_.window());
    }
    question_->ask(offers_.pasted());
    open(question_);
}

void OfferPanels::open(QWidget* panel) {
    if (shown_ && shown_ != panel)
        shown_->hide();
    shown_ = panel;
    line_.setAccessibleDescription({});
    if (!panel)
        return;
    place();
    panel->show();
    panel->raise();
}

void OfferPanels::place() {
    if (!shown_)
        return;
    const QPoint corner = line_.mapTo(line_.window(), QPoint());
    const int above = std::max(corner.y() - gapAbove, 1);
    QSize size = shown_->sizeHint().boundedTo({line_.width(), above});
    if (offers_.isAsking())
        size.setWidth(line_.width());
    shown_->setGeometry(QRect(QPoint(corner.x(), above - size.height()), size));
}

// Told to a screen reader as well, since the keyboard is in the line.
void OfferPanels::mark() {
    choices_->setCurrentRow(offers_.marked());
    const auto& choice = offers_.offered().choices[static_cast<std::size_t>(offers_.marked())];
    line_.setAccessibleDescription(
        toQt(choice.shown + (choice.help.empty() ? "" : ", ") + choice.help));
}

int OfferPanels::page() const {
    return offers_.isAsking() ? question_->page() : choices_->page();
}

} // namespace larkspin
