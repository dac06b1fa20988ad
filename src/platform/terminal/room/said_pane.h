// What has been said in the conversation in front, the latest at the bottom, where it stays in view
// unless the owner has scrolled up. Only the lines that are in view are looked at, as they are
// kept; none is copied.
#pragma once

#include "host/reading.h"
#include "platform/terminal/room/said_rows.h"
#include "platform/terminal/screen/cells.h"

#include <string>
#include <vector>

namespace larkspin {

class Conversations;

class SaidPane {
public:
    // Both must outlive it. The reading counts in rows.
    SaidPane(const Conversations& conversations, Reading& reading)
        : conversations_(conversations), reading_(reading) {}

    // All of the area. What is in view at the end counts as seen.
    void draw(Cells& cells, const Area& area, const RoomStyles& styles);

    const Reading::Spot& spot() const { return spot_; }
    void read(const Reading::Spot& spot) { spot_ = spot; }

    // By rows, or by areas; upwards if negative.
    void scroll(int rows);
    void scrollPage(int pages);
    void toStart() { spot_ = {.follows = false}; }
    void toEnd() { spot_ = {}; }

    // The address of the link there, or blank.
    std::string linkAt(int row, int column) const;
    // Whether how many lines there are below stands there.
    bool isCountAt(int row, int column) const { return count_.holds(row, column); }

private:
    // Where a row is: of which line, and the how many of its rows, with what stands before it.
    struct Top {
        std::size_t line = 0;
        int row = 0;
    };
    std::size_t size() const;
    std::vector<SaidRow> rowsOf(std::size_t first, std::size_t end) const;
    int rowCount(std::size_t line) const;
    Top top() const;
    Top topOfEnd() const;
    Top moved(Top top, int rows) const;
    std::vector<SaidRow> rowsFrom(const Top& top) const;
    std::vector<SaidRow> lastRows() const;
    void drawRows(Cells& cells, const std::vector<SaidRow>& rows);
    void drawCount(Cells& cells);

    const Conversations& conversations_;
    Reading& reading_;
    Reading::Spot spot_;
    RoomStyles styles_;
    Area area_{0, 0, 24, 80};
    int firstRow_ = 0;           // of the area that isn't blank
    std::vector<SaidRow> shown_; // from there on
    Area count_;
};

} // namespace larkspin
