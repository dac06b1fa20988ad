// A line of text with a cursor in it, and what keys do to it. What combines with a character stays
// with it. Counts characters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace larkspin {

class EditedText {
public:
    explicit EditedText(std::size_t mostCharacters) : mostCharacters_(mostCharacters) {}

    bool isEmpty() const { return characters_.empty(); }
    std::string text() const;
    std::string beforeCursor() const;
    const std::u32string& characters() const { return characters_; }
    std::size_t cursor() const { return cursor_; }

    void become(std::string_view text); // the cursor after it
    void become(std::string_view text, std::size_t cursor);

    // At the cursor. False when not all had room: what came last is left out.
    bool insert(std::u32string_view characters);
    // In place of so many characters before the cursor. False, and nothing done, without room.
    bool replaceBefore(std::size_t count, std::string_view text);

    void goLeft() { cursor_ = leftOf(cursor_); }
    void goRight() { cursor_ = rightOf(cursor_); }
    void goToStart() { cursor_ = 0; }
    void goToEnd() { cursor_ = characters_.size(); }
    void goWordLeft() { cursor_ = wordLeft(); }
    void goWordRight() { cursor_ = wordRight(); }

    void eraseLeft() { erase(leftOf(cursor_), cursor_); }
    void eraseRight() { erase(cursor_, rightOf(cursor_)); }

    // What these take away can be put back. Words are letters and digits, or what stands between
    // blanks.
    void cutToStart() { cut(0, cursor_); }
    void cutToEnd() { cut(cursor_, characters_.size()); }
    void cutWordLeft() { cut(wordLeft(), cursor_); }
    void cutWordRight() { cut(cursor_, wordRight()); }
    void cutToBlank();
    bool putBack() { return insert(std::u32string(cut_)); }
    void forgetCut() { cut_.clear(); }

    void swapCharacters(); // the two before the cursor, or on both sides of it

private:
    std::size_t leftOf(std::size_t at) const;
    std::size_t rightOf(std::size_t at) const;
    std::size_t wordLeft() const;
    std::size_t wordRight() const;
    void erase(std::size_t from, std::size_t to);
    void cut(std::size_t from, std::size_t to);

    std::size_t mostCharacters_;
    std::u32string characters_, cut_;
    std::size_t cursor_ = 0;
};

// Invalid bytes come out as U+FFFD.
std::u32string charactersOf(std::string_view text);
std::string textOf(std::u32string_view characters);

} // namespace larkspin
