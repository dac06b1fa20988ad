#include "platform/terminal/room/typed_line.h"

#include "platform/terminal/screen/columns.h"
#include "text/characters.h"
#include "text/utf8.h"
#include "text/visible.h"

#include <algorithm>

namespace larkspin {

namespace {

using Kind = KeyStroke::Kind;

constexpr std::size_t mostPasted = 200'000; // bytes that are looked at
constexpr int leastForText = 8;             // columns, beside a long prompt
constexpr std::string_view gone = "\uFFFD"; // in place of what can't be seen

// As it stands on the screen: an editor shows where something is that can't be seen.
std::string seen(char32_t character) {
    return isControl(character) ? std::string(gone)
                                : visibleText(textOf(std::u32string(1, character)), " ");
}

bool isCharacter(const KeyStroke& key) {
    return key.kind == Kind::character && !key.ctrl && !key.alt;
}

LineKey meaningOf(const KeyStroke& key) {
    const bool isPlain = !key.alt && !key.ctrl;
    switch (key.kind) {
    case Kind::enter:
        return LineKey::enter;
    case Kind::escape:
        return LineKey::escape;
    case Kind::tab:
        return key.shift ? LineKey::shiftTab : LineKey::tab;
    case Kind::up:
        return isPlain ? LineKey::up : LineKey::other;
    case Kind::down:
        return isPlain ? LineKey::down : LineKey::other;
    case Kind::pageUp:
        return isPlain ? LineKey::pageUp : LineKey::other;
    case Kind::pageDown:
        return isPlain ? LineKey::pageDown : LineKey::other;
    default:
        return LineKey::other;
    }
}

} // namespace

bool TypedLine::take(const Stroke& stroke) {
    if (const auto* const mouse = std::get_if<MouseStroke>(&stroke))
        return offers_.take(*mouse);
    bool isTaken = true;
    if (const auto* const key = std::get_if<KeyStroke>(&stroke))
        isTaken = takeKey(*key);
    else
        takePaste(std::get<PasteStroke>(stroke).text);
    typing.noteBegin();
    return isTaken;
}

bool TypedLine::takeKey(const KeyStroke& key) {
    const bool isAsked = typing.hides() || typing.offers.isAsking();
    const bool leaves = isAsked && key.ctrl && key.character == U'c';
    if (typing.take(leaves ? LineKey::escape : meaningOf(key)))
        return true;
    const std::string before = text_.text();
    if (!edit(key))
        return false;
    if (text_.text() != before)
        typing.narrow();
    else if (typing.offers.isOffering())
        typing.offers.close();
    return true;
}

namespace {

struct EditKey {
    char32_t character;
    void (EditedText::*does)();
};

// As shells have them.
constexpr EditKey withControl[] = {
    {U'a', &EditedText::goToStart},  {U'e', &EditedText::goToEnd},
    {U'b', &EditedText::goLeft},     {U'f', &EditedText::goRight},
    {U'd', &EditedText::eraseRight}, {U'h', &EditedText::eraseLeft},
    {U'k', &EditedText::cutToEnd},   {U'u', &EditedText::cutToStart},
    {U'w', &EditedText::cutToBlank}, {U't', &EditedText::swapCharacters},
};
constexpr EditKey withAlt[] = {
    {U'b', &EditedText::goWordLeft},
    {U'f', &EditedText::goWordRight},
    {U'd', &EditedText::cutWordRight},
};

template <std::size_t count> auto editBy(const EditKey (&keys)[count], char32_t character) {
    const auto found = std::ranges::find(keys, character, &EditKey::character);
    return found == std::end(keys) ? nullptr : found->does;
}

// What a key that is no character does to the text; null for none.
void (EditedText::*editBy(const KeyStroke& key))() {
    const bool byWords = key.ctrl || key.alt;
    switch (key.kind) {
    case Kind::character:
        return key.ctrl  ? editBy(withControl, key.character)
               : key.alt ? editBy(withAlt, key.character)
                         : nullptr;
    case Kind::left:
        return byWords ? &EditedText::goWordLeft : &EditedText::goLeft;
    case Kind::right:
        return byWords ? &EditedText::goWordRight : &EditedText::goRight;
    case Kind::home:
        return byWords ? nullptr : &EditedText::goToStart;
    case Kind::end:
        return byWords ? nullptr : &EditedText::goToEnd;
    case Kind::backspace:
        return byWords ? &EditedText::cutWordLeft : &EditedText::eraseLeft;
    case Kind::del:
        return byWords ? &EditedText::cutWordRight : &EditedText::eraseRight;
    default:
        return nullptr;
    }
}

} // namespace

bool TypedLine::edit(const KeyStroke& key) {
    if (isCharacter(key)) {
        insert({&key.character, 1});
    } else if (const auto does = editBy(key)) {
        (text_.*does)();
    } else if (key.ctrl && key.character == U'c') {
        return giveUp();
    } else if (key.ctrl && key.character == U'y') {
        if (!text_.putBack())
            typing.refuse();
    } else {
        return false;
    }
    return true;
}

// As shells give a line up; Ctrl-Y brings it back.
bool TypedLine::giveUp() {
    if (text_.isEmpty())
        return false;
    text_.goToEnd();
    text_.cutToStart();
    typing.empty();
    return true;
}

void TypedLine::insert(std::u32string_view characters) {
    if (!text_.insert(characters))
        typing.refuse();
}

// Nothing of several lines is said before the owner has seen them: the line stands as it was until
// he has answered.
void TypedLine::takePaste(std::string_view pasted) {
    typing.offers.close();
    std::u32string characters = charactersOf(pasted.substr(0, fittingLength(pasted, mostPasted)));
    while (!characters.empty() && endsLine(characters.back()))
        characters.pop_back();
    if (std::ranges::any_of(characters, endsLine)) {
        std::u32string whole = text_.characters();
        whole.insert(text_.cursor(), characters);
        if (typing.asksAbout(textOf(whole)))
            return;
    }
    std::ranges::replace_if(characters, endsLine, U' ');
    insert(characters);
}

// A line that is longer than the row shows the part in which the cursor is. It moves by half a row
// at a time, so that it doesn't run under the eye.
Cursor TypedLine::draw(Cells& cells, const Area& row, std::string_view prompt,
                       const CellStyle& style) {
    const int mostForPrompt = std::max(row.columns - leastForText, 0);
    int column = cells.put(row.top, row.left, row.right(), cutTo(prompt, mostForPrompt), style);
    if (typing.hides())
        return {row.top, column};
    const std::u32string& typed = text_.characters();
    const auto widthOf = [&](std::size_t from, std::size_t to) {
        int width = 0;
        for (std::size_t at = from; at < to; ++at)
            width += columnsOf(seen(typed[at]));
        return width;
    };
    const int room = std::max(row.right() - column - 1, 1); // the cursor may stand after the end
    shownFrom_ = std::min(shownFrom_, text_.cursor());
    if (widthOf(0, typed.size()) <= room)
        shownFrom_ = 0;
    else if (shownFrom_ == text_.cursor() || widthOf(shownFrom_, text_.cursor()) > room)
        for (shownFrom_ = text_.cursor();
             shownFrom_ > 0 && widthOf(shownFrom_ - 1, text_.cursor()) <= room / 2;)
            --shownFrom_;
    std::string shown;
    for (const char32_t character : typed.substr(shownFrom_))
        shown += seen(character);
    cells.put(row.top, column, row.right(), shown, style);
    return {row.top, column + widthOf(shownFrom_, text_.cursor())};
}

} // namespace larkspin
