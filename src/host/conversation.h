// What is said in one place: in a room, in a private talk with somebody, or at home, where the
// owner is while he is in no other. It keeps the lines, and how many of them he hasn't read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <deque>
#include <string>

namespace larkspin {

struct KeptLine {
    enum class Kind : std::uint8_t {
        said,
        done,   // "/me waves"
        noted,  // what no program answers
        news,   // what happens beside what is said, in the program's words
        answer, // the same, for what the owner has asked
    };

    Kind kind = Kind::news;
    std::string speaker{}; // as he is shown; empty for the program's own words
    std::string text{};    // with the client's markup; plain for the program's own words
    std::time_t at = 0;    // when it was said; 0 for now
    bool isOwners = false; // he has said it, or the program for him
    bool isForOwner =
        false; // it calls him by name, is for nobody else, or he has sent it from afar
    bool isOnScreen = false;  // where he has typed it
    bool isOld = false;       // it is told only now, by whoever has kept it
    bool isUndated = false;   // it may be from long ago: nobody knows when it was said
    std::uint64_t mark = 0;   // by which the network knows it; 0 where it has none
    std::uint64_t number = 0; // of all conversations' lines, as they came, from 1
    std::size_t words = 0;    // what is read of the text, in a number; set as it is kept

    bool isProgramsWord() const { return kind == Kind::news || kind == Kind::answer; }
    std::size_t bytes() const { return sizeof *this + speaker.size() + text.size(); }
};

class Conversation {
public:
    enum class Kind { home, room, person };

    // What tells it from all others. At home the network is 0.
    struct Identity {
        Kind kind = Kind::home;
        int network = 0;
        std::string name{};
    };

    Conversation(Identity identity, std::string place)
        : identity_(std::move(identity)), place_(std::move(place)) {}

    Kind kind() const { return identity_.kind; }
    int network() const { return identity_.network; }
    const std::string& name() const { return identity_.name; }
    bool isAtHome() const { return network() == 0; }
    const std::string& place() const { return place_; } // its name for `ChatLines`

    // Whether something can be said there now.
    bool isOpen = true;

    // No more lines are kept than that, and no more bytes; the oldest ones go.
    static constexpr std::size_t mostLines = 10'000, mostBytes = 2'000'000;
    const std::deque<KeptLine>& lines() const { return lines_; }
    std::size_t bytes() const { return bytes_; }

    // What others have said while the owner was elsewhere, and how much of it is for him.
    int unread() const { return unread_; }
    int unreadForOwner() const { return unreadForOwner_; }

    // Whether an old line is among them already.
    bool holds(KeptLine line) const;

    // The number of the last line that was put among others, instead of at the end.
    std::uint64_t lastPutIn() const { return lastPutIn_; }

    // The number of the last line that he had read as he came here last.
    std::uint64_t readBefore() const { return readBefore_; }

    // Where what he hadn't read begins: the first line of others that is newer; one past the last
    // line if there is none.
    std::size_t firstUnread() const;

    // How many lines have come after the one of that number.
    int linesAfter(std::uint64_t number) const;

    // Whether a line calls him among others. In a private talk each line is for him.
    bool calls(const KeptLine& line) const;

private:
    friend class Conversations;

    void keep(KeptLine line, bool isInSight);
    void dropOldest();
    void come();
    void go();

    Identity identity_;
    std::string place_;
    std::deque<KeptLine> lines_;
    std::size_t bytes_ = 0;
    std::uint64_t newest_ = 0, lastPutIn_ = 0, read_ = 0, readBefore_ = 0;
    int unread_ = 0, unreadForOwner_ = 0;
    std::uint64_t lastVisit_ = 0; // a higher one for what was left later; 0 for never
};

} // namespace larkspin
