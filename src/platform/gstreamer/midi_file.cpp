#include "platform/gstreamer/midi_file.h"

#include <algorithm>
#include <cmath>

namespace larkspin {

namespace {

constexpr double longestSong = 24 * 3600;
constexpr std::uint8_t noteOn = 0x90, systemExclusive = 0xF0, escape = 0xF7, meta = 0xFF;
constexpr std::uint8_t metaTrackEnd = 0x2F, metaTempo = 0x51;

class Bytes {
public:
    explicit Bytes(std::string_view text) : rest_(text) {}

    bool isEmpty() const { return rest_.empty(); }
    std::uint8_t next() { return static_cast<std::uint8_t>(take(1)[0]); } // if not empty
    std::uint8_t peek() const { return static_cast<std::uint8_t>(rest_[0]); }
    // Fewer bytes when there are no more.
    std::string_view take(std::size_t count) {
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }
    std::uint32_t number(std::size_t size) {
        std::uint32_t value = 0;
        for (const char byte : take(size))
            value = value << 8 | static_cast<std::uint8_t>(byte);
        return value;
    }
    // A number of seven bits a byte, the higher ones first, in at most four bytes.
    std::optional<std::uint32_t> variableNumber() {
        std::uint32_t value = 0;
        for (int count = 0; count < 4 && !isEmpty(); ++count) {
            const std::uint8_t byte = next();
            value = value << 7 | (byte & 0x7Fu);
            if (byte < 0x80)
                return value;
        }
        return std::nullopt;
    }

private:
    std::string_view rest_;
};

// An event that has its tick but no time yet. Changes of tempo are kept as events until the tracks
// have been merged, since they hold for all of them.
struct TimedEvent {
    std::uint64_t tick = 0;
    MidiEvent event;
    std::uint32_t tempo = 0; // microseconds a quarter note; 0 for any other event
};

struct Tracks {
    std::vector<TimedEvent> events;
    std::vector<std::string> longTexts;
    std::uint64_t end = 0; // tick
    bool hasNotes = false;
};

std::size_t dataBytes(std::uint8_t status) {
    const int kind = status & 0xF0;
    return kind == 0xC0 || kind == 0xD0 ? 1 : 2;
}

// Reads one track, up to its end or to where it makes no sense any more.
class TrackReader {
public:
    TrackReader(std::string_view track, Tracks& tracks) : bytes_(track), tracks_(tracks) {}

    void read() {
        while (!bytes_.isEmpty() && readEvent())
            tracks_.end = std::max(tracks_.end, tick_);
    }

private:
    bool readEvent() {
        const auto wait = bytes_.variableNumber();
        if (!wait || bytes_.isEmpty())
            return false;
        tick_ += *wait;
        const std::uint8_t first = bytes_.peek();
        if (first == meta)
            return readMeta();
        if (first == systemExclusive || first == escape)
            return readLongText();
        return readMessage();
    }

    // Of these events only a tempo and the end of the track matter.
    bool readMeta() {
        bytes_.take(1);
        const std::uint32_t kind = bytes_.number(1);
        const auto length = bytes_.variableNumber();
        if (!length)
            return false;
        Bytes content(bytes_.take(*length));
        if (kind == metaTempo && *length == 3)
            if (const std::uint32_t tempo = content.number(3))
                tracks_.events.push_back({tick_, {}, tempo});
        if (kind == metaTrackEnd)
            tracks_.end = std::max(tracks_.end, tick_);
        return kind != metaTrackEnd;
    }

    bool readLongText() {
        const bool whole = bytes_.next() == systemExclusive;
        const auto length = bytes_.variableNumber();
        if (!length)
            return false;
        std::string_view content = bytes_.take(*length);
        status_ = 0;
        if (!whole || !content.ends_with('\xF7'))
            return true; // pieces of such messages mean nothing to the synthesizer
        content.remove_suffix(1);
        const MidiEvent event{
            0, {systemExclusive}, static_cast<std::uint32_t>(tracks_.longTexts.size())};
        tracks_.longTexts.emplace_back(content);
        tracks_.events.push_back({tick_, event, 0});
        return true;
    }

