// The recital of the choices: tells them in the room one after the other, and asks for a number.
//
// It waits between its lines. Meanwhile the owner can break it off, start it once more, or make an
// end of the choices; a recital that has lost its choices, or its place to another recital, stops
// without a further line.
#pragma once

#include "chat/core.h"

#include <string>
#include <string_view>

namespace larkspin {

class Choices;

class ChoiceRecital {
public:
    ChoiceRecital(const Core& core, Choices& choices)
        : state_(core.state), loop_(core.loop), reply_(core.reply), choices_(choices) {}

    enum class End {
        asked,    // all are told, and a number is awaited
        broken,   // by the owner; the choices are still open
        lost,     // its choices, as a start takes them away
        replaced, // by another recital
    };

    // `breakCaption`: what a click that breaks it off makes of the stop window's caption.
    // `opening`: said first, unless empty.
    End recite(std::string_view breakCaption, const std::string& opening = {});

    // Says that the owner has broken the recital off.
    void tellBroken();

private:
    void tell(int choice);
    void askForNumber();

    AppState& state_;
    EventLoop& loop_;
    Reply& reply_;
    Choices& choices_;
    unsigned begun_ = 0; // wraps around
};

} // namespace larkspin
