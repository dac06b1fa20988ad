#include "chat/markup.h"

#include "text/fold.h"
#include "text/stand_ins.h"
#include "text/visible.h"

#include <algorithm>
#include <charconv>

namespace larkspin {

namespace {

// Finds where tags end, for opening brackets that are asked about from left to right. A bracket
// between quotation marks closes nothing. Quotation marks count from the opening bracket on, so a
// tag ends at the next bracket with an even number of them in between. There is one cursor for
// openings after an even number of marks in the line and one for the others. Neither ever goes
// back, which keeps the time in proportion to the line.
class TagEnds {
public:
    explicit TagEnds(std::string_view line) : line_(line) {}

    // The index one past the closing bracket; nothing if no bracket closes the tag.
    std::optional<std::size_t> endOf(std::size_t opening) {
        for (; counted_ < opening; ++counted_)
            quotedAtOpening_ ^= line_[counted_] == '"';
        Cursor& cursor = cursors_[quotedAtOpening_ ? 1 : 0];
        while (cursor.at < line_.size() && (cursor.at <= opening || line_[cursor.at] != '>' ||
                                            cursor.quoted != quotedAtOpening_)) {
            cursor.quoted ^= line_[cursor.at] == '"';
            ++cursor.at;
        }
        if (cursor.at == line_.size())
            return std::nullopt;
        return cursor.at + 1;
    }

private:
    struct Cursor {
        std::size_t at = 0;
        bool quoted = false; // an odd number of marks stands before it
    };

