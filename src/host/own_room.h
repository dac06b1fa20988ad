// The room for when there is no chat client: the owner's own, and where nobody else is but those
// who are let in by name. What he types is said under his name, and so is what the program says for
// him. He owns it, and the private rooms that he enters from it: he may put people out.
//
// What a client could do beside that has no meaning here and does nothing.
#pragma once

#include "chat/chat_lines.h"
#include "host/conversations.h"
#include "host/host_client.h"
#include "host/shown_room.h"
#include "text/row_list.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class OwnRoom : public HostClient, public RoomPeople, public ClientErrands, public ShownRoom {
public:
    // All must live on.
    OwnRoom(Conversations& conversations, ChatLines& lines, std::string screenName,
            RoomDisplay shown);
    OwnRoom(const OwnRoom&) = delete;
    OwnRoom& operator=(const OwnRoom&) = delete;

    static constexpr std::string_view firstRoom = "lobby";
    static constexpr std::size_t longestName = 64; // characters, of a person or a room
    static constexpr std::size_t mostRooms = 100;  // with 32,767 people in each

    // A line that the owner says himself. These are to be called from an event of its own each.
    void say(const std::string& line, bool isOnScreen = false); // where he has typed it
    void act(const std::string& doing);                         // "/me waves"

    // Somebody else comes in without a word, says something, which brings him in as well, or goes.
    // Without regard to case a name is one person's, who is shown as he was first called; the
    // owner's can't be borrowed. What others say while they are kept out isn't heard, and what they
    // say while they are ignored isn't shown either.
    void comeIn(const std::string& name);
    void sayAs(const ChatLine& line);
    void leave(const std::string& name);

    // A private message to the owner, from wherever.
    void whisper(const std::string& name, const std::string& text);

    // A room keeps its people, what was said in it, and whom it keeps out, while the owner is
    // elsewhere. Whom he ignores, he ignores in all of them.
    void enterRoom(const std::string& name);

    std::string name() const override { return shown().conversation->name(); }
    std::string ownName() const override { return screenName_; }
    bool isIgnored(std::string_view name) const override { return ignored_.contains(name); }
    const RowList& people() const override { return shown().people; }
    const RowList& ejected() const { return shown().ejected; }

    std::string currentScreenName() override { return screenName_; }
    void sendChatLine(const std::string& line) override;
    bool tellOwner(const std::string& text) override {
        tell(text);
        return true;
    }
    void clearChatInput() override { shown_.clearInput(); }
    void bringHostForward() override { shown_.bringForward(); }

    RoomPeople& roomPeople() override { return *this; }
    People listPeople() override { return listed(here().people, visit_); }
    bool ownerMayEject() override { return true; }
    Deed toggleIgnored(const Person& person) override;
    Deed eject(const Person& person) override;
    Deed allow(const Person& person) override;
    std::optional<People> beginAllowing() override { return listed(here().ejected, visit_); }

    ClientErrands& errands() override { return *this; }
    void enterPrivateRoom(const std::string& name) override { enterRoom(name); }
    void takePrivateMessages(bool areTaken) override { takesMessages_ = areTaken; }

private:
    struct Place {
        Conversation* conversation;
        RowList people = RowList(), ejected = RowList();
    };

    // The room to which the event at work belongs, and the one that is shown; the one in which the
    // owner was last where that is none of these.
    const Place& placeOf(const Conversation& conversation) const;
    const Place& shown() const { return placeOf(conversations_.front()); }
    const Place& here() const { return placeOf(conversations_.here()); }
    Place& here() { return const_cast<Place&>(std::as_const(*this).here()); }
    void tell(const std::string& text) const;
    void hear(const std::string& speaker, const std::string& line, bool isOnScreen);
    bool isOwner(std::string_view name) const;
    std::optional<int> rowOf(const RowList& list, const Person& person) const;
    Deed notDone(const Person& person) const {
        return person.list == visit_ ? Deed::undone : Deed::over;
    }
    bool isTooLong(std::string_view name) const;
    std::optional<std::string> othersName(const std::string& given) const;
    std::optional<std::string> admit(const std::string& given);
    Place* findOrMakeRoom(const std::string& name);

    Conversations& conversations_;
    ChatLines& lines_;
    std::string screenName_;
    RoomDisplay shown_;
    std::vector<Place> rooms_; // never empty
    RowList ignored_;
    bool takesMessages_ = true;
    std::uint64_t visit_ = 0; // how often he has gone to a room: by that a list is known
};

} // namespace larkspin
