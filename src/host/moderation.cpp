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
        pass(client_.roomPeople().listPeople(), fragment,
             {&RoomPeople::toggleIgnored, "ignored bastard"});
    });
}

// The same act: somebody who is ignored already is heard again by it.
void Moderation::unx(const std::string& fragment) {
    inTurn_.run([this, fragment] {
        pass(client_.roomPeople().listPeople(), fragment,
             {&RoomPeople::toggleIgnored, "unignored bastard"});
    });
}

void Moderation::ban(const std::string& fragment) {
    inTurn_.run([this, fragment] {
        if (ownerMayEject())
            pass(client_.roomPeople().listPeople(), fragment,
                 {&RoomPeople::eject, "ejected bastard"});
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
    const auto ejected = client_.roomPeople().beginAllowing();
    if (!ejected)
        return;
    if (run.lasts())
        pass(*ejected, fragment, {&RoomPeople::allow, "unbanned bastard"});
    client_.roomPeople().endAllowing(); // also when the run has ended: the client goes on
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

// Goes through the people, up to one without a name, who shows that the client couldn't be read.
void Moderation::pass(const People& people, const std::string& fragment, const Mode& mode) {
    const std::string lowered = foldCase(fragment);
    bool isAnybodyMeant = false;
    for (const Person& person : people) {
        if (person.name.empty())
            return;
        if (foldCase(person.name).find(lowered) == std::string::npos)
            continue;
        isAnybodyMeant = true;
        if (!treat(person, mode))
            return;
    }
    if (!isAnybodyMeant)
        core_.reply.saychat("fag not found");
}

// False when the pass is over. What the client doesn't offer is said all the same, as it is without
// a room. But the client won't offer it for the next person either, and each try takes its time.
bool Moderation::treat(const Person& person, const Mode& mode) {
    const ThisRun run(core_.state);
    core_.loop.serveTurn();
    if (!run.lasts())
        return false;
    // The owner's name is asked for each time: he may have another one by now.
    if (person.name != client_.currentScreenName()) {
        const bool isOffered = (client_.roomPeople().*mode.act)(person);
        if (!run.lasts())
            return false;
        core_.reply.saychat("<b>" + person.name + "</b>, " + std::string(mode.ending));
        if (!isOffered)
            return false;
    }
    Pause{core_.loop}(betweenPeople);
    return run.lasts();
}

} // namespace larkspin
