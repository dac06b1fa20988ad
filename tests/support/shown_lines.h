// What an owner sees of conversations, line by line: what is said as "ann: hi", all else after a
// mark.
#pragma once

#include "host/conversations.h"
#include "host/new_lines.h"
#include "support/virtual_machine.h"

#include <string>
#include <utility>

namespace larkspin {

class ShownLines {
public:
    ShownLines(Conversations& conversations, std::string mark)
        : conversations_(conversations), mark_(std::move(mark)) {
        conversations.beforeChange([this] { showNew(); });
    }
    ~ShownLines() {
        conversations_.beforeChange([] {});
    }
    ShownLines(const ShownLines&) = delete;
    ShownLines& operator=(const ShownLines&) = delete;

    // All since the last time.
    std::string take() {
        showNew();
        return std::exchange(seen_, {});
    }

private:
    void tell(const std::string& text) { seen_ += mark_ + text + '\n'; }
    void show(const KeptLine& line) {
        if (line.isOnScreen)
            return;
        if (line.kind == KeptLine::Kind::said)
            seen_ += line.speaker + ": " + messageOf(line.text) + '\n';
        else
            tell(wordsOf(line));
    }
    void showNew() {
        lines_.take({.entered = [this](const Conversation& at,
                                       bool) { tell(wordsOfEntering(conversations_, at)); },
                     .leftOut = [this](int count) { tell(std::to_string(count) + " before"); },
                     .line = [this](const KeptLine& line) { show(line); },
                     .elsewhere =
                         [this](const Conversation& of, const KeptLine& line) {
                             tell(wordsFromElsewhere(conversations_, of, line));
                         }});
    }

    Conversations& conversations_;
    NewLines lines_{conversations_};
    std::string mark_, seen_;
};

} // namespace larkspin
