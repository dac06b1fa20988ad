// What is seen of the room on all of the screen: the conversations, what is said in the one in
// front, who is there, the song in play, and a line to say something in. It shows what has changed
// once per turn.
#pragma once

#include "host/half_typed.h"
#include "host/new_lines.h"
#include "host/reading.h"
#include "host/shown_room.h"
#include "platform/terminal/room/list_panes.h"
#include "platform/terminal/room/room_layout.h"
#include "platform/terminal/room/room_styles.h"
#include "platform/terminal/room/said_pane.h"
#include "platform/terminal/room/song_pane.h"
#include "platform/terminal/room/steps_pane.h"
#include "platform/terminal/room/typed_line.h"
#include "platform/terminal/screen/layers.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

class RoomView {
public:
    // All must outlive it.
    RoomView(const EventLoop& loop, const ShownRoom& room, const Conversations& conversations,
             LineHistory& history);

    // These must live on.
    void show(SongInPlay& song, SongPane::Works works);
    void show(FirstSteps& steps, StepsPane::TakeLine run, StepsPane::TakeLine click);

    void lookAs(RoomColors colors) { styles_ = stylesIn(colors); }
    void stamp(bool stamps) { reading_.stamp(stamps); }
    void colorNames(bool colors) { reading_.colorNames(colors); }

    // Something that is known of the room has changed.
    void roomChanged() { arePeopleKnown_ = false; }

    // In place of the owner's name; blank for that.
    void setPrompt(const std::string& prompt) { prompt_ = prompt; }

    // What is new, once before the thread sleeps. Whether there is anything.
    bool showNew();

    Cursor draw(Cells& cells);
    void drawOffers(Cells& cells); // what the line can become, above all else of it

    const RoomLayout& layout() const { return layout_; }
    Area middle() const; // between the title, and the song and the line

    // The colours in which it is seen, as windows have them.
    Color front() const { return asColor(styles_.front); }
    Color ground() const { return asColor(styles_.ground); }

    // Whether windows stand above it, into which a key leads.
    std::function<bool()> hasWindows = [] { return false; };

    std::string title() const; // of the conversation in front
    const std::vector<PeopleRow>& people();

private:
    bool takeLines();
    void drawTitle(Cells& cells, const std::vector<ConversationRow>& rooms);
    void drawBorders(Cells& cells);
    Cursor drawLine(Cells& cells);
    std::string prompt() const;

    const ShownRoom& room_;
    const Conversations& conversations_;
    NewLines newLines_;
    Reading reading_;

public:
    SaidPane said;
    RoomsPane roomsPane;
    PeoplePane peoplePane;
    std::optional<SongPane> bar{};
    std::optional<StepsPane> steps{};
    TypedLine line;
    HalfTyped halfTyped;

private:
    SongInPlay* song_ = nullptr;
    SongView shownSong_;
    RoomStyles styles_ = stylesIn(RoomColors::larkspin);
    RoomLayout layout_;
    std::vector<PeopleRow> people_;
    bool arePeopleKnown_ = false;
    std::uint64_t revision_ = 0; // of the conversations, as they are shown
    std::string prompt_;
};

} // namespace larkspin
