// What stands above the line to type in, and only while it is needed: what the line can become, or
// the question whether pasted lines are to be said. The keys go to the line, which asks here first
// what a key means; the mouse points at a choice and takes it.
#pragma once

#include "host/pasted_lines.h"
#include "library/completion.h"
#include "platform/terminal/screen/cells.h"
#include "platform/terminal/screen/strokes.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

class TypedOffers {
public:
    using Take = std::function<void(const Completion::Choice& choice)>;
    using Say = std::function<void(std::vector<std::string> lines)>;

    // The tasks get the choice that the owner takes, and the lines that he wants to be said.
    TypedOffers(Take take, Say say) : take_(std::move(take)), say_(std::move(say)) {}

    // What is open goes when something else opens.
    void offer(const Completion& completion);
    void ask(PastedLines pasted);
    void close();

    bool isOffering() const { return shown_ == Shown::choices; }
    bool isAsking() const { return shown_ == Shown::question; }

    // Whether the stroke has been dealt with.
    bool take(const Stroke& stroke);

    struct Looks {
        CellStyle plain{}, dim{}, marked{};
    };
    // At the foot of the area.
    void draw(Cells& cells, const Area& above, const Looks& looks);

private:
    enum class Shown { none, choices, question };

    bool takeKeyToChoices(const KeyStroke& key);
    bool takeKeyToQuestion(const KeyStroke& key);
    bool takeMouse(const MouseStroke& stroke);
    void move(int rows);
    void scroll(int rows);
    void takeMarked();
    void answer(bool says);
    void drawChoices(Cells& cells, const Area& above, const Looks& looks);
    void drawQuestion(Cells& cells, const Area& above, const Looks& looks);
    int rowCount() const;

    Take take_;
    Say say_;
    Shown shown_ = Shown::none;
    Completion offered_;
    PastedLines pasted_;
    int marked_ = 0;     // choice
    int first_ = 0;      // the row of them that stands uppermost
    Area list_;          // where rows stand
    Area says_, leaves_; // the answers to the question
};

} // namespace larkspin
