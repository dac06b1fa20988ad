#include "host/moderation.h"

#include "chat/reply.h"
#include "shell/app_state.h"
#include "shell/event_loop.h"
#include "shell/pause.h"
#include "shell/this_run.h"
#include "text/fold.h"

namespace larkspin {

namespace {

constexpr const char* ignoreCaption = "Ignor*"; // a toggle: it also takes the ignoring back
constexpr const char* ejectCaption = "Eject M*";
constexpr const char* allowCaption = "Allo*";
constexpr const char* ejectedCaption = "Ejecte*"; // shows the list; only the room's owner sees it
constexpr const char* peopleCaption = "Peopl*";   // shows the other list again

// Seconds. The client needs the first to take in what is pressed.
constexpr double aroundHolding = 0.03;
constexpr double betweenPeople = 0.3;

} // namespace

void Moderation::x(const std::string& fragment) {
    inTurn_.run([this, fragment] { ignore(fragment, "ignored bastard"); });
}

void Moderation::unx(const std::string& fragment) {
    inTurn_.run([this, fragment] { ignore(fragment, "unignored bastard"); });
}

void Moderation::ban(const std::string& fragment) {
    inTurn_.run([this, fragment] { eject(fragment); });
}

void Moderation::unban(const std::string& fragment) {
    inTurn_.run([this, fragment] { letBackIn(fragment); });
}

// With the owner's own name, so that each name's row is the client's row.
HostHandle Moderation::readNames(List list) {
    const HostHandle read = (client_.*list)();
    client_.readHostList(read, core_.state.roomScratch, true);
    return read;
}

void Moderation::ignore(const std::string& fragment, std::string_view ending) {
    const HostHandle read = readNames(&HostClient::peopleList);
    pass(fragment, {&HostClient::peopleList, read, ignoreCaption, ending});
}

void Moderation::eject(const std::string& fragment) {
    if (refusedToOthers())
        return;
    const HostHandle read = readNames(&HostClient::peopleList);
    pass(fragment, {&HostClient::peopleList, read, ejectCaption, "ejected bastard"});
}

void Moderation::letBackIn(const std::string& fragment) {
    const ThisRun run(core_.state);
    if (refusedToOthers())
        return;
    const HostHandle read = readNames(&HostClient::ejectedList);
    const HostHandle toEjected =
        client_.findChatRoom() == noHandle ? noHandle : client_.findRoomIcon(ejectedCaption);
    if (!run.lasts())
        return;
    // Without the ejected people in view a button would be pressed for a row of another list.
    if (toEjected == noHandle) {
        core_.state.roomScratch.clear();
        return;
    }
    client_.pressIcon(toEjected);
    pass(fragment, {&HostClient::ejectedList, read, allowCaption, "unbanned bastard"});
    // However that ended, by the end of the run as well: the client doesn't end with it.
    client_.pressIcon(client_.findRoomIcon(peopleCaption));
}

// True where the room isn't the owner's, or when the run has ended in the search for the button:
// the command is over then.
bool Moderation::refusedToOthers() {
    const ThisRun run(core_.state);
    const bool owns = client_.findChatRoom() != noHandle &&
                      client_.iconVisible(client_.findRoomIcon(ejectedCaption));
    if (!run.lasts())
        return true;
    if (!owns)
        core_.reply.saychat("you aren't the owner, dumbass");
    return !owns;
}

void Moderation::pass(const std::string& fragment, const Mode& mode) {
    const ThisRun run(core_.state);
    const Outcome outcome = walk(fragment, mode);
    if (!run.lasts())
        return; // a new run's list is empty
    core_.state.roomScratch.clear();
    if (outcome == Outcome::nobodyMatched)
        core_.reply.saychat("fag not found");
}

Moderation::Outcome Moderation::walk(const std::string& fragment, const Mode& mode) {
    RowList& names = core_.state.roomScratch;
    const std::string lowered = foldCase(fragment);
    Outcome outcome = Outcome::nobodyMatched;
    for (int row = 0; row < names.count(); ++row) {
        names.setCurrentIndex(row);
        if (names.row(row).empty())
            return Outcome::ended;
        if (names.folded(row).find(lowered) == std::string_view::npos)
            continue;
        outcome = Outcome::done;
        if (!treat(row, mode))
            return Outcome::ended;
    }
    return outcome;
}

// Of a row that matches. False when the pass is over.
bool Moderation::treat(int row, const Mode& mode) {
    const ThisRun run(core_.state);
    core_.loop.serveTurn();
    if (!run.lasts())
        return false;
    const std::string name(core_.state.roomScratch.row(row));
    if (name != client_.currentScreenName()) {
        const bool isOffered = act(row, mode);
        if (!run.lasts())
            return false;
        core_.reply.saychat("<b>" + name + "</b>, " + std::string(mode.ending));
        if (!isOffered)
            return false;
    }
    Pause{core_.loop}(betweenPeople);
    return run.lasts();
}

// False when the client doesn't offer the button. What is said repeats the command all the same, as
// without a room; but the client won't offer it for the next person either, and each search for it
// takes its time. The same when the owner has turned to another room meanwhile, where the row is
// somebody else's.
bool Moderation::act(int row, const Mode& mode) {
    if (client_.findChatRoom() == noHandle)
        return true; // what is said is lost as well
    const ThisRun run(core_.state);
    const Pause pause(core_.loop);
    const HostHandle button = client_.findRoomIcon(std::string(mode.button));
    if (button == noHandle || !run.lasts() || (client_.*mode.list)() != mode.read)
        return false;
    client_.selectHostRow(mode.read, row);
    core_.loop.serveTurn();
    pause(aroundHolding);
    if (!run.lasts())
        return false;
    client_.holdIcon(button);
    pause(aroundHolding);
    core_.loop.serveTurn();
    client_.releaseIcon(button); // also when the run has ended: the client shouldn't hang in it
    return true;
}

} // namespace larkspin
