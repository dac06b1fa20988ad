// FluidSynth, which makes sound of MIDI messages. Its library is loaded by the first MIDI song:
// with what it brings along it takes as much memory as all the rest of the player.
#pragma once

#include "platform/gstreamer/midi_file.h"

#include <memory>
#include <vector>

namespace larkspin {

class Synthesizer {
public:
    static constexpr int sampleRate = 44100; // FluidSynth's own

    // Nothing where FluidSynth or the instruments aren't installed.
    static std::unique_ptr<Synthesizer> start();
    ~Synthesizer(); // of the library, too
    Synthesizer(const Synthesizer&) = delete;
    Synthesizer& operator=(const Synthesizer&) = delete;

    void reset(); // silence, and all channels as at the begin
    void send(const MidiEvent& event, const MidiSong& song);
    void render(std::vector<float>& samples, int frames); // appends left and right in turn

private:
    struct Library;
    explicit Synthesizer(std::unique_ptr<Library> library);
    bool start(const char* instruments);

    using Object = std::unique_ptr<void, void (*)(void*)>; // with what drops it

    std::unique_ptr<Library> library_;
    Object settings_, synth_;
};

} // namespace larkspin
