#include "platform/terminal/screen/edited_text.h"

#include "platform/terminal/screen/columns.h"
#include "text/characters.h"
#include "text/utf8.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isBlank(char32_t character) {
    return character == U' ';
}

// Those of other scripts count as letters.
bool isOfWord(char32_t character) {
    return character >= 0x80 || isLetter(static_cast<char>(character)) ||
           isDigit(static_cast<char>(character));
}

} // namespace

std::u32string charactersOf(std::string_view text) {
    std::u32string characters;
    while (!text.empty()) {
        const Character next = firstCharacter(text);
        characters += next.valid ? next.code : replacement;
        text.remove_prefix(next.length);
    }
    return characters;
}

std::string textOf(std::u32string_view characters) {
    std::string text;
    for (const char32_t character : characters)
        appendCharacter(text, character);
    return text;
}

std::string EditedText::text() const {
    return textOf(characters_);
}

std::string EditedText::beforeCursor() const {
    return textOf(std::u32string_view(characters_).substr(0, cursor_));
}

void EditedText::become(std::string_view text) {
    become(text, std::u32string::npos);
}

void EditedText::become(std::string_view text, std::size_t cursor) {
    characters_ = charactersOf(text).substr(0, mostCharacters_);
    cursor_ = std::min(cursor, characters_.size());
}

bool EditedText::insert(std::u32string_view characters) {
    const std::size_t room = mostCharacters_ - characters_.size();
    const std::u32string_view fitting = characters.substr(0, room);
    characters_.insert(cursor_, fitting);
    cursor_ += fitting.size();
    return fitting.size() == characters.size();
}

bool EditedText::replaceBefore(std::size_t count, std::string_view text) {
    const std::u32string characters = charactersOf(text);
    const std::size_t from = cursor_ - std::min(count, cursor_);
    if (characters_.size() - (cursor_ - from) + characters.size() > mostCharacters_)
        return false;
    erase(from, cursor_);
    return insert(characters);
}

std::size_t EditedText::leftOf(std::size_t at) const {
    while (at > 0 && columnsOf(characters_[--at]) == 0) {
    }
    return at;
}

std::size_t EditedText::rightOf(std::size_t at) const {
    if (at < characters_.size())
        ++at;
    while (at < characters_.size() && columnsOf(characters_[at]) == 0)
        ++at;
    return at;
}

std::size_t EditedText::wordLeft() const {
    std::size_t at = cursor_;
    while (at > 0 && !isOfWord(characters_[at - 1]))
        --at;
    while (at > 0 && isOfWord(characters_[at - 1]))
        --at;
    return at;
}

std::size_t EditedText::wordRight() const {
    std::size_t at = cursor_;
    while (at < characters_.size() && !isOfWord(characters_[at]))
        ++at;
    while (at < characters_.size() && isOfWord(characters_[at]))
        ++at;
    return at;
}

void EditedText::cutToBlank() {
    std::size_t at = cursor_;
    while (at > 0 && isBlank(characters_[at - 1]))
        --at;
    while (at > 0 && !isBlank(characters_[at - 1]))
        --at;
    cut(at, cursor_);
}

void EditedText::swapCharacters() {
    if (cursor_ == 0 || characters_.size() < 2)
        return;
    if (cursor_ == characters_.size())
        --cursor_;
    std::swap(characters_[cursor_ - 1], characters_[cursor_]);
    ++cursor_;
}

void EditedText::erase(std::size_t from, std::size_t to) {
    characters_.erase(from, to - from);
    cursor_ = from;
}

void EditedText::cut(std::size_t from, std::size_t to) {
    if (from == to)
        return;
    cut_ = characters_.substr(from, to - from);
    erase(from, to);
}

} // namespace larkspin
