// The menu that is open, with its submenus beside each other: one that pops up, a combo's rows, or
// that of a bar of menus along the top of the screen. It takes the keys and the whole mouse until
// something has been chosen, Escape is struck, the owner presses elsewhere, or begins a line for
// larkspin or pastes. Menus are read as they open; what is chosen comes as an event of its own.
#pragma once

#include "platform/terminal/screen/layers.h"
#include "platform/terminal/windows/menu_level.h"

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace larkspin {

class MenuLayer : public Layer {
public:
    MenuLayer(EventLoop& loop, Layers& layers) : loop_(loop), layers_(layers) {}
    ~MenuLayer() override { close(); }
    MenuLayer(const MenuLayer&) = delete;
    MenuLayer& operator=(const MenuLayer&) = delete;

    // Called at once when the owner chooses.
    void onChoice(Task chosen) { chosen_ = std::move(chosen); }
    // Tells the colours in which menus are drawn.
    void colorBy(std::function<TwoColors()> colors) { colors_ = std::move(colors); }

    // Where the next one pops up: at the pointer, or at what has the keyboard.
    void popUpAt(const Cursor& place) { place_ = place; }
    void popUp(const Menu& menu);
    // Below, or above, what it belongs to, and as wide at least.
    void open(std::vector<MenuEntry> entries, const Area& owner);
    // In a row of the screen; the first one opens.
    void openBar(std::vector<Menu> bar, int row);
    void close();
    bool isOpen() const { return !levels_.empty(); }

    Rank rank() const override { return Rank::box; } // it belongs to what lies uppermost
    std::optional<Cursor> draw(Cells& cells) override;
    bool take(const Stroke& stroke) override;

private:
    void add(std::vector<MenuEntry> entries, const Area& owner);
    void drawBar(Cells& cells);
    void openFromBar(std::size_t index);
    void turnInBar(int way);
    bool leadsRight(const MenuLevel& level) const; // from there on
    void enter();
    void leaveSubmenu();
    void choose(Task action);
    void takeKey(const KeyStroke& key);
    bool isForOthers(const Stroke& stroke);
    void takeMouse(const MouseStroke& mouse);
    bool point(const MouseStroke& mouse);
    bool pointInBar(const MouseStroke& mouse);

    EventLoop& loop_;
    Layers& layers_;
    Task chosen_ = [] {};
    std::function<TwoColors()> colors_ = [] { return TwoColors(); };
    Cursor place_;
    std::vector<MenuLevel> levels_; // none when none is open
    std::vector<Menu> bar_;
    std::vector<Area> barPlaces_;
    std::size_t inBar_ = 0;
    bool isPressed_ = false; // since it has opened
};

} // namespace larkspin
