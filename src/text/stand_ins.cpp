#include "text/stand_ins.h"

#include "text/utf8.h"
#include "text/visible.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace larkspin {

namespace {

constexpr char lastControl = 0x1F, deleteControl = 0x7F;
constexpr char32_t pictureBase = 0x2400, pictureOfDelete = 0x2421;

// No stand-in and no mark: what nearly all texts are like.
bool isPlain(std::string_view text) {
    constexpr char lead = '\xEF'; // of U+F000 to U+FFFF in UTF-8
    return text.find(lead) == text.npos;
}

// A character of a stored text, the mark in front of it included.
struct Unit {
    std::string_view stored;
    std::string seen;
};

Unit takeUnit(std::string_view& text) {
    Character character = firstCharacter(text);
    std::size_t length = character.length;
    bool isMarked = false;
    if (character.valid && character.code == standInBase && length < text.size()) {
        character = firstCharacter(text.substr(length));
        length += character.length;
        isMarked = true;
    }
    Unit unit{text.substr(0, length), {}};
    if (character.valid && !isMarked)
        appendCharacter(unit.seen, seenCharacter(character.code));
    else
        unit.seen = text.substr(length - character.length, character.length);
    text.remove_prefix(length);
    return unit;
}

// Edited texts are names and notes; a longer one is taken as it was typed.
constexpr std::size_t mostCompared = 4096;

// What of a shown text is in an edited one: the longest sequence that both have in common.
class Alignment {
public:
    Alignment(std::string_view stored, std::string_view edited) {
        while (!stored.empty())
            units_.push_back(takeUnit(stored));
        while (!edited.empty()) {
            typed_.push_back(edited.substr(0, firstCharacter(edited).length));
            edited.remove_prefix(typed_.back().size());
        }
        width_ = typed_.size() + 1;
        lengths_.resize((units_.size() + 1) * width_);
        for (std::size_t unit = units_.size(); unit-- > 0;)
            for (std::size_t at = typed_.size(); at-- > 0;)
                length(unit, at) = isSame(unit, at)
                                       ? static_cast<std::uint16_t>(length(unit + 1, at + 1) + 1)
                                       : std::max(length(unit + 1, at), length(unit, at + 1));
    }

    std::string result() {
        std::string text;
        std::size_t unit = 0, at = 0;
        bool isKept = true; // the unit before this one
        while (unit < units_.size() || at < typed_.size()) {
            if (unit < units_.size() && at < typed_.size() && isSame(unit, at)) {
                text += units_[unit++].stored;
                ++at;
                isKept = true;
            } else if (unit < units_.size() &&
                       (at == typed_.size() || length(unit + 1, at) >= length(unit, at + 1))) {
                if (isKept && isUnseen(units_[unit]))
                    text += units_[unit].stored;
                else
                    isKept = false;
                ++unit;
            } else {
                text += typed_[at++];
            }
        }
        return text;
    }

private:
    std::uint16_t& length(std::size_t unit, std::size_t at) { return lengths_[unit * width_ + at]; }

    // A front end shows what is no text, or what can't be seen, as a replacement.
    bool isSame(std::size_t unit, std::size_t at) const {
        const std::string& seen = units_[unit].seen;
        return typed_[at] == seen ||
               (typed_[at] == replacementCharacter && visibleName(seen) == replacementCharacter);
    }

    // What only joins others may be left out of what is shown.
    static bool isUnseen(const Unit& unit) { return visibleText(unit.seen, " ").empty(); }

    std::vector<Unit> units_;
    std::vector<std::string_view> typed_;
    std::size_t width_ = 0;
    std::vector<std::uint16_t> lengths_; // of what both have in common after such places
};

} // namespace

char32_t seenCharacter(char32_t code) {
    const auto meant = standsFor(code);
    if (!meant)
        return code;
    const char32_t seen = static_cast<unsigned char>(*meant);
    return *meant == deleteControl ? pictureOfDelete
           : seen <= lastControl   ? pictureBase + seen
                                   : seen;
}

std::string asSeen(std::string_view text) {
    if (isPlain(text))
        return std::string(text);
    std::string seen;
    while (!text.empty())
        seen += takeUnit(text).seen;
    return seen;
}

std::string asStored(std::string_view typed) {
    std::string stored;
    for (const char byte : typed) {
        if (needsStandIn(byte))
            appendCharacter(stored, standInBase + static_cast<unsigned char>(byte));
        else
            stored += byte;
    }
    return stored;
}

std::string asStoredPath(std::string_view typed) {
    const std::size_t drive = typed.size() >= 2 && typed[1] == ':' ? 2 : 0;
    std::string path(typed.substr(0, drive));
    for (typed.remove_prefix(drive); !typed.empty();) {
        const auto name = typed.substr(0, typed.find_first_of("\\/"));
        path += asStored(name);
        typed.remove_prefix(name.size());
        path += typed.substr(0, 1);
        typed.remove_prefix(std::min<std::size_t>(typed.size(), 1));
    }
    return path;
}

std::string afterEditing(std::string_view stored, std::string_view edited) {
    if (edited == asSeen(stored))
        return std::string(stored);
    if (stored.size() > mostCompared || edited.size() > mostCompared)
        return std::string(edited);
    return Alignment(stored, edited).result();
}

} // namespace larkspin
