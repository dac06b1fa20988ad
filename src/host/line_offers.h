// What stands above the line in which the owner types, and only while it is needed: what the line
// can become, or the question whether pasted lines are to be said. The keys go to the line, which
// asks here first what one means.
#pragma once

#include "host/pasted_lines.h"
#include "library/completion.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

// What a key means to a line, and to what stands above it, on whatever keyboard it is struck.
enum class LineKey { enter, escape, tab, shiftTab, up, down, pageUp, pageDown, other };

class LineOffers {
public:
    using Take = std::function<void(const Completion::Choice& choice)>;
    using Say = std::function<void(std::vector<std::string> lines)>;

    // The tasks get the choice that the owner takes, and the lines that he wants to be said.
    LineOffers(Take take, Say say) : take_(std::move(take)), say_(std::move(say)) {}

    // How a front end shows it.
    struct View {
        std::function<void()> show = [] {}; // something else than before, or nothing any more
        std::function<void()> mark = [] {}; // another choice
        std::function<void(int rows)> scroll = [](int) {}; // the lines that are asked about
        std::function<int()> page = [] { return 1; };      // rows
    };
    void showBy(View view) { view_ = std::move(view); }

    // What is open goes when something else opens.
    void offer(Completion completion);
    void ask(PastedLines pasted);
    void close();

    bool isOffering() const { return !offered_.choices.empty(); }
    bool isAsking() const { return !pasted_.lines.empty(); }

    const Completion& offered() const { return offered_; }
    int marked() const { return marked_; } // choice
    const PastedLines& pasted() const { return pasted_; }

    // Whether the key has been dealt with.
    bool take(LineKey key);

    // What the mouse does.
    void mark(int choice);
    void takeMarked();
    void answer(bool says);

private:
    bool takeToChoices(LineKey key);
    bool takeToQuestion(LineKey key);
    int rowsOf(LineKey key) const;
    void move(int rows);

    Take take_;
    Say say_;
    View view_;
    Completion offered_;
    int marked_ = 0;
    PastedLines pasted_;
};

} // namespace larkspin
