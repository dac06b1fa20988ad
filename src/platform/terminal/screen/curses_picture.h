// Pictures as bytes for the terminal, by the curses library, which finds out what has changed since
// the last one and knows what the terminal understands. It writes to a file in memory, since it
// knows no writing that doesn't block.
#pragma once

#include "platform/terminal/screen/cells.h"
#include "platform/terminal/screen/layers.h"

#include <memory>
#include <optional>
#include <string>

namespace larkspin {

class CursesPicture {
public:
    // For the terminal whose name the environment tells. Nothing when it can't move its cursor.
    static std::unique_ptr<CursesPicture> open();
    ~CursesPicture();
    CursesPicture(const CursesPicture&) = delete;
    CursesPicture& operator=(const CursesPicture&) = delete;

    // What brings the terminal from the last picture to this one; from nothing, when it isn't known
    // what it shows. The first one opens a screen of its own where the terminal has a second one.
    std::string draw(const Cells& cells, const std::optional<Cursor>& cursor, bool anew);

    // What brings back what it showed before. Another picture opens it again.
    std::string end();
    // The same for a crash, after which nothing is drawn any more.
    std::string abruptEnd() const;

    std::string title(const std::string& title) const; // nothing where it has none
    bool hasMouse() const;

private:
    struct Parts;
    explicit CursesPicture(std::unique_ptr<Parts> parts);
    std::string takeBytes();
    void drawRow(const Cells& cells, int row);

    std::unique_ptr<Parts> parts_;
};

} // namespace larkspin
