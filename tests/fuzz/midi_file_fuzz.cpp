// Any bytes after a MIDI file's first ones give no song, or one that can be played in order.
#include "fuzz/fuzz.h"
#include "platform/gstreamer/midi_file.h"

using namespace larkspin;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string rest(reinterpret_cast<const char*>(data), size);
    for (const std::string head : {"MThd", "MThd\0\0\0\6\0\1\0\2\0\1MTrk\0\0\0\x20"}) {
        const auto song = readMidi(head + rest);
        if (!song)
            continue;
        double last = 0;
        for (const MidiEvent& event : song->events) {
            demand(event.seconds >= last);
            demand(event.bytes[0] >= 0x80);
            demand(event.bytes[1] < 0x80);
            demand(event.bytes[2] < 0x80);
            demand(event.bytes[0] != 0xF0 || event.longText < song->longTexts.size());
            last = event.seconds;
        }
        demand(song->duration >= last);
    }
    return 0;
}
