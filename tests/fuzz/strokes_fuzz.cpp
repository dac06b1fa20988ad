// Any bytes from a terminal become the same strokes however they come in pieces, and every stroke
// has its place.
#include "fuzz/fuzz.h"
#include "platform/terminal/screen/stroke_reader.h"

using namespace larkspin;

static void demandPlace(const Stroke& stroke) {
    if (const auto* const mouse = std::get_if<MouseStroke>(&stroke))
        demand(mouse->row >= 0 && mouse->column >= 0);
    else if (const auto* const key = std::get_if<KeyStroke>(&stroke))
        demand(key->kind != KeyStroke::Kind::character || key->character >= U' ');
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    StrokeReader inPieces, atOnce;
    std::vector<Stroke> fromPieces;
    std::string bytes;
    while (input.remaining_bytes() > 0) {
        const std::string piece =
            input.PickValueInArray({"", "\x1b", "\x1b[", "\x1bO", "\x1b[<0;1;", "\x1b[200~",
                                    "\x1b[201~", "\x1b[M", "1;5A", "M", "\xE6\x97", "\xA5"}) +
            input.ConsumeRandomLengthString(3);
        bytes += piece;
        for (const Stroke& stroke : inPieces.take(piece, {}))
            fromPieces.push_back(stroke);
    }
    auto whole = atOnce.take(bytes, {});
    for (auto* const strokes : {&whole, &fromPieces})
        for (const Stroke& stroke : (strokes == &whole ? atOnce : inPieces).giveUp())
            strokes->push_back(stroke);
    demand(whole == fromPieces);
    demand(!atOnce.patience());
    for (const Stroke& stroke : whole)
        demandPlace(stroke);
    return 0;
}
