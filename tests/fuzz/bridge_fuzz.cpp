// Any bytes between larkspin and its bridge become the same frames however they come in pieces, and
// what is read out of a frame to its end is what was written into it.
#include "fuzz/fuzz.h"
#include "platform/bridge/bridge_wire.h"

using namespace larkspin;
using namespace larkspin::bridge;

static std::string framesIn(FrameReader& reader) {
    std::string bytes;
    while (const auto frame = reader.next())
        bytes += encoded(*frame);
    return bytes;
}

template <typename Read> static void demandSame(const std::string& body, Read read) {
    Reader reader(body);
    const auto value = read(reader);
    demand(!reader.isGood() || Writer().add(value).take() == body);
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    FrameReader inPieces, atOnce;
    std::string bytes, frames;
    while (input.remaining_bytes() > 0) {
        const auto kind = static_cast<Kind>(input.ConsumeIntegral<std::uint8_t>());
        const auto number = input.ConsumeIntegral<std::uint32_t>();
        const std::string body = input.ConsumeRandomLengthString(80);
        std::string piece = input.ConsumeBool() ? encoded({kind, number, body}) : body;
        bytes += piece;
        inPieces.add(piece);
        frames += framesIn(inPieces);
        demandSame(body, [](Reader& reader) { return reader.number(); });
        demandSame(body, [](Reader& reader) { return reader.text(); });
        demandSame(body, [](Reader& reader) { return reader.texts(); });
        demandSame(body, [](Reader& reader) { return reader.walk(); });
        demandSame(body, [](Reader& reader) { return reader.found(); });
        demandSame(body, [](Reader& reader) { return reader.record(); });
        demandSame(body, [](Reader& reader) { return reader.watch(); });
        demandSame(body, [](Reader& reader) { return reader.watched(); });
        demandSame(body, [](Reader& reader) { return reader.registryValue(); });
    }
    atOnce.add(bytes);
    demand(framesIn(atOnce) == frames);
    demand(atOnce.isBroken() == inPieces.isBroken());
    demand(bytes.starts_with(frames));
    return 0;
}
