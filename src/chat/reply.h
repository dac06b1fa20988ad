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
enum class Choice;

// Whether a line is one that the program has said. What the owner types opens otherwise.
bool isReply(std::string_view line);

class Reply {
public:
    Reply(AppState& state, Settings& settings, Room& room, Dialogs& dialogs)
        : state_(state), settings_(settings), room_(room), dialogs_(dialogs) {}

    // Says the text in the room, styled. Lost in silent mode or without a room. Serves events
    // once, so that any state may have changed after it.
    void saychat(std::string_view text);

    // In silent mode the text comes as a box instead. A box waits, so what it tells must have been
    // done.
    void sayOrBox(const std::string& text) { sayOrBox(text, text); }
    void sayOrBox(const std::string& said, const std::string& boxed);

    // Shows a plain text to the owner alone, in silent mode too. Where the client can't, it is said
    // in the room: as a reply, so that it is never taken for an order.
    void tellOwner(const std::string& text);

    // Says the text also in silent mode. All else that comes in there stays silent.
    void sayAlways(std::string_view text);

    // True in silent mode, after a box with the refusal: the command is over then.
    bool refusedInSilence(const std::string& refusal);
    bool silentguard() { return refusedInSilence("you are in silent mode"); }

private:
    std::string styled(std::string_view message);
    std::string style(Choice choice);

    AppState& state_;
    Settings& settings_;
    Room& room_;
    Dialogs& dialogs_;
};

} // namespace larkspin
