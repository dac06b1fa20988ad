// The recital of the choices: tells them in the room one after the other, and asks for a number.
//
// It pauses between its lines. Meanwhile the owner can break it off, start it once more, or make an
// end of the choices; a recital that has lost its choices, or its place to another recital, stops
// without a further line.
#pragma once

#include "chat/core.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

class Choices;

class ChoiceRecital {
public:
    ChoiceRecital(const Core& core, Choices& choices)
        : state_(core.state), reply_(core.reply), recitals_(core.recitals), choices_(choices) {}

    enum class End {
        asked,    // all are told, and a number is awaited
        broken,   // by the owner; the choices are still open
        lost,     // its choices, as a start takes them away
        replaced, // by another recital
    };

    // `breakCaption`: what a click that breaks it off makes of the stop window's caption.
    // `opening`: said first, unless empty. `ended`: done at the end, in this run of the program.
    using Ended = std::function<void(End end)>;
    void recite(std::string_view breakCaption, Ended ended, const std::string& opening = {});

    // Says that the owner has broken the recital off.
    void tellBroken();

private:
    struct Telling {
        std::string_view breakCaption;
        Ended ended;
        unsigned own, begun;
        int choice = 0;
        bool isBroken = false;
    };
    std::optional<double> tellNext(Telling& telling);
    End endOf(const Telling& telling);
    void tell(int choice);
    void askForNumber();

    AppState& state_;
    Reply& reply_;
    Recitals& recitals_;
    Choices& choices_;
    unsigned begun_ = 0; // wraps around
};

} // namespace larkspin
