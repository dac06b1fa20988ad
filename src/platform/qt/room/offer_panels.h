// What the line to type in offers, in panels above it. The keyboard stays in the line.
#pragma once

#include "host/line_offers.h"
#include "platform/qt/room/choice_list.h"
#include "platform/qt/room/paste_question.h"

#include <QPointer>

class QLineEdit;
class QWidget;

namespace larkspin {

class OfferPanels {
public:
    // Both must outlive it.
    OfferPanels(QLineEdit& line, LineOffers& offers);
    ~OfferPanels();
    OfferPanels(const OfferPanels&) = delete;
    OfferPanels& operator=(const OfferPanels&) = delete;

    // To be called when the line has another place.
    void place();

private:
    void show();
    void showChoices();
    void showQuestion();
    void mark();
    int page() const;
    void open(QWidget* panel);

    QLineEdit& line_;
    LineOffers& offers_;
    // Made when they are first needed. The window in which they stand may go before the line.
    QPointer<ChoiceList> choices_;
    QPointer<PasteQuestion> question_;
    QPointer<QWidget> shown_; // the one of them that is open
};

} // namespace larkspin
