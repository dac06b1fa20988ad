// The random pick: chooses a row of the whole playlist that hasn't been picked since every
// song last had its turn. Shuffle and the random commands share its memory.
#pragma once

#include "chat/core.h"
#include "playback/chance.h"
#include "shell/event_loop.h"

#include <functional>
#include <vector>

namespace larkspin {

class Choices;

class RandomPick {
public:
    RandomPick(const Core& core, Choices& choices, const Chance& chance)
        : state_(core.state), loop_(core.loop), choices_(choices), chance_(chance) {}

    // Leaves masterIndex on the picked row and its file name in choiceList as the only entry.
    // Events run before each try; `atEachTry` does once the row is known that it tries. False when
    // there is no row to pick, or when the pick isn't wanted any longer after these events.
    using StillWanted = std::function<bool()>;
    bool randompick(const StillWanted& stillWanted, const Task& atEachTry = {});

    // The same among the hits of a search: leaves choiceList's current index on the pick.
    // Here whole rows are remembered, so that the two kinds of picks never meet.
    bool pickFromChoices(const StillWanted& stillWanted);

private:
    // Random tries before the pick looks up which rows are left: with a long memory most of them
    // fail.
    static constexpr int tries = 3;

    bool offerRow(int index, const Task& atEachTry);
    bool offerChoice(int index);
    std::vector<int> rowsLeft() const;
    std::vector<int> choicesLeft() const;
    bool meetsMemory(int index);
    int anyOf(const std::vector<int>& left, int count);

    AppState& state_;
    EventLoop& loop_;
    Choices& choices_;
    Chance chance_;
};

} // namespace larkspin
