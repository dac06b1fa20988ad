#include "platform/gstreamer/synthesizer.h"

#include <dlfcn.h>
#include <filesystem>

namespace larkspin {

namespace {

// Small soundfonts. FluidSynth's own choice may be one of hundreds of megabytes.
constexpr const char* soundfonts[] = {"/usr/share/sounds/sf2/TimGM6mb.sf2",
                                      "/usr/share/sounds/sf2/default-GM.sf2",
                                      "/usr/share/sounds/sf3/default-GM.sf3"};
constexpr int failed = -1; // as FluidSynth says it

constexpr int firstKind = 0x8, bendKind = 0xE, systemKind = 0xF; // of MIDI messages

const char* installedSoundfont() {
    std::error_code error;
    for (const char* path : soundfonts)
        if (std::filesystem::is_regular_file(path, error))
            return path;
    return nullptr;
}

} // namespace

// The functions as fluidsynth.h 2.x declares them. That header isn't used, since the package that
// has it brings 200 MB of other libraries' headers along.
struct Synthesizer::Library {
    void* handle = nullptr;
    bool isWhole = true;

    explicit Library(void* h) : handle(h) {}
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() { ::dlclose(handle); }

    template <typename Function> Function* find(const char* name) {
        void* const found = ::dlsym(handle, name);
        isWhole &= found != nullptr;
        return reinterpret_cast<Function*>(found);
    }

    using MakeSettings = void*();
    using Drop = void(void*);
    using SetInteger = int(void*, const char*, int);
    using Make = void*(void*);
    using LoadFont = int(void*, const char*, int);
    using Plain = int(void*);
    using Message1 = int(void*, int, int);
    using Message2 = int(void*, int, int, int);
    using LongText = int(void*, const char*, int, char*, int*, int*, int);
    using Write = int(void*, int, void*, int, int, void*, int, int);

    MakeSettings* makeSettings = find<MakeSettings>("new_fluid_settings");
    Drop* dropSettings = find<Drop>("delete_fluid_settings");
    SetInteger* setInteger = find<SetInteger>("fluid_settings_setint");
    Make* make = find<Make>("new_fluid_synth");
    Drop* drop = find<Drop>("delete_fluid_synth");
    LoadFont* loadFont = find<LoadFont>("fluid_synth_sfload");
    Plain* reset = find<Plain>("fluid_synth_system_reset");
    // What takes a message, by its kind from the first on: with one number, or with two.
    struct Taker {
        Message1* one = nullptr;
        Message2* two = nullptr;
    };
    Taker takers[7] = {{.one = find<Message1>("fluid_synth_noteoff")},
                       {.two = find<Message2>("fluid_synth_noteon")},
                       {.two = find<Message2>("fluid_synth_key_pressure")},
                       {.two = find<Message2>("fluid_synth_cc")},
                       {.one = find<Message1>("fluid_synth_program_change")},
                       {.one = find<Message1>("fluid_synth_channel_pressure")},
                       {.one = find<Message1>("fluid_synth_pitch_bend")}};
    LongText* longText = find<LongText>("fluid_synth_sysex");
    Write* write = find<Write>("fluid_synth_write_float");
};

Synthesizer::Synthesizer(std::unique_ptr<Library> library)
    : library_(std::move(library)), settings_(library_->makeSettings(), library_->dropSettings),
      synth_(nullptr, library_->drop) {}

Synthesizer::~Synthesizer() = default;

std::unique_ptr<Synthesizer> Synthesizer::start() {
    const char* const instruments = installedSoundfont();
    void* const handle = ::dlopen("libfluidsynth.so.3", RTLD_NOW | RTLD_LOCAL);
    if (!instruments || !handle)
        return nullptr;
    auto library = std::make_unique<Library>(handle);
    if (!library->isWhole)
        return nullptr;
    std::unique_ptr<Synthesizer> synthesizer(new Synthesizer(std::move(library)));
    return synthesizer->start(instruments) ? std::move(synthesizer) : nullptr;
}

bool Synthesizer::start(const char* instruments) {
    // Memory is scarce here: none is locked, and only the sounds of the instruments in use are
    // loaded.
    library_->setInteger(settings_.get(), "synth.lock-memory", 0);
    library_->setInteger(settings_.get(), "synth.dynamic-sample-loading", 1);
    synth_.reset(library_->make(settings_.get()));
    return synth_ && library_->loadFont(synth_.get(), instruments, 1) != failed;
}

void Synthesizer::reset() {
    library_->reset(synth_.get());
}

void Synthesizer::send(const MidiEvent& event, const MidiSong& song) {
    // The first byte holds the kind of event in its upper half, the channel in its lower half.
    const int kind = event.bytes[0] >> 4, channel = event.bytes[0] & 0x0F, first = event.bytes[1],
              second = event.bytes[2];
    void* const synth = synth_.get();
    if (kind == systemKind) {
        const std::string& text = song.longTexts[event.longText];
        library_->longText(synth, text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                           nullptr, 0);
        return;
    }
    const Library::Taker& taker = library_->takers[kind - firstKind];
    if (taker.two)
        taker.two(synth, channel, first, second);
    else // a bend has 14 bits, the lower seven of which come first
        taker.one(synth, channel, kind == bendKind ? first | second << 7 : first);
}

void Synthesizer::render(std::vector<float>& samples, int frames) {
    const std::size_t before = samples.size();
    samples.resize(before + 2 * static_cast<std::size_t>(frames));
    float* const left = samples.data() + before;
    library_->write(synth_.get(), frames, left, 0, 2, left, 1, 2);
}

} // namespace larkspin