    std::string_view line_;
    std::size_t counted_ = 0;
    bool quotedAtOpening_ = false;
    Cursor cursors_[2];
};

bool isBlank(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}

struct Attribute {
    std::string_view name, value;
};

// Takes the next `name=value` from the front of the text. The name is empty when there is none
// left.
Attribute takeAttribute(std::string_view& text) {
    const auto take = [&text](auto&& ends) {
        const auto end = std::find_if(text.begin(), text.end(), ends);
        const std::string_view taken = text.substr(0, static_cast<std::size_t>(end - text.begin()));
        text.remove_prefix(taken.size());
        return taken;
    };
    take([](char byte) { return !isBlank(byte); });
    Attribute attribute{take([](char byte) { return byte == '=' || isBlank(byte); }), {}};
    if (!text.starts_with('='))
        return attribute;
    text.remove_prefix(1);
    if (!text.starts_with('"')) {
        attribute.value = take(isBlank);
        return attribute;
    }
    text.remove_prefix(1);
    attribute.value = take([](char byte) { return byte == '"'; });
    text.remove_prefix(text.empty() ? 0 : 1);
    return attribute;
}

// The colour in a text like "#0066BB"; nothing for any other text.
std::optional<std::uint32_t> colorOf(std::string_view text) {
    constexpr std::size_t size = 7;
    std::uint32_t rgb = 0;
    if (text.size() != size || text[0] != '#' ||
        std::from_chars(text.data() + 1, text.data() + size, rgb, 16).ptr != text.data() + size)
        return std::nullopt;
    return rgb;
}

void applyFont(MarkupStyle& style, std::string_view attributes) {
    while (!attributes.empty()) {
        const Attribute attribute = takeAttribute(attributes);
        if (equalFolded(attribute.name, "color"))
            style.color = colorOf(attribute.value);
        else if (equalFolded(attribute.name, "face"))
            style.face = attribute.value;
        else if (attribute.name.empty() && attribute.value.empty())
            return;
    }
}

// The address in a tag that opens a link; nothing for any other tag.
std::optional<std::string_view> addressIn(std::string_view tag) {
    constexpr std::string_view opening = "a href=";
    if (!equalFolded(tag.substr(0, opening.size()), opening))
        return std::nullopt;
    tag.remove_prefix(2);
    return takeAttribute(tag).value;
}

// Applies the tag that has this text between its brackets. False when the client knows no such tag.
bool applyTag(MarkupStyle& style, std::string_view tag) {
    constexpr std::string_view font = "font ";
    if (equalFolded(tag.substr(0, font.size()), font)) {
        applyFont(style, tag.substr(font.size()));
        return true;
    }
    constexpr std::string_view body = "body ";
    if (equalFolded(tag.substr(0, body.size()), body))
        return true; // the reader keeps his own background
    constexpr std::size_t longestName = 5;
    if (tag.size() > longestName)
        return false;
    const bool opens = !tag.starts_with('/');
    const std::string name = foldCase(opens ? tag : tag.substr(1));
    if (name == "html") {
        if (!opens)
            style = {};
        return true;
    }
    if (name == "b")
        style.bold = opens;
    else if (name == "u")
        style.underlined = opens;
    else if (name == "i")
        style.italic = opens;
    else if (name == "font" && !opens)
        style.color.reset(), style.face = {};
    else
        return false;
    return true;
}

// Whether a bracket before this text would open a tag. It needn't have its closing bracket, since
// that of a tag which is written later would do.
bool readsAsTag(std::string_view text) {
    constexpr std::string_view tags[] = {"b>",  "/b>",     "u>",     "/u>",    "i>",
                                         "/i>", "html>",   "/html>", "/font>", "font ",
                                         "/a>", "a href=", "body "};
    return std::ranges::any_of(tags, [text](std::string_view tag) {
        return equalFolded(text.substr(0, tag.size()), tag);
    });
}

constexpr std::string_view tagBreak = "\u200C"; // unseen

} // namespace

std::vector<MarkupPiece> readMarkup(std::string_view line) {
    std::vector<MarkupPiece> pieces;
    MarkupStyle style;
    TagEnds ends(line);
    std::size_t begun = 0;                   // of the piece that is being read
    std::optional<std::string_view> address; // of the link that is being read
    const auto endPiece = [&](std::size_t end) {
        if (end > begun)
            pieces.push_back({line.substr(begun, end - begun), style});
    };
    for (std::size_t at = line.find('<'); at != std::string_view::npos; at = line.find('<', at)) {
        const auto end = ends.endOf(at);
        MarkupStyle changed = style;
        const std::string_view tag = end ? line.substr(at + 1, *end - at - 2) : std::string_view();
        const auto opened = addressIn(tag);
        const bool endsLink = address && equalFolded(tag, "/a");
        if (!end || !(opened || endsLink || applyTag(changed, tag))) {
            ++at;
            continue;
        }
        endPiece(at);
        style = changed;
        if (endsLink && !address->empty()) {
            // The address comes after the link's text, so that nobody is led elsewhere than he
            // reads.
            pieces.push_back({" ", style});
            pieces.push_back({*address, style});
        }
        if (opened || endsLink)
            address = opened;
        at = begun = *end;
    }
    endPiece(line.size());
    return pieces;
}

std::string plainMarkup(std::string_view line) {
    std::string text;
    for (const MarkupPiece& piece : readMarkup(line))
        text += piece.text;
    return visibleText(text, " ");
}

std::string withoutTags(std::string_view text) {
    std::string plain;
    for (auto at = text.find('<'); at != std::string_view::npos; at = text.find('<')) {
        plain += text.substr(0, at + 1);
        text.remove_prefix(at + 1);
        if (readsAsTag(text))
            plain += tagBreak;
    }
    return plain.append(text);
}

std::string asSeenInMarkup(std::string_view message) {
    std::string bracket;
    appendStandIn(bracket, '<');
    constexpr std::size_t longestTag = 24; // bytes of the longest opening, in stand-ins
    std::string seen;
    for (auto at = message.find(bracket); at != message.npos; at = message.find(bracket)) {
        seen += asSeen(message.substr(0, at)) + '<';
        message.remove_prefix(at + bracket.size());
        if (readsAsTag(asSeen(message.substr(0, longestTag))))
            seen += tagBreak;
    }
    return seen + asSeen(message);
}

std::string withoutTagBreaks(std::string_view text) {
    std::string plain(text);
    const std::string broken = '<' + std::string(tagBreak);
    for (auto at = plain.find(broken); at != plain.npos; at = plain.find(broken, at + 1))
        plain.erase(at + 1, tagBreak.size());
    return plain;
}

} // namespace larkspin
