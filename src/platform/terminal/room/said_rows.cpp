#include "platform/terminal/room/said_rows.h"

#include "chat/markup.h"
#include "host/links.h"
#include "platform/terminal/screen/columns.h"
#include "text/visible.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace larkspin {

namespace {

constexpr int afterStamp = 2, deepestIndent = 24; // columns

// A text whose bytes have a style each, by its index.
class StyledText {
public:
    void add(std::string_view text, const CellStyle& style) {
        styles_.push_back({std::string(), style, std::string()});
        text_ += text;
        styleOf_.resize(text_.size(), static_cast<std::uint16_t>(styles_.size() - 1));
    }

    // From there on it is what somebody says, and addresses in it are links.
    void linkFrom(std::size_t begin) {
        for (const Link& link : linksIn(std::string_view(text_).substr(begin)))
            for (std::size_t at = begin + link.begin; at < begin + link.begin + link.length;)
                at = linkRun(at, begin + link.begin + link.length, link.address);
    }

    void light(Rgb ground) {
        for (SaidRow::Piece& piece : styles_)
            piece.style.background = ground;
    }

    const std::string& text() const { return text_; }

    std::vector<SaidRow::Piece> pieces(std::size_t begin, std::size_t end) const {
        std::vector<SaidRow::Piece> all;
        for (std::size_t at = begin; at < end;) {
            const std::size_t next = runEnd(at, end);
            SaidRow::Piece piece = styles_[styleOf_[at]];
            piece.text = text_.substr(at, next - at);
            all.push_back(std::move(piece));
            at = next;
        }
        return all;
    }

private:
    std::size_t runEnd(std::size_t begin, std::size_t end) const {
        const auto from = styleOf_.begin();
        const auto differs = std::find_if(
            from + static_cast<std::ptrdiff_t>(begin), from + static_cast<std::ptrdiff_t>(end),
            [&](std::uint16_t style) { return style != styleOf_[begin]; });
        return static_cast<std::size_t>(differs - from);
    }

    std::size_t linkRun(std::size_t begin, std::size_t end, const std::string& address) {
        const std::size_t next = runEnd(begin, end);
        SaidRow::Piece linked = styles_[styleOf_[begin]];
        linked.style.underlined = true;
        linked.link = address;
        styles_.push_back(std::move(linked));
        std::fill(styleOf_.begin() + static_cast<std::ptrdiff_t>(begin),
                  styleOf_.begin() + static_cast<std::ptrdiff_t>(next),
                  static_cast<std::uint16_t>(styles_.size() - 1));
        return next;
    }

    std::string text_;
    std::vector<std::uint16_t> styleOf_; // of each byte
    std::vector<SaidRow::Piece> styles_; // without texts
};

CellStyle styleOf(const MarkupStyle& markup, const RoomStyles& styles) {
    CellStyle style = markup.color ? styles.colored(styles.plain, *markup.color) : styles.plain;
    style.bold = markup.bold;
    style.italic = markup.italic;
    style.underlined = markup.underlined;
    return style;
}

void addSaid(StyledText& all, const ShownLine& line, const RoomStyles& styles) {
    const CellStyle name = line.callsOwner  ? styles.call
                           : line.nameColor ? styles.colored(styles.name, *line.nameColor)
                                            : styles.name;
    all.add(visibleName(line.speaker) + ": ", name);
    const std::size_t begin = all.text().size();
    for (const MarkupPiece& piece : readMarkup(line.text))
        all.add(visibleText(piece.text, "\n"), styleOf(piece.style, styles));
    all.linkFrom(begin);
}

void addWords(StyledText& all, const ShownLine& line, const RoomStyles& styles) {
    const std::size_t begin = all.text().size();
    all.add(visibleText(line.text, " "), line.isBright() ? styles.plain : styles.dim);
    all.linkFrom(begin);
}

SaidRow markRow(const std::string& text, int columns, const RoomStyles& styles) {
    const std::string words = ' ' + text + ' ';
    const int beside = std::max(columns - columnsOf(words), 0), before = beside / 2;
    std::string across;
    for (int column = 0; column < before; ++column)
        across += "─";
    across += words;
    for (int column = before; column < beside; ++column)
        across += "─";
    CellStyle style = styles.call;
    style.bold = false;
    return {.ground = styles.plain, .pieces = {{std::move(across), style}}};
}

} // namespace

const std::string& SaidRow::linkAt(int column) const {
    static const std::string none;
    int at = indent;
    for (const Piece& piece : pieces) {
        const int end = at + columnsOf(piece.text);
        if (column >= at && column < end)
            return piece.link;
        at = end;
    }
    return none;
}

std::vector<SaidRow> saidRows(const ShownLine& line, int columns, const RoomStyles& styles) {
    columns = std::max(columns, 1);
    if (line.look == ShownLine::Look::mark)
        return {markRow(line.text, columns, styles)};
    StyledText all;
    if (!line.stamp.empty())
        all.add(line.stamp + ' ', styles.dim);
    const int indent = std::min({columnsOf(all.text()) + afterStamp, columns / 5, deepestIndent});
    if (line.look == ShownLine::Look::said)
        addSaid(all, line, styles);
    else
        addWords(all, line, styles);
    if (line.callsOwner)
        all.light(styles.lit);
    CellStyle ground = styles.plain;
    if (line.callsOwner)
        ground.background = styles.lit;
    std::vector<SaidRow> rows;
    const std::string_view text = all.text();
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const bool isFirst = begin == 0;
        for (const Span& span : wrapped(text.substr(begin, end - begin),
                                        isFirst ? columns : columns - indent, columns - indent))
            rows.push_back({.indent = rows.empty() ? 0 : indent,
                            .ground = ground,
                            .pieces = all.pieces(begin + span.begin, begin + span.end)});
        begin = end + 1;
    }
    return rows;
}

} // namespace larkspin