    bool readMessage() {
        if (bytes_.peek() >= 0x80)
            status_ = bytes_.next();
        if (status_ < 0x80 || status_ >= 0xF0)
            return false;
        const std::string_view data = bytes_.take(dataBytes(status_));
        if (data.size() < dataBytes(status_))
            return false;
        MidiEvent event{0, {status_}, 0};
        for (std::size_t at = 0; at < data.size(); ++at)
            event.bytes[at + 1] = static_cast<std::uint8_t>(data[at] & 0x7F);
        tracks_.hasNotes |= (status_ & 0xF0) == noteOn && event.bytes[2] > 0;
        tracks_.events.push_back({tick_, event, 0});
        return true;
    }

    Bytes bytes_;
    Tracks& tracks_;
    std::uint64_t tick_ = 0;
    std::uint8_t status_ = 0; // of the last message; one without a status byte has the same
};

// Ticks to seconds, step by step.
class TickClock {
public:
    explicit TickClock(std::uint32_t division) : ticksPerQuarter_(division) {
        if (division & 0x8000) { // minus the frames a second, and the ticks of a frame
            const auto frames = static_cast<double>(0x100 - (division >> 8));
            secondsPerTick_ = 1 / ((frames == 29 ? 29.97 : frames) * (division & 0xFF));
            fixed_ = true;
        } else {
            // 120 quarter notes a minute, until the song sets a tempo.
            setTempo(500000);
        }
    }

    void setTempo(std::uint32_t microseconds) {
        if (!fixed_)
            secondsPerTick_ = microseconds / 1e6 / ticksPerQuarter_;
    }
    double secondsAt(std::uint64_t tick) {
        seconds_ += static_cast<double>(tick - tick_) * secondsPerTick_;
        tick_ = tick;
        return seconds_;
    }

private:
    double ticksPerQuarter_;
    double secondsPerTick_ = 0;
    double seconds_ = 0;
    std::uint64_t tick_ = 0;
    bool fixed_ = false;
};

bool isDivision(std::uint32_t division) {
    return (division & 0x8000 ? division & 0xFF : division) > 0;
}

MidiSong inTime(Tracks tracks, std::uint32_t division) {
    // Events of one tick keep their order, so that an instrument is chosen before it plays.
    std::stable_sort(tracks.events.begin(), tracks.events.end(),
                     [](const auto& a, const auto& b) { return a.tick < b.tick; });
    MidiSong song;
    song.longTexts = std::move(tracks.longTexts);
    TickClock clock(division);
    for (TimedEvent& timed : tracks.events) {
        timed.event.seconds = clock.secondsAt(timed.tick);
        if (timed.tempo)
            clock.setTempo(timed.tempo);
        else
            song.events.push_back(timed.event);
    }
    song.duration = clock.secondsAt(tracks.end);
    return song;
}

} // namespace

bool isMidi(std::string_view firstBytes) {
    return firstBytes.starts_with("MThd");
}

std::optional<MidiSong> readMidi(std::string_view file) {
    if (!isMidi(file))
        return std::nullopt;
    Bytes bytes(file.substr(4));
    Bytes head(bytes.take(bytes.number(4)));
    const std::uint32_t format = head.number(2), count = head.number(2), division = head.number(2);
    // Format 2 is a collection of songs.
    if (format > 1 || !isDivision(division))
        return std::nullopt;
    Tracks tracks;
    for (std::uint32_t found = 0; found < count && !bytes.isEmpty();) {
        const std::string_view kind = bytes.take(4);
        const std::string_view content = bytes.take(bytes.number(4));
        if (kind != "MTrk")
            continue; // others are to be passed over
        TrackReader(content, tracks).read();
        ++found;
    }
    if (!tracks.hasNotes)
        return std::nullopt;
    MidiSong song = inTime(std::move(tracks), division);
    if (!(song.duration > 0 && song.duration <= longestSong))
        return std::nullopt;
    return song;
}

} // namespace larkspin
