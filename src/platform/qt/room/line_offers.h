// What stands above the line to type in, and only while it is needed: what the line can become, or
// the question whether pasted lines are to be said. The keyboard stays in the line, which asks here
// first what a key means.
#pragma once

#include "host/pasted_lines.h"
#include "library/completion.h"
#include "platform/qt/room/choice_list.h"
#include "platform/qt/room/paste_question.h"

#include <QPointer>
#include <functional>

class QKeyEvent;
class QLineEdit;
class QWidget;

namespace larkspin {

class LineOffers {
public:
    using Take = std::function<void(const Completion::Choice& choice)>;
    using Say = std::function<void(std::vector<std::string> lines)>;

    // The tasks get the choice that the owner takes, and the lines that he wants to be said.
    LineOffers(QLineEdit& line, Take take, Say say);
    ~LineOffers();

    // What is open goes when something else opens.
    void offer(const Completion& completion);
    void ask(PastedLines pasted);
    void close();

    bool isOffering() const;
    bool isAsking() const;

    // Whether the key has been dealt with.
    bool takesKey(const QKeyEvent& key);

    // To be called when the line has another place.
    void place();

private:
    void open(QWidget& panel);
    bool takesKeyToChoices(const QKeyEvent& key);
    bool takesKeyToQuestion(const QKeyEvent& key);
    void takeMarked();
    void answer(bool says);
    void tellMarked();

    QLineEdit& line_;
    Take take_;
    Say say_;
    // Made when they are first needed. The window in which they stand may go before the line.
    QPointer<ChoiceList> choices_;
    QPointer<PasteQuestion> question_;
    QPointer<QWidget> shown_; // the one of them that is open
    PastedLines pasted_;
};

} // namespace larkspin
