// The lists beside what is said: the conversations, with what is unread, and the people, with their
// ranks. The mouse points at their rows.
#pragma once

#include "host/conversation_rows.h"
#include "host/people_rows.h"
#include "platform/terminal/room/room_styles.h"
#include "platform/terminal/screen/cells.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// Which rows of a longer list stand in an area.
class ListScroll {
public:
    void by(int rows) { first_ += rows; }
    void toShow(int row, int rows); // that it is one of so many
    int first(int rows, int count); // that stands uppermost
    int rowAt(const Area& area, int row) const { return first_ + row - area.top; }

private:
    int first_ = 0;
};

class RoomsPane {
public:
    void draw(Cells& cells, const Area& area, std::vector<ConversationRow> rows,
              const RoomStyles& styles);
    void scroll(int rows) { scroll_.by(rows); }
    bool holds(int row, int column) const { return area_.holds(row, column); }

    // The place of the conversation there, or blank.
    std::string placeAt(int row) const;

private:
    void drawRow(Cells& cells, const Area& at, const ConversationRow& row,
                 const RoomStyles& styles) const;

    Area area_;
    ListScroll scroll_;
    std::string front_; // its place, which was brought into view
    std::vector<ConversationRow> rows_;
};

class PeoplePane {
public:
    using IsIgnored = std::function<bool(std::string_view name)>;
    void draw(Cells& cells, const Area& area, const std::vector<PeopleRow>& people,
              const IsIgnored& isIgnored, const RoomStyles& styles);
    void scroll(int rows) { scroll_.by(rows); }
    bool holds(int row, int column) const { return area_.holds(row, column); }

    // Who stands there, or blank.
    std::string nameAt(int row) const;

private:
    Area area_, list_;
    ListScroll scroll_;
    std::vector<std::string> names_; // as far as they are in view
};

// What is unread in conversations that have no list to stand in: "2:•5 4:12".
std::string unreadWords(const std::vector<ConversationRow>& rows);

} // namespace larkspin
