#include "platform/terminal/room/typed_line.h"

#include "platform/terminal/screen/columns.h"
#include "text/characters.h"
#include "text/utf8.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

using Kind = KeyStroke::Kind;

constexpr std::size_t mostPasted = 200'000; // bytes that are looked at
constexpr int leastForText = 8;             // columns, beside a long prompt
constexpr std::string_view gone = "\uFFFD"; // in place of what can't be seen

bool isLineBreak(char32_t character) {
    return character == U'\n' || character == U'\r' || character == 0x2028 || character == 0x2029;
}

// As it stands on the screen: an editor shows where something is that can't be seen.
char32_t seen(char32_t character) {
    return isControl(character) ? charactersOf(gone)[0] : character;
}

bool isCharacter(const KeyStroke& key) {
    return key.kind == Kind::character && !key.ctrl && !key.alt;
}

} // namespace

void TypedLine::noteBegin() {
    const bool begins = !text_.isEmpty();
    if (!std::exchange(isBegun_, begins) && begins)
        onBegin_();
}

void TypedLine::empty() {
    back_ = 0;
    offers_.close();
    text_.become({});
    noteBegin();
}

Draft TypedLine::draft() const {
    if (hides())
        return {};
    return {.text = text_.text(), .cursor = text_.cursor()};
}

// Empty in between, so that the line counts as begun anew.
void TypedLine::put(const Draft& draft) {
    if (hides())
        return;
    empty();
    text_.become(draft.text, draft.cursor);
    noteBegin();
}

void TypedLine::takeSecret(Secret secret) {
    // The text typed while the line was held may be the secret already.
    if (!isHeld_)
        dropSecret();
    offers_.close();
    secret_ = std::move(secret);
    isHeld_ = false;
    if (std::exchange(isSecretComplete_, false))
        endSecret(text_.text());
}

void TypedLine::dropSecret() {
    const bool wasHidden = hides();
    secret_ = nullptr;
    isHeld_ = isSecretComplete_ = false;
    text_.become({});
    if (wasHidden)
        text_.forgetCut();
    back_ = 0;
    noteBegin();
}

void TypedLine::goOn() {
    if (isHeld_)
        dropSecret();
}

void TypedLine::endSecret(std::string line) {
    const Secret secret = secret_;
    dropSecret();
    secret(std::move(line));
}

bool TypedLine::take(const Stroke& stroke) {
    if (const auto* const paste = std::get_if<PasteStroke>(&stroke)) {
        takePaste(paste->text);
        return true;
    }
    if (const auto* const key = std::get_if<KeyStroke>(&stroke)) {
        const bool isTaken = takeKey(*key);
        noteBegin();
        return isTaken;
    }
    return offers_.take(stroke);
}

bool TypedLine::takeKey(const KeyStroke& key) {
    if (hides() && takeSecretKey(key))
        return true;
    if (offers_.take(key))
        return true;
    const std::string before = text_.text();
    if (!edit(key))
        return false;
    if (text_.text() != before)
        narrow();
    else if (offers_.isOffering() && key.kind != Kind::tab)
        offers_.close();
    return true;
}

// Whether the key has been dealt with.
bool TypedLine::takeSecretKey(const KeyStroke& key) {
    const bool isInterrupted = key.ctrl && key.character == U'c';
    const bool isGivenUp = key.kind == Kind::escape || isInterrupted;
    if (isSecretComplete_ && !isGivenUp)
        return true;
    if (secret_ && (key.kind == Kind::enter || isGivenUp))
        endSecret(isGivenUp ? "" : text_.text());
    else if (key.kind == Kind::enter)
        isSecretComplete_ = true; // `takeSecret` hands it on
    else
        return isGivenUp || key.kind == Kind::up || key.kind == Kind::down || key.kind == Kind::tab;
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
            refuses_();
    } else if (key.kind == Kind::enter) {
        endLine();
    } else if (key.kind == Kind::tab && !key.shift && !text_.isEmpty()) {
        if (!hides())
            complete();
    } else if ((key.kind == Kind::up || key.kind == Kind::down) && !key.alt && !key.ctrl) {
        return recall(key.kind == Kind::up ? 1 : -1);
    } else {
        return false;
    }
    return true;
}

// As shells give a line up; Ctrl-Y brings it back.
bool TypedLine::giveUp() {
    if (text_.isEmpty() && !offers_.isAsking())
        return false;
    text_.goToEnd();
    text_.cutToStart();
    empty();
    return true;
}

void TypedLine::insert(std::u32string_view characters) {
    if (!text_.insert(characters))
        refuses_();
}

