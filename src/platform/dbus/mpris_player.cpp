#include "platform/dbus/mpris_player.h"

#include "platform/dbus/bus.h"
#include "platform/dbus/mpris_answer.h"
#include "platform/dbus/mpris_names.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto questionBound = 250ms;
// More aren't asked, so that names on the bus without end don't make the question endless.
constexpr std::size_t mostPlayers = 100;

struct Candidate {
    // The states stand in the order in which players are preferred.
    enum class State { playing, paused, other, silent, gone };

    std::string name;
    State state = State::silent;
    std::string title = {};
};

bool isOtherPlayer(std::string_view name) {
    constexpr std::string_view players = "org.mpris.MediaPlayer2.";
    if (!name.starts_with(players))
        return false;
    name.remove_prefix(players.size());
    return name != "larkspin" && !name.starts_with("larkspin.") && name != "playerctld";
}

void takeNames(sd_bus_message* answer, std::vector<Candidate>& players) {
    const char* name = nullptr;
    if (!answer || sd_bus_message_enter_container(answer, SD_BUS_TYPE_ARRAY, "s") <= 0)
        return;
    while (sd_bus_message_read_basic(answer, SD_BUS_TYPE_STRING, &name) > 0)
        if (isOtherPlayer(name))
            players.push_back({name});
    // The players are sorted by name, so that among equal ones the choice is always the same.
    std::ranges::sort(players, {}, &Candidate::name);
    players.resize(std::min(players.size(), mostPlayers));
}

void takeAnswer(sd_bus_message* message, Candidate& player) {
    // No message is an error: the player has ended, or what has the name is no player.
    player.state = Candidate::State::gone;
    if (!message)
        return;
    MprisAnswer answer = readMprisAnswer(message);
    player.title = std::move(answer.title);
    switch (answer.status) {
    case MprisAnswer::Status::playing:
        player.state = Candidate::State::playing;
        break;
    case MprisAnswer::Status::paused:
        player.state = Candidate::State::paused;
        break;
    case MprisAnswer::Status::other:
        player.state = Candidate::State::other;
    }
}

// Whether the answers still to come can't change the choice: one that plays is known, and all
// before it, by name, have answered.
bool isDecided(const std::vector<Candidate>& players) {
    const auto firstOpen = std::ranges::find(players, Candidate::State::silent, &Candidate::state);
    return firstOpen == players.end() ||
           std::any_of(players.begin(), firstOpen, [](const Candidate& player) {
               return player.state == Candidate::State::playing;
           });
}

class Question {
public:
    explicit Question(const std::string& busAddress) : bus_(busAddress) {}

    std::optional<Candidate> player() {
        lookUp();
        for (Candidate& player : players_)
            ask(player);
        bus_.serveUntil([this] { return isDecided(players_); }, latest_);
        const auto first = std::ranges::min_element(players_, {}, &Candidate::state);
        if (first == players_.end() || first->state == Candidate::State::gone)
            return std::nullopt;
        return *first;
    }

    bool press(const Candidate& player, const char* button) {
        const BusMessage call =
            bus_.methodCall({player.name.c_str(), mprisPath, mprisPlayer, button});
        if (!call || sd_bus_message_set_auto_start(call.get(), 0) < 0)
            return false;
        return bus_.tell(call) && bus_.flush(std::max(latest_, Clock::now() + sendBound));
    }

private:
    using Clock = std::chrono::steady_clock;

    static constexpr auto sendBound = 10ms; // after the question's own bound: sending takes no time

    void lookUp() {
        bus_.ask(bus_.methodCall({"org.freedesktop.DBus", "/org/freedesktop/DBus",
                                  "org.freedesktop.DBus", "ListNames"}),
                 [this](sd_bus_message* answer) {
                     takeNames(answer, players_);
                     lookedUp_ = true;
                 });
        bus_.serveUntil([this] { return lookedUp_; }, latest_);
    }

    void ask(Candidate& player) {
        const BusMessage call = bus_.methodCall(
            {player.name.c_str(), mprisPath, "org.freedesktop.DBus.Properties", "GetAll"});
        const bool asked =
            call && sd_bus_message_set_auto_start(call.get(), 0) >= 0 &&
            sd_bus_message_append(call.get(), "s", mprisPlayer) >= 0 &&
            bus_.ask(call, [&](sd_bus_message* answer) { takeAnswer(answer, player); });
        if (!asked) // the bus is gone, or the name is none
            player.state = Candidate::State::gone;
    }

    const Clock::time_point latest_ = Clock::now() + questionBound;
    bool lookedUp_ = false;
    std::vector<Candidate> players_; // before the connection, whose answers are written into it
    Bus bus_;
};

const char* memberOf(OtherPlayer::Button button) {
    switch (button) {
    case OtherPlayer::Button::previous:
        return "Previous";
    case OtherPlayer::Button::play:
        return "Play";
    case OtherPlayer::Button::stop:
        return "Stop";
    case OtherPlayer::Button::next:
        return "Next";
    }
    return "";
}

} // namespace

bool MprisPlayer::press(Button button) {
    Question question(busAddress_);
    const auto player = question.player();
    return player && question.press(*player, memberOf(button));
}

std::optional<std::string> MprisPlayer::title() {
    const auto player = Question(busAddress_).player();
    return player ? std::optional(player->title) : std::nullopt;
}

} // namespace larkspin
