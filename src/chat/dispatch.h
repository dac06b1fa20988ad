// The door through which commands come in: takes a chat line, drops it unless the owner said
// it, and runs the first row of the command table that it fits.
#pragma once

#include "chat/scanner.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace larkspin {

struct AppState;
class Room;
class Trace;

// An operation of some unit, which takes a text or nothing.
class Operation {
public:
    template <class Unit, class Member>
    Operation(Unit& unit, Member member)
        : takesArgument_(std::is_invocable_v<Member, Unit&, const std::string&>),
          run_([&unit, member](const std::string& argument) {
              if constexpr (std::is_invocable_v<Member, Unit&, const std::string&>)
                  (unit.*member)(argument);
              else
                  (unit.*member)();
          }) {}

    bool takesArgument() const { return takesArgument_; }
    void operator()(const std::string& argument) const { run_(argument); }

private:
    bool takesArgument_;
    std::function<void(const std::string& argument)> run_;
};

// One row of the command table. A pattern with a star is for an operation that takes an argument:
// all that stands after the word and one blank, as typed. One without fits only the bare word.
struct CommandRow {
    std::string_view pattern; // in lower case
    Operation run;
    bool afterTrigger = true; // false: the line is the pattern alone
};

class Dispatch {
public:
    Dispatch(const AppState& state, Room& room, Trace& trace)
        : state_(state), room_(room), trace_(trace) {}

    // The owner is whoever bears the screen name at this moment, to the letter; nobody is while
    // it is empty. A line that fits no row has no effect at all.
    void handle(const ChatLine& line, std::span<const CommandRow> rows) const;

    // The same for the trace: what the owner has said is kept there, of others how many lines there
    // were. False for a line that has no effect, whatever the rows.
    bool notes(const ChatLine& line) const;

private:
    bool isOwners(const ChatLine& line) const;
    bool matches(const CommandRow& row, std::string_view lowered) const;
    std::string argument(const CommandRow& row, std::string_view line) const;

    const AppState& state_;
    Room& room_;
    Trace& trace_;
};

} // namespace larkspin
