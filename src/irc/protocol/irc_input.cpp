#include "irc/protocol/irc_input.h"

#include "text/parts.h"

namespace larkspin {

// Lines end at line feeds alone: servers that pass on other control characters would let anybody
// write a line of the server's after a carriage return.
void IrcInput::add(std::string_view bytes, const Take& take) {
    while (!bytes.empty()) {
        const auto [part, rest, isWhole] = partedAt(bytes, '\n');
        keep(part);
        if (isWhole)
            finish(take);
        bytes = rest;
    }
}

void IrcInput::keep(std::string_view part) {
    tooLong_ = tooLong_ || begun_.size() + part.size() > longestLine;
    if (tooLong_)
        begun_.clear();
    else
        begun_ += part;
}

// The members are put in order before `take` is called, since it may clear the input.
void IrcInput::finish(const Take& take) {
    std::string line;
    line.swap(begun_);
    tooLong_ = false;
    while (line.ends_with('\r'))
        line.pop_back();
    if (!line.empty())
        take(line);
}

void IrcInput::clear() {
    begun_.clear();
    tooLong_ = false;
}

} // namespace larkspin
