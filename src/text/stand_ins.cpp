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

// Whether the text has neither stand-ins nor marks, as nearly all texts: both begin with this byte.
bool isPlain(std::string_view text) {
    constexpr char lead = '\xEF'; // of U+F000 to U+FFFF in UTF-8
    return text.find(lead) == text.npos;
}

// One character of a stored text, with the mark in front of it if it has one.
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
    // A marked character is meant as itself, so it looks like what it is; only without a mark may
    // it be a stand-in.
    Unit unit{text.substr(0, length), {}};
    if (character.valid && !isMarked)
        appendCharacter(unit.seen, seenCharacter(character.code));
    else
        unit.seen = text.substr(length - character.length, character.length);
    text.remove_prefix(length);
    return unit;
}

// In bytes. Comparing takes time and memory by the product of both lengths. Edited texts are names
// and notes; a longer one is taken just as it was typed.
constexpr std::size_t mostCompared = 4096;

// Finds what is left of a shown text in an edited one: the longest sequence of characters that both
// have in common.
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

    // Characters that both have keep their stored bytes, typed ones come in as typed, and the rest
    // was deleted. A character that the owner couldn't see goes or stays with the one before it.
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

    // A front end shows the replacement character for bytes that are no text, or can't be seen.
    bool isSame(std::size_t unit, std::size_t at) const {
        const std::string& seen = units_[unit].seen;
        return typed_[at] == seen ||
               (typed_[at] == replacementCharacter && visibleName(seen) == replacementCharacter);
    }

    // A front end may leave out characters that only join others.
    static bool isUnseen(const Unit& unit) { return visibleText(unit.seen, " ").empty(); }

    std::vector<Unit> units_;
    std::vector<std::string_view> typed_;
    std::size_t width_ = 0;
    std::vector<std::uint16_t> lengths_; // of the common sequence from a unit and a typed one on
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
