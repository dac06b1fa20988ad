// One of the menus that are open beside each other: where it stands, which of its entries is
// marked, and how it is drawn.
#pragma once

#include "platform/terminal/windows/cell_looks.h"
#include "shell/menu.h"

#include <vector>

namespace larkspin {

class MenuLevel {
public:
    // It stands below its owner, or above it, and is as wide at least; or beside it.
    enum class Stands { below, beside };
    MenuLevel(std::vector<MenuEntry> entries, const Area& owner, Stands stands)
        : entries_(std::move(entries)), owner_(owner), stands_(stands) {}

    void standBeside(const Area& owner) { owner_ = owner; }
    void draw(Cells& cells, const TwoColors& colors, bool isLast);

    // On the screen, since it was drawn last.
    const Area& area() const { return area_; }
    Area inside() const { return area_.inset(frame, frame); }
    Area lineOfMarked() const;
    int entryAt(int row) const; // -1 for none that can be chosen

    int marked() const { return marked_; } // -1 for none
    const MenuEntry* markedEntry() const;  // null for none
    void mark(int entry) { marked_ = entry; }
    void markChecked();
    void markFirst(int from, int way); // that can be chosen, from that entry on
    void markEnd() { markFirst(count() - 1, -1); }
    void move(int way);
    bool markByLetter(char32_t letter); // the next that begins with it; whether there is one

private:
    static constexpr int frame = 1; // on each side

    int count() const { return static_cast<int>(entries_.size()); }
    const MenuEntry& entry(int index) const { return entries_[static_cast<std::size_t>(index)]; }
    void place(const Area& screen);
    void standBelow(const Area& screen);
    void scroll();
    void drawEntry(Cells& cells, int index, const TwoColors& colors) const;

    std::vector<MenuEntry> entries_;
    Area owner_;
    Stands stands_;
    Area area_;
    int marked_ = -1;
    int first_ = 0; // that stands uppermost
};

} // namespace larkspin
