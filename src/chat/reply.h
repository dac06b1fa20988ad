// The road by which answers go out: a plain text becomes a line in the owner's style and is
// said in the room. In silent mode nothing is said there, and what matters comes as a box.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

struct AppState;
class Dialogs;
class Room;
class Settings;

// The settings that yochoose reads, by its index.
enum class Choice {
    openingFont = 1,
    openingColor = 2,
    opening = 3,
    font = 4,
    fontColor = 5,
    played = 6,
    playpath = 7,
    play = 8,
    closing = 9,
    closingFont = 10,
    closingColor = 11,
};

class Reply {
public:
    Reply(AppState& state, Settings& settings, Room& room, Dialogs& dialogs)
        : state_(state), settings_(settings), room_(room), dialogs_(dialogs) {}

    // Says the text in the room, styled. Lost in silent mode or without a room. Serves events
    // once, so that any state may have changed behind it.
    void saychat(std::string_view text);

    // In silent mode the text comes as a box instead.
    void sayOrBox(const std::string& text);

    // True in silent mode, after a box with the refusal: the command is over then.
    bool refusedInSilence(const std::string& refusal);
    bool silentguard() { return refusedInSilence("you are in silent mode"); }

    // The setting's value, or its default when it is missing or empty. Reading `played`
    // brings the menu's count of songs up to date; what isn't numeric reads 0.
    std::string yochoose(Choice choice);

private:
    std::string styled(std::string_view message);

    AppState& state_;
    Settings& settings_;
    Room& room_;
    Dialogs& dialogs_;
};

} // namespace larkspin
