#include "platform/dbus/mpris_service.h"

#include "platform/dbus/mpris_names.h"
#include "platform/dbus/mpris_values.h"
#include "platform/posix/file_addresses.h"
#include "playback/sliders.h"

#include <cstdint>
#include <cstdlib>
#include <unistd.h>
#include <utility>
#include <vector>

namespace larkspin {

namespace {

using namespace std::chrono_literals;
using std::chrono::microseconds;

constexpr const char* busName = "org.mpris.MediaPlayer2.larkspin";
constexpr const char* songPaths = "/org/larkspin/song/";

// How far a position may be from the one expected after the last look without counting as a jump.
constexpr auto mostDrift = 700ms;

double share(int value) {
    return value / 100.0;
}

// Takes the answer to the request for the name. A result of 1 means that the name is ours.
// Otherwise another copy has it, and this one takes a name of its own.
int takeOtherName(sd_bus_message* answer, void*, sd_bus_error*) {
    std::uint32_t result = 0;
    if (sd_bus_message_read(answer, "u", &result) >= 0 && result == 1)
        return 0;
    const std::string other = std::string(busName) + ".instance" + std::to_string(::getpid());
    sd_bus_request_name_async(
        sd_bus_message_get_bus(answer), nullptr, other.c_str(), 0,
        [](sd_bus_message*, void*, sd_bus_error*) { return 0; }, nullptr);
    return 0;
}

} // namespace

// What the library calls. It hands every function the pointer that the table was registered with,
// which is the service.
struct MprisService::Table {
    static MprisService& of(void* service) { return *static_cast<MprisService*>(service); }

    static int call(sd_bus_message* message, void* service, sd_bus_error*) {
        of(service).take(sd_bus_message_get_member(message), message);
        return sd_bus_reply_method_return(message, "");
    }
    static int open(sd_bus_message* message, void* service, sd_bus_error* error) {
        return of(service).takeAddress(message)
                   ? sd_bus_reply_method_return(message, "")
                   : sd_bus_error_set_const(error, SD_BUS_ERROR_NOT_SUPPORTED,
                                            "only files of this machine are opened");
    }
    static int get(sd_bus*, const char*, const char*, const char* property, sd_bus_message* answer,
                   void* service, sd_bus_error*) {
        return of(service).tell(property, answer);
    }
    static int set(sd_bus*, const char*, const char*, const char* property, sd_bus_message* value,
                   void* service, sd_bus_error*) {
        of(service).takeProperty(property, value);
        return 0;
    }

    // `fixed` never changes while the program runs, `told` is announced when it changes.
    static constexpr std::uint64_t forAll = SD_BUS_VTABLE_UNPRIVILEGED;
    static constexpr std::uint64_t fixed = SD_BUS_VTABLE_PROPERTY_CONST;
    static constexpr std::uint64_t told = SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE;

