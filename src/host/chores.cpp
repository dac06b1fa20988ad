#include "host/chores.h"

#include "chat/markup.h"
#include "chat/reply.h"
#include "companions/launcher.h"
#include "host/client_addresses.h"
#include "host/web_address.h"
#include "shell/pause.h"
#include "shell/this_run.h"

namespace larkspin {

namespace {

constexpr double beforeErrand = 0.2; // seconds, so that the room has the line before it

} // namespace

void Chores::kw(const std::string& keyword) {
    if (!announce("goto keyword:  <b>" + keyword))
        return;
    // This address leads to a private room in every client, also in one without keywords.
    if (keyword.starts_with(privateRoomAddress))
        client_.errands().enterPrivateRoom(keyword.substr(privateRoomAddress.size()));
    else
        client_.errands().gotoKeyword(keyword);
}

// A text that is no address is said like one and not opened. The owner isn't told, as he isn't when
// an address leads nowhere: the line shows what was taken for an address.
void Chores::url(const std::string& address) {
    const bool here = announce("world wide web:  <b>" + address);
    if (here)
        openAddress(address);
}

void Chores::openAddress(const std::string& address) {
    if (const auto opened = webAddress(address))
        launcher_.launchFile(*opened);
}

void Chores::pr(const std::string& room) {
    if (announce("private room ~> <b>" + room, beforeErrand))
        client_.errands().enterPrivateRoom(room);
}

void Chores::newMail() {
    openMail(ClientErrands::Mail::unread, "opening new mail");
}

void Chores::oldMail() {
    openMail(ClientErrands::Mail::old, "opening old mail");
}

void Chores::sentMail() {
    openMail(ClientErrands::Mail::sent, "opening sent mail");
}

void Chores::openMail(ClientErrands::Mail mail, const std::string& said) {
    if (!client_.errands().hasMail())
        core_.reply.sayOrBox("there is no mail here");
    else if (announce(said))
        client_.errands().openMail(mail);
}

void Chores::signoff() {
    if (announce("signing off this piece of shit!", beforeErrand))
        client_.errands().signOff();
}

void Chores::closeaol() {
    if (announce("closing this piece of shit!", beforeErrand))
        client_.errands().closeHost();
}

void Chores::imson() {
    switchMessages(true, "ims are now on");
}

void Chores::imsoff() {
    switchMessages(false, "ims are now off");
}

void Chores::aim() {
    core_.reply.saychat("login aim sn > <b> " + withoutTags(client_.errands().messengerAccount()));
}

void Chores::hidewelc() {
    client_.errands().hideWelcomeWindow();
    core_.reply.saychat("welcome window = hidden");
}

void Chores::switchMessagesOn() {
    switchMessages(true);
}

void Chores::switchMessagesOff() {
    switchMessages(false);
}

void Chores::hideWelcome() {
    client_.errands().hideWelcomeWindow();
}

// True when the errand is still to be run: there may have been a restart during the line, or the
// wait after it.
bool Chores::announce(const std::string& text, double wait) {
    const ThisRun run(core_.state);
    core_.reply.saychat(text);
    if (run.lasts())
        Pause{core_.loop}(wait);
    return run.lasts();
}

// Done in turn, so that what is asked for last holds in the end. It is said even when the client
// has not shown its windows, since nothing tells what the client has made of it.
void Chores::switchMessages(bool areTaken, const std::string& said) {
    inTurn_.run([this, areTaken, said] {
        const ThisRun run(core_.state);
        client_.errands().takePrivateMessages(areTaken);
        if (run.lasts() && !said.empty())
            core_.reply.saychat(said);
    });
}

} // namespace larkspin
