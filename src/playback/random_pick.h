// The random pick: chooses a row of the whole playlist that hasn't been picked since every
// song last had its turn. Shuffle and the random commands share its memory.
#pragma once

#include "playback/chance.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace larkspin {

struct AppState;
class EventLoop;
class Scanner;
class Settings;

class RandomPick {
public:
    RandomPick(AppState& state, Settings& settings, EventLoop& loop, Scanner& NiteScan2,
               Chance chance)
        : state_(state), settings_(settings), loop_(loop), NiteScan2_(NiteScan2),
          chance_(std::move(chance)) {}

    // Leaves masterIndex on the picked row and its file name in choiceList as the only entry.
    // Events run at each try. With an empty playlist nothing is picked.
    void randompick();

    // The same among the hits of a search: leaves choiceList's current index on the pick.
    // Here whole rows are remembered, so that the two kinds of picks never meet.
    void pickFromChoices();

private:
    // Random tries before the pick looks up which rows are left: each failed one is written
    // to disk, and with a long memory most of them fail.
    static constexpr int tries = 3;

    bool offerRow(int index);
    bool offerChoice(int index);
    bool isRemembered(std::string_view foldedRow);
    bool meetsMemory(int index);
    int anyOf(int count, const std::function<bool(int)>& isLeft);

    AppState& state_;
    Settings& settings_;
    EventLoop& loop_;
    Scanner& NiteScan2_;
    Chance chance_;
    std::string title_; // of the row last looked up; kept for its room
};

} // namespace larkspin