    static const sd_bus_vtable root[], player[];
};

const sd_bus_vtable MprisService::Table::root[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Raise", "", "", call, forAll),
    SD_BUS_METHOD("Quit", "", "", call, forAll),
    SD_BUS_PROPERTY("CanQuit", "b", get, 0, fixed),
    SD_BUS_PROPERTY("CanRaise", "b", get, 0, fixed),
    SD_BUS_PROPERTY("HasTrackList", "b", get, 0, fixed),
    SD_BUS_PROPERTY("Identity", "s", get, 0, fixed),
    SD_BUS_PROPERTY("DesktopEntry", "s", get, 0, fixed),
    SD_BUS_PROPERTY("SupportedUriSchemes", "as", get, 0, fixed),
    SD_BUS_PROPERTY("SupportedMimeTypes", "as", get, 0, fixed),
    SD_BUS_VTABLE_END};

const sd_bus_vtable MprisService::Table::player[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Next", "", "", call, forAll),
    SD_BUS_METHOD("Previous", "", "", call, forAll),
    SD_BUS_METHOD("Pause", "", "", call, forAll),
    SD_BUS_METHOD("PlayPause", "", "", call, forAll),
    SD_BUS_METHOD("Stop", "", "", call, forAll),
    SD_BUS_METHOD("Play", "", "", call, forAll),
    SD_BUS_METHOD("Seek", "x", "", call, forAll),
    SD_BUS_METHOD("SetPosition", "ox", "", call, forAll),
    SD_BUS_METHOD("OpenUri", "s", "", open, forAll),
    SD_BUS_SIGNAL("Seeked", "x", 0),
    SD_BUS_PROPERTY("PlaybackStatus", "s", get, 0, told),
    SD_BUS_WRITABLE_PROPERTY("LoopStatus", "s", get, set, 0, told | forAll),
    SD_BUS_WRITABLE_PROPERTY("Rate", "d", get, set, 0, told | forAll),
    SD_BUS_WRITABLE_PROPERTY("Shuffle", "b", get, set, 0, told | forAll),
    SD_BUS_PROPERTY("Metadata", "a{sv}", get, 0, told),
    SD_BUS_WRITABLE_PROPERTY("Volume", "d", get, set, 0, told | forAll),
    SD_BUS_PROPERTY("Position", "x", get, 0, 0),
    SD_BUS_PROPERTY("MinimumRate", "d", get, 0, fixed),
    SD_BUS_PROPERTY("MaximumRate", "d", get, 0, fixed),
    SD_BUS_PROPERTY("CanGoNext", "b", get, 0, fixed),
    SD_BUS_PROPERTY("CanGoPrevious", "b", get, 0, fixed),
    SD_BUS_PROPERTY("CanPlay", "b", get, 0, fixed),
    SD_BUS_PROPERTY("CanPause", "b", get, 0, fixed),
    SD_BUS_PROPERTY("CanSeek", "b", get, 0, fixed),
    SD_BUS_PROPERTY("CanControl", "b", get, 0, fixed),
    SD_BUS_VTABLE_END};

MprisService::MprisService(WatchingLoop& loop, const std::string& busAddress, RemoteControl& remote,
                           Wishes wishes)
    : loop_(loop), bus_(busAddress), remote_(remote), wishes_(std::move(wishes)),
      shown_(remote.view()) {
    if (!bus_.isOpen())
        return;
    sd_bus_add_object_vtable(bus_.raw(), nullptr, mprisPath, mprisRoot, Table::root, this);
    sd_bus_add_object_vtable(bus_.raw(), nullptr, mprisPath, mprisPlayer, Table::player, this);
    sd_bus_request_name_async(bus_.raw(), nullptr, busName, 0, takeOtherName, nullptr);
    bus_.attach(loop);
    loop.beforeSleep([this] { announce(); });
}

// A call comes from inside the library, which can't be entered again, and what the call asks for
// may wait. So it is done in an event of its own.
void MprisService::later(Task task) {
    loop_.post(std::move(task));
}

void MprisService::take(const std::string& method, sd_bus_message* call) {
    static const std::pair<const char*, void (RemoteControl::*)()> operations[] = {
        {"Next", &RemoteControl::next},   {"Previous", &RemoteControl::previous},
        {"Pause", &RemoteControl::pause}, {"PlayPause", &RemoteControl::playOrPause},
        {"Stop", &RemoteControl::stop},   {"Play", &RemoteControl::play}};
    for (const auto& [name, operation] : operations)
        if (method == name)
            return later([this, operation = operation] { (remote_.*operation)(); });
    if (method == "Raise" && wishes_.raise)
        later(wishes_.raise);
    if (method == "Quit")
        later(wishes_.quit);
    if (method == "SetPosition")
        takeSetPosition(call);
    std::int64_t span = 0;
    if (method == "Seek" && sd_bus_message_read(call, "x", &span) >= 0)
        later([this, span] { remote_.moveBy(microseconds(span)); });
}

// A position that is meant for a song that has gone, or that lies outside the song, is out of date
// and ignored.
void MprisService::takeSetPosition(sd_bus_message* call) {
    const char* wanted = nullptr;
    std::int64_t place = 0;
    if (sd_bus_message_read(call, "ox", &wanted, &place) < 0)
        return;
    later([this, place, name = std::string(wanted)] {
        if (name == song() && place >= 0 && microseconds(place) <= remote_.view().length)
            remote_.moveTo(microseconds(place));
    });
}

bool MprisService::takeAddress(sd_bus_message* call) {
    const char* address = nullptr;
    if (sd_bus_message_read(call, "s", &address) < 0 || !pathOfAddress(address))
        return false;
    later([this, wanted = std::string(address)] { wishes_.open(wanted); });
    return true;
}

void MprisService::takeProperty(const std::string& property, sd_bus_message* value) {
    double number = 0;
    int flag = 0;
    const char* text = nullptr;
    if (property == "Volume" && sd_bus_message_read(value, "d", &number) >= 0)
        later([this, number] { remote_.setVolume(number); });
    else if (property == "Rate" && sd_bus_message_read(value, "d", &number) >= 0)
        later([this, number] { remote_.setTempo(number); });
    else if (property == "Shuffle" && sd_bus_message_read(value, "b", &flag) >= 0)
        later([this, flag] { remote_.setShuffle(flag != 0); });
    else if (property == "LoopStatus" && sd_bus_message_read(value, "s", &text) >= 0)
        if (const auto loop = mprisLoop(text))
            later([this, loop = *loop] { remote_.setLoop(loop); });
}

int MprisService::tell(const std::string& property, sd_bus_message* answer) {
    const auto text = [&](const char* value) { return sd_bus_message_append(answer, "s", value); };
    const auto number = [&](double value) { return sd_bus_message_append(answer, "d", value); };
    const auto flag = [&](bool value) { return sd_bus_message_append(answer, "b", int(value)); };
    const RemoteView view = remote_.view();
    if (property == "Identity" || property == "DesktopEntry")
        return text("larkspin");
    if (property == "SupportedUriSchemes")
        return sd_bus_message_append(answer, "as", 1, "file");
    if (property == "SupportedMimeTypes")
        return appendMediaTypes(answer);
    if (property == "PlaybackStatus")
        return text(mprisName(view.status));
    if (property == "LoopStatus")
        return text(mprisName(view.loop));
    if (property == "Rate")
        return number(share(view.tempo));
    if (property == "MinimumRate")
        return number(0.01);
    if (property == "MaximumRate")
        return number(share(Sliders::mostTempo));
    if (property == "Volume")
        return number(share(view.volume));
    if (property == "Position")
        return sd_bus_message_append(answer, "x", std::int64_t(remote_.position().count()));
    if (property == "Shuffle")
        return flag(view.shuffle);
    if (property == "Metadata")
        return appendMetadata(answer, view, song());
    if (property == "HasTrackList")
        return flag(false);
    if (property == "CanRaise")
        return flag(wishes_.raise != nullptr);
    return flag(true); // CanPlay, CanSeek and so on: larkspin can do all of that
}

std::string MprisService::song() const {
    return songPaths + std::to_string(songs_);
}

void MprisService::announce() {
    if (!bus_.isOpen())
        return;
    const RemoteView now = remote_.view();
    // A new song is told by its metadata. That its position isn't that of the song before is no
    // jump.
    const bool isSameSong = now.path == shown_.path;
    if (!isSameSong)
        ++songs_;
    announceChanges(now);
    if (isSameSong)
        announceJump(now);
    look_ = {remote_.position(), loop_.now()};
    shown_ = now;
    bus_.settle();
}

void MprisService::announceChanges(const RemoteView& now) {
    std::vector<const char*> changed;
    const auto note = [&](const char* property, bool differs) {
        if (differs)
            changed.push_back(property);
    };
    note("PlaybackStatus", now.status != shown_.status);
    note("Metadata",
         now.path != shown_.path || now.length != shown_.length || now.tags != shown_.tags);
    note("Volume", now.volume != shown_.volume);
    note("Rate", now.tempo != shown_.tempo);
    note("LoopStatus", now.loop != shown_.loop);
    note("Shuffle", now.shuffle != shown_.shuffle);
    if (changed.empty())
        return;
    changed.push_back(nullptr);
    sd_bus_emit_properties_changed_strv(bus_.raw(), mprisPath, mprisPlayer,
                                        const_cast<char**>(changed.data()));
}

// Whoever shows the position lets it run on by himself, and has to be told when the song is
// somewhere else. A song that has stopped or paused since the last look ran for an unknown part of
// that time, so any place up to the expected one is fine.
void MprisService::announceJump(const RemoteView& now) {
    const microseconds position = remote_.position();
    const auto passed = std::chrono::duration_cast<microseconds>(loop_.now() - look_.at);
    const bool ran = shown_.status == RemoteView::Status::playing;
    const microseconds expected = look_.position + (ran ? passed * shown_.tempo / 100 : 0us);
    const bool isBehind = now.status == RemoteView::Status::playing
                              ? position < expected - mostDrift
                              : position < look_.position;
    if (isBehind || position > expected + mostDrift)
        sd_bus_emit_signal(bus_.raw(), mprisPath, mprisPlayer, "Seeked", "x",
                           std::int64_t(position.count()));
}

} // namespace larkspin
