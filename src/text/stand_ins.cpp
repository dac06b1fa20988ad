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
constexpr std::string_view mark = "\uF000";

// Whether the text has neither stand-ins nor marks, as nearly all texts: both begin with this byte.
bool isPlain(std::string_view text) {
    constexpr char lead = '\xEF'; // of U+F000 to U+FFFF in UTF-8
    return text.find(lead) == text.npos;
}

// One character of a stored text, with the mark in front of it if it has one.
struct Unit {
    std::string_view stored; // with the mark in front of it
    std::string_view plain;  // without
    std::optional<char> meant;
};

Unit takeUnit(std::string_view& text) {
    std::string_view plain = text;
    Character character = firstCharacter(plain);
    const bool isMarked =
        character.valid && character.code == standInBase && character.length < plain.size();
    if (isMarked) {
        plain.remove_prefix(character.length);
        character = firstCharacter(plain);
    }
    plain = plain.substr(0, character.length);
    // A marked character is meant as itself; only without a mark may it be a stand-in.
    const auto meant =
        character.valid && !isMarked ? standsFor(character.code) : std::optional<char>();
    const std::string_view stored =
        text.substr(0, isMarked ? mark.size() + plain.size() : plain.size());
    text.remove_prefix(stored.size());
    return {stored, plain, meant};
}

char32_t seenFormOf(char meant) {
    const char32_t code = static_cast<unsigned char>(meant);
    return meant == deleteControl ? pictureOfDelete
           : code <= lastControl  ? pictureBase + code
                                  : code;
}

std::string seenForm(const Unit& unit) {
    std::string seen(unit.meant ? std::string_view() : unit.plain);
    if (unit.meant)
        appendCharacter(seen, seenFormOf(*unit.meant));
    return seen;
}

// In bytes. Comparing takes time and memory by the product of both lengths. Edited texts are names
// and notes; a longer one is taken just as it was typed.
constexpr std::size_t mostCompared = 4096;

// Finds what is left of a shown text in an edited one: the longest sequence of characters that both
// have in common.
class Alignment {
public:
    Alignment(std::string_view stored, std::string_view edited) {
        while (!stored.empty()) {
            const Unit unit = takeUnit(stored);
            units_.push_back({unit.stored, seenForm(unit)});
        }
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
    struct Shown {
        std::string_view stored;
        std::string seen;
    };

    std::uint16_t& length(std::size_t unit, std::size_t at) { return lengths_[unit * width_ + at]; }

    // A front end shows the replacement character for bytes that are no text, or can't be seen.
    bool isSame(std::size_t unit, std::size_t at) const {
        const std::string& seen = units_[unit].seen;
        return typed_[at] == seen ||
               (typed_[at] == replacementCharacter && visibleName(seen) == replacementCharacter);
    }

    // A front end may leave out characters that only join others.
    static bool isUnseen(const Shown& unit) { return visibleText(unit.seen, " ").empty(); }

    std::vector<Shown> units_;
    std::vector<std::string_view> typed_;
    std::size_t width_ = 0;
    std::vector<std::uint16_t> lengths_; // of the common sequence from a unit and a typed one on
};

} // namespace

void appendStandIn(std::string& text, char byte) {
    appendCharacter(text, standInBase + static_cast<unsigned char>(byte));
}

char32_t seenCharacter(char32_t code) {
    const auto meant = standsFor(code);
    return meant ? seenFormOf(*meant) : code;
}

std::string asSeen(std::string_view text) {
    if (isPlain(text))
        return std::string(text);
    std::string seen;
    while (!text.empty())
        seen += seenForm(takeUnit(text));
    return seen;
}

std::string asStored(std::string_view typed) {
    std::string stored;
    for (const char byte : typed) {
        if (needsStandIn(byte))
            appendStandIn(stored, byte);
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

std::string nameFromDisk(std::string_view native) {
    if (isPlain(native) && std::ranges::none_of(native, needsStandIn) && !native.starts_with(' ') &&
        !native.ends_with(' '))
        return std::string(native);
    std::string name;
    for (std::size_t at = 0; at < native.size();) {
        const Character character = firstCharacter(native.substr(at));
        const bool isAtAnEnd = at == 0 || at + 1 == native.size();
        if (needsStandIn(native[at]) || (native[at] == ' ' && isAtAnEnd)) {
            appendStandIn(name, native[at]);
        } else {
            if (character.valid && (character.code == standInBase || standsFor(character.code)))
                name += mark;
            name += native.substr(at, character.length);
        }
        at += character.length;
    }
    return name;
}

std::string nameOnDisk(std::string_view stored) {
    if (isPlain(stored))
        return std::string(stored);
    std::string name;
    while (!stored.empty()) {
        const Unit unit = takeUnit(stored);
        if (unit.meant)
            name += *unit.meant;
        else
            name += unit.plain;
    }
    return name;
}

std::string withoutMarks(std::string_view text) {
    std::string name(text);
    for (auto at = name.find(mark); at != std::string::npos; at = name.find(mark, at))
        name.erase(at, mark.size());
    return name;
}

std::string afterEditing(std::string_view stored, std::string_view edited) {
    if (edited == asSeen(stored))
        return std::string(stored);
    if (stored.size() > mostCompared || edited.size() > mostCompared)
        return std::string(edited);
    return Alignment(stored, edited).result();
}

} // namespace larkspin
