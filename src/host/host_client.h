// The chat client that the owner sits in, as the program works it: by what it does for him, in
// plain values. Which window, button or line of a protocol that takes, only the client knows.
//
// The client may be absent, and may go at any moment: then nothing is told and nothing happens.
// What isn't overridden behaves so. Where an operation waits for the client, events are served, so
// that any state may be another afterwards; the wait has a bound. Nothing throws.
#pragma once

#include "chat/room.h"
#include "host/person.h"

#include <optional>
#include <string>

namespace larkspin {

// What came of something that was asked for about a person. It is `over` when the next person
// needn't be tried any more: the client doesn't offer it, or the owner has gone to another room.
enum class Deed { done, undone, over };

// Those who are in the room, and what the owner may do about them. All of it may wait.
class RoomPeople {
public:
    virtual ~RoomPeople() = default;

    virtual People listPeople() { return {}; } // with the owner
    virtual bool ownerMayEject() { return false; }

    // What is done about one person, who may have gone meanwhile.
    virtual Deed toggleIgnored(const Person&) { return Deed::over; }
    virtual Deed eject(const Person&) { return Deed::over; }
    virtual Deed allow(const Person&) { return Deed::over; } // back in

    // Those who were put out, for `allow`; nothing if the client doesn't show them. It shows them
    // until the end, which must be told in any case.
    virtual std::optional<People> beginAllowing() { return std::nullopt; }
    virtual void endAllowing() {}
};

// What the client does for the owner otherwise.
class ClientErrands {
public:
    enum class Mail { unread, old, sent };

    virtual ~ClientErrands() = default;

    // `gotoKeyword` goes to a keyword or an address of the client's. `enterPrivateRoom` makes the
    // room if there is none of that name.
    virtual void gotoKeyword(const std::string& /*keyword*/) {}
    virtual void enterPrivateRoom(const std::string& /*name*/) {}

    // Whether there is mail at all in the client.
    virtual bool hasMail() const { return false; }
    virtual void openMail(Mail) {}
    virtual void signOff() {}
    virtual void closeHost() {}

    // Hides the window that greets the owner; he stays signed on.
    virtual void hideWelcomeWindow() {}

    // Whether private messages of others come through. May wait.
    virtual void takePrivateMessages(bool) {}

    // How long the owner has been online, as the client words it: "online for 12 minutes.". May
    // wait.
    virtual std::optional<std::string> timeOnline() { return std::nullopt; }

    // Under which name the client's messenger signs on; empty when it never did.
    virtual std::string messengerAccount() { return {}; }
};

// How far a file is, in pieces of the client's own texts.
struct Transfer {
    std::string file;
    std::string percentage; // a download's with its sign, where it has one
    std::string minutes;
};

// A notice that the client puts in the owner's way: a question, a word that something has ended, or
// how far an upload is.
struct Notice {
    std::string text;
    bool isUpload = false;
    bool tellsOfTransfer = false; // one that is running
    bool tellsOfEnd = false;      // of a transfer
    bool asksForOwner = false;    // whether he is still there
    std::optional<Transfer> upload;
};

class ClientNotices {
public:
    virtual ~ClientNotices() = default;

    virtual std::optional<Notice> notice() { return std::nullopt; }

    // These work the notice that is shown at the time of the call: press its button, take it out of
    // the way, bring it back.
    virtual void confirm() {}
    virtual void hide() {}
    virtual void bringBack() {}

    virtual std::optional<Transfer> download() { return std::nullopt; }
};

class HostClient : public Room {
public:
    // To be asked for anew at each use: the owner may sit in another client then.
    virtual RoomPeople& roomPeople() { return nobody_; }
    virtual ClientErrands& errands() { return noErrands_; }
    virtual ClientNotices& notices() { return noNotices_; }

private:
    RoomPeople nobody_;
    ClientErrands noErrands_;
    ClientNotices noNotices_;
};

} // namespace larkspin
