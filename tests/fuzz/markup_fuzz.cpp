// Any bytes are read as markup and shown on a terminal: nothing is lost but tags, and nothing but
// the front end's own sequences reaches the terminal.
#include "chat/markup.h"
#include "fuzz/fuzz.h"
#include "platform/terminal/terminal_text.h"

#include <string>

using namespace larkspin;

static void demandHarmless(std::string_view shown) {
    for (std::size_t at = 0; at < shown.size(); ++at) {
        if (shown[at] == '\x1b') {
            const auto end = shown.find_first_not_of("0123456789;", at + 2);
            demand(end != shown.npos && shown[at + 1] == '[' && shown[end] == 'm');
            at = end;
        }
        const auto byte = static_cast<unsigned char>(shown[at]);
        demand((byte >= 0x20 && byte != 0x7F) || byte == '\n');
    }
    for (const std::string_view hidden : {"\u202E", "\u2066", "\u2028", "\u200B", "\u009B"})
        demand(shown.find(hidden) == shown.npos);
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    std::string line;
    while (input.remaining_bytes() > 0)
        line += input.PickValueInArray({"<", ">", "<b>", "</B>", "<font ", "color=#00ff00", "\"",
                                        "</html>", "face=", "\u202E", "\x1b[2J"}) +
                input.ConsumeRandomLengthString(6);

    const char* read = line.data();
    const auto demandTags = [](std::string_view skipped) {
        demand(skipped.empty() || (skipped.starts_with('<') && skipped.ends_with('>')));
    };
    for (const MarkupPiece& piece : readMarkup(line)) {
        demand(!piece.text.empty() && piece.text.data() >= read);
        demandTags({read, static_cast<std::size_t>(piece.text.data() - read)});
        read = piece.text.data() + piece.text.size();
        const auto again = readMarkup(piece.text); // what stayed holds no tag
        demand(again.size() == 1 && again[0].text == piece.text);
    }
    demandTags({read, static_cast<std::size_t>(line.data() + line.size() - read)});
    demandHarmless(shownMarkup(line));
    demandHarmless(shownName(line));
    return 0;
}
