#include "platform/terminal/windows/menu_layer.h"

#include "platform/terminal/screen/columns.h"
#include "text/characters.h"

namespace larkspin {

namespace {

using KeyKind = KeyStroke::Kind;

constexpr int pageOfEntries = 10;

} // namespace

bool MenuLayer::leadsRight(const MenuLevel& level) const {
    const MenuEntry* const marked = level.markedEntry();
    return marked ? marked->isSubmenu : bar_.empty();
}

void MenuLayer::popUp(const Menu& menu) {
    close();
    add(menu.entries(), {place_.row - 1, place_.column, 1, 1});
}

void MenuLayer::open(std::vector<MenuEntry> entries, const Area& owner) {
    close();
    add(std::move(entries), owner);
    if (isOpen())
        levels_[0].markChecked();
}

void MenuLayer::add(std::vector<MenuEntry> entries, const Area& owner) {
    if (entries.empty())
        return;
    isPressed_ = false;
    levels_.emplace_back(std::move(entries), owner, MenuLevel::Stands::below);
    layers_.add(*this);
}

void MenuLayer::openBar(std::vector<Menu> bar, int row) {
    close();
    if (bar.empty())
        return;
    bar_ = std::move(bar);
    int column = 0;
    for (const Menu& menu : bar_) {
        const int columns = columnsOf(seenText(menu.name)) + 2;
        barPlaces_.push_back({row, column, 1, columns});
        column += columns;
    }
    isPressed_ = false;
    layers_.add(*this);
    openFromBar(0);
}

// None of its entries is marked yet, so that the arrows lead along the bar until one leads down.
void MenuLayer::openFromBar(std::size_t index) {
    inBar_ = index;
    levels_.clear();
    levels_.emplace_back(bar_[index].entries(), barPlaces_[index], MenuLevel::Stands::below);
}

void MenuLayer::turnInBar(int way) {
    const std::size_t count = bar_.size();
    if (count > 0)
        openFromBar((inBar_ + (way > 0 ? 1 : count - 1)) % count);
}

void MenuLayer::close() {
    levels_.clear();
    bar_.clear();
    barPlaces_.clear();
    layers_.remove(*this);
}

std::optional<Cursor> MenuLayer::draw(Cells& cells) {
    drawBar(cells);
    for (std::size_t index = 0; index < levels_.size(); ++index) {
        if (index > 0)
            levels_[index].standBeside(levels_[index - 1].lineOfMarked());
        levels_[index].draw(cells, colors_(), index + 1 == levels_.size());
    }
    const Area line = levels_.back().lineOfMarked();
    return Cursor{line.top, line.left + 1};
}

void MenuLayer::drawBar(Cells& cells) {
    if (bar_.empty())
        return;
    CellStyle style = plainIn(colors_());
    cells.fill({barPlaces_[0].top, 0, 1, cells.columns()}, style);
    for (std::size_t index = 0; index < bar_.size(); ++index) {
        const Area& at = barPlaces_[index];
        style.reversed = index == inBar_;
        cells.put(at.top, at.left, at.right(), ' ' + seenText(bar_[index].name) + ' ', style);
    }
}

// Lines for larkspin begin with a sign, such as a slash, which hardly an entry does; among them are
// words that choose from this menu. What steers the screen goes on doing so.
bool MenuLayer::isForOthers(const Stroke& stroke) {
    const auto* const key = std::get_if<KeyStroke>(&stroke);
    const char32_t character = key ? key->character : 0;
    if (key && key->ctrl)
        return character == U'l' || character == U'z';
    const bool beginsLine = character > U' ' && character < 0x80 && !key->alt &&
                            !isLetter(static_cast<char>(character)) &&
                            !isDigit(static_cast<char>(character)) &&
                            !levels_.back().markByLetter(character);
    if (beginsLine || std::holds_alternative<PasteStroke>(stroke))
        close();
    return !isOpen();
}

bool MenuLayer::take(const Stroke& stroke) {
    layers_.changed();
    if (isForOthers(stroke))
        return false;
    if (const auto* const key = std::get_if<KeyStroke>(&stroke))
        takeKey(*key);
    else if (const auto* const mouse = std::get_if<MouseStroke>(&stroke))
        takeMouse(*mouse);
    return true;
}

// With none marked yet, as in a menu that has just opened, it is the first that is to be.
void MenuLayer::enter() {
    MenuLevel& level = levels_.back();
    if (!level.markedEntry())
        return level.markFirst(0, 1);
    const MenuEntry entry = *level.markedEntry();
    if (!entry.isSubmenu)
        return choose(entry.action);
    if (entry.children.empty())
        return;
    levels_.emplace_back(entry.children, level.lineOfMarked(), MenuLevel::Stands::beside);
    levels_.back().markFirst(0, 1);
}

void MenuLayer::leaveSubmenu() {
    levels_.pop_back();
    if (levels_.empty())
        close();
}

void MenuLayer::choose(Task action) {
    close();
    chosen_();
    if (action)
        loop_.post(std::move(action));
}

void MenuLayer::takeKey(const KeyStroke& key) {
    MenuLevel& level = levels_.back();
    switch (key.kind) {
    case KeyKind::up:
        return level.move(-1);
    case KeyKind::down:
    case KeyKind::tab:
        return level.move(key.shift ? -1 : 1);
    case KeyKind::pageUp:
        return level.move(-pageOfEntries);
    case KeyKind::pageDown:
        return level.move(pageOfEntries);
    case KeyKind::home:
        return level.markFirst(0, 1);
    case KeyKind::end:
        return level.markEnd();
    case KeyKind::right:
        return leadsRight(level) ? enter() : turnInBar(1);
    case KeyKind::left:
        return levels_.size() > 1 ? leaveSubmenu() : turnInBar(-1);
    case KeyKind::enter:
        return enter();
    case KeyKind::escape:
        return leaveSubmenu();
    case KeyKind::function: // the keys that open menus close them
        return close();
    case KeyKind::character:
        if (key.character == U' ')
            return enter();
        if (key.ctrl && key.character == U'c')
            return close();
        if (!key.alt && !key.ctrl)
            level.markByLetter(key.character);
        return;
    default:
        return;
    }
}

// The pointer marks what it is over. A press on an entry with more behind it opens that; any other
// is chosen as the button comes up.
void MenuLayer::takeMouse(const MouseStroke& mouse) {
    using Kind = MouseStroke::Kind;
    if (mouse.kind == Kind::wheelUp || mouse.kind == Kind::wheelDown)
        return levels_.back().move(mouse.kind == Kind::wheelUp ? -1 : 1);
    isPressed_ = isPressed_ || mouse.kind == Kind::press;
    if (point(mouse)) {
        const MenuEntry* const entry = levels_.back().markedEntry();
        const Kind enters = entry && entry->isSubmenu ? Kind::press : Kind::release;
        if (entry && isPressed_ && mouse.kind == enters)
            enter();
    } else if (!pointInBar(mouse) && mouse.kind == Kind::press) {
        close();
    }
}

// Whether the mouse is over one of the menus. The last of them is that one from then on, unless the
// one beside it belongs to the entry that the mouse is over.
bool MenuLayer::point(const MouseStroke& mouse) {
    for (std::size_t index = levels_.size(); index-- > 0;) {
        MenuLevel& level = levels_[index];
        if (!level.area().holds(mouse.row, mouse.column))
            continue;
        const int entry =
            level.inside().holds(mouse.row, mouse.column) ? level.entryAt(mouse.row) : -1;
        const bool isLast = index + 1 == levels_.size();
        if (!isLast && entry == level.marked() && mouse.kind != MouseStroke::Kind::press)
            return false;
        levels_.erase(levels_.begin() + static_cast<std::ptrdiff_t>(index) + 1, levels_.end());
        levels_[index].mark(entry);
        return true;
    }
    return false;
}

bool MenuLayer::pointInBar(const MouseStroke& mouse) {
    for (std::size_t index = 0; index < barPlaces_.size(); ++index) {
        if (!barPlaces_[index].holds(mouse.row, mouse.column))
            continue;
        if (index != inBar_)
            openFromBar(index);
        return true;
    }
    return false;
}

} // namespace larkspin
