#include "host/moderation.h"

#include "chat/reply.h"
#include "shell/event_loop.h"
#include "shell/pause.h"
#include "shell/this_run.h"
#include "text/fold.h"

namespace larkspin {

static constexpr double betweenPeople = 0.3; // seconds

void Moderation::x(const std::string& fragment) {
    inTurn_.run([this, fragment] {
        passRoom(fragment, {&RoomPeople::toggleIgnored, "ignored bastard"});
    });
}

// The same act: somebody who is ignored already is heard again by it.
void Moderation::unx(const std::string& fragment) {
    inTurn_.run([this, fragment] {
        passRoom(fragment, {&RoomPeople::toggleIgnored, "unignored bastard"});
    });
}

void Moderation::ban(const std::string& fragment) {
    inTurn_.run([this, fragment] {
        if (ownerMayEject())
            passRoom(fragment, {&RoomPeople::eject, "ejected bastard"});
    });
}

void Moderation::unban(const std::string& fragment) {
    inTurn_.run([this, fragment] {
        if (ownerMayEject())
            letBackIn(fragment);
    });
}

void Moderation::letBackIn(const std::string& fragment) {
    const ThisRun run(core_.state);
    RoomPeople& room = client_.roomPeople();
    const auto ejected = room.beginAllowing();
    if (!ejected)
        return;
    if (run.lasts())
        pass(room, *ejected, fragment, {&RoomPeople::allow, "unbanned bastard"});
    room.endAllowing(); // also when the run has ended: the client goes on
}

// Tells the owner if he may not. Also false when the run has ended while the client was asked: the
// command is over then.
bool Moderation::ownerMayEject() {
    const ThisRun run(core_.state);
    const bool may = client_.roomPeople().ownerMayEject();
    if (run.lasts() && !may)
        core_.reply.saychat("you aren't the owner, dumbass");
    return run.lasts() && may;
}

void Moderation::passRoom(const std::string& fragment, const Mode& mode) {
    RoomPeople& room = client_.roomPeople();
    pass(room, room.listPeople(), fragment, mode);
}

// Goes through the people, up to one without a name, who shows that the client couldn't be read.
void Moderation::pass(RoomPeople& room, const People& people, const std::string& fragment,
                      const Mode& mode) {
    const std::string lowered = foldCase(fragment);
    bool isAnybodyMeant = false;
    for (const Person& person : people) {
        if (person.name.empty())
            return;
        if (foldCase(person.name).find(lowered) == std::string::npos)
            continue;
        isAnybodyMeant = true;
        if (!treat(room, person, mode))
            return;
    }
    if (!isAnybodyMeant)
        core_.reply.saychat("fag not found");
}

// False when the pass is over. It ends as well when the owner sits in another client by now. What
// wasn't done isn't said.
bool Moderation::treat(RoomPeople& room, const Person& person, const Mode& mode) {
    const ThisRun run(core_.state);
    core_.loop.serveTurn();
    if (!run.lasts())
        return false;
    // The owner's name is asked for each time: he may have another one by now.
    if (person.name != client_.currentScreenName()) {
        const bool isHere = &client_.roomPeople() == &room;
        const Deed deed = isHere ? (room.*mode.act)(person) : Deed::over;
        if (!run.lasts() || deed == Deed::over)
            return false;
        if (deed == Deed::done)
            core_.reply.saychat("<b>" + person.name + "</b>, " + std::string(mode.ending));
    }
    Pause{core_.loop}(betweenPeople);
    return run.lasts();
}

} // namespace larkspin