// Nothing of several lines is said before the owner has seen them.
void TypedLine::takePaste(std::string_view pasted) {
    offers_.close();
    const std::string_view looked = pasted.substr(0, fittingLength(pasted, mostPasted));
    std::u32string characters = charactersOf(looked);
    while (!characters.empty() && isLineBreak(characters.back()))
        characters.pop_back();
    if (!hides() && std::ranges::any_of(characters, isLineBreak)) {
        const std::u32string& typed = text_.characters();
        characters.insert(0, typed.substr(0, text_.cursor()));
        characters += typed.substr(text_.cursor());
        PastedLines lines = pastedLines(textOf(characters), LineHistory::mostCharacters);
        if (lines.lines.size() > 1)
            return askAbout(std::move(lines));
    }
    characters = charactersOf(looked);
    while (!characters.empty() && isLineBreak(characters.back()))
        characters.pop_back();
    std::ranges::replace_if(characters, isLineBreak, U' ');
    insert(characters);
    noteBegin();
}

// The line stands as it was until he has answered. What follows a line that asks for a password may
// be that password, which isn't shown.
void TypedLine::askAbout(PastedLines pasted) {
    const auto asks = std::ranges::find_if(pasted.lines, holdsAfter_);
    if (asks != pasted.lines.end())
        pasted.lines.erase(asks + 1, pasted.lines.end());
    if (text_.isEmpty())
        onBegin_();
    offers_.ask(std::move(pasted));
}

void TypedLine::say(std::vector<std::string> lines) {
    empty();
    for (std::string& line : lines)
        handOn(std::move(line));
}

void TypedLine::endLine() {
    std::string line = text_.text();
    if (line.empty())
        return;
    empty();
    handOn(std::move(line));
}

void TypedLine::handOn(std::string line) {
    const std::string shown = masked_(line);
    history_.add(shown);
    if (shown != line)
        text_.forgetCut();
    // The owner may type the secret right after this line, before anybody has asked for it.
    isHeld_ = holdsAfter_(line);
    onLine_(std::move(line));
}

bool TypedLine::recall(int way) {
    const auto& lines = history_.lines();
    const int wanted = back_ + way;
    if (wanted < 0 || wanted > static_cast<int>(lines.size()))
        return true;
    // The line that was begun comes back when the owner returns from the history.
    if (back_ == 0)
        begunText_ = text_.text();
    back_ = wanted;
    offers_.close();
    text_.become(back_ == 0 ? begunText_ : *(lines.end() - back_));
    return true;
}

Completion TypedLine::completion() const {
    return complete_(text_.beforeCursor());
}

// What is still open after what is certain has been added stands above the line.
void TypedLine::complete() {
    Completion found = completion();
    if (found.text.empty() || !replace(found.replaced, found.text)) {
        refuses_();
        return offers_.close();
    }
    if (!found.addsNothing && found.choices.size() > 1)
        found = completion();
    if (found.choices.size() < 2)
        return offers_.close();
    replaced_ = found.replaced;
    offers_.offer(found);
}

// The choices follow what is typed, until it is one of them.
void TypedLine::narrow() {
    if (!offers_.isOffering())
        return;
    const Completion found = text_.cursor() > 0 ? completion() : Completion();
    const bool isThere = found.choices.size() == 1 && text_.beforeCursor().ends_with(found.text);
    if (found.choices.empty() || isThere)
        return offers_.close();
    replaced_ = found.replaced;
    offers_.offer(found);
}

void TypedLine::take(const Completion::Choice& choice) {
    if (!replace(replaced_, choice.text))
        refuses_();
    noteBegin();
}

bool TypedLine::replace(std::size_t characters, const std::string& text) {
    return text_.replaceBefore(characters, text);
}

// A line that is longer than the row shows the part in which the cursor is. It moves by half a row
// at a time, so that it doesn't run under the eye.
Cursor TypedLine::draw(Cells& cells, const Area& row, std::string_view prompt,
                       const CellStyle& style) {
    const int mostForPrompt = std::max(row.columns - leastForText, 0);
    int column = cells.put(row.top, row.left, row.right(), cutTo(prompt, mostForPrompt), style);
    if (hides())
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
    std::u32string shown(typed.substr(shownFrom_));
    std::ranges::transform(shown, shown.begin(), seen);
    const int start = column;
    cells.put(row.top, column, row.right(), textOf(shown), style);
    return {row.top, start + widthOf(shownFrom_, text_.cursor())};
}

} // namespace larkspin
