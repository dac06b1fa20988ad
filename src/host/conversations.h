// All conversations, and the one in front, which is what the owner looks at. Rooms and networks
// write into them. Front ends show what they hold, and write nothing.
#pragma once

#include "host/conversation.h"
#include "shell/event_loop.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class ChatLines;

class Conversations {
public:
    // Both must live on. There is one from the beginning, at home.
    Conversations(EventLoop& loop, ChatLines& lines, std::string home);
    Conversations(const Conversations&) = delete;
    Conversations& operator=(const Conversations&) = delete;

    // In bytes, of all conversations together. Beyond it the one that holds the most loses its
    // oldest lines.
    static constexpr std::size_t mostBytes = 24'000'000;

    using All = std::vector<std::unique_ptr<Conversation>>;
    const All& all() const { return all_; } // in the order in which they began

    Conversation& front() const { return *front_; }
    // The one where he was before the one in front, if something can be said there; home if none.
    Conversation& before() const;
    Conversation& home() const { return *home_; } // the place at home where he was last

    // Where the event at work belongs: the conversation in which the line was said that it is
    // about. For all else it is the one in front, or home if nothing can be said there. When the
    // conversation has gone it is `nowhere`, which is closed and on no network.
    Conversation& here();
    static constexpr int noNetwork = -1;

    // Where the event at work may speak; null if nothing can be said there any more. Where it has
    // spoken first, it stays.
    Conversation* toSpeakIn();

    Conversation* find(std::string_view place) const;

    // Those that aren't at home have numbers, from 1; 0 for one at home. Null if there is none.
    int numberOf(const Conversation& conversation) const;
    Conversation* numbered(int number) const;

    std::vector<Conversation*> ofNetwork(int network) const;
    int newNetwork(std::string name); // gives its number
    std::string networkName(int network) const;

    // The name, shown as an eye may see it, with that of the network if there are several.
    std::string fullName(const Conversation& conversation) const;

    Conversation& add(Conversation::Identity identity);
    void rename(Conversation& conversation, std::string name);

    // The one at home from the beginning stays. If it was in front, the owner is at home.
    void remove(const Conversation& conversation);

    void enter(Conversation& conversation);

    // Whether the owner sees the one in front. While he doesn't, what is said there is unread, too.
    void look(bool looks);
    bool looks() const { return looks_; }

    // What comes in front within the task does so because the owner wants it now. Else it comes by
    // itself, as when he is put out of a room, or a lost connection is back.
    void asOwnerWants(const Task& task);

    // Where a line is that he begins to type now.
    struct Begun {
        std::string place{};
        std::uint64_t moves = 0;
    };
    Begun begun() const { return {front_->place(), moves_}; }

    // To be called before such a line is taken, since what is typed in one conversation is never
    // said in another: if one has come in front by itself meanwhile, that where he has begun is in
    // front again, or home where nothing can be said any more. A blank place means in front.
    void goBackTo(const Begun& begun);

    // Where that would be, open or not; null if it has gone.
    const Conversation* whereBegun(const Begun& begun) const;

    // Keeps the line at the end; as of now, unless it has a time. An old line is put in after those
    // that aren't newer, unless it is there already.
    void keep(Conversation& conversation, KeptLine line);

    // Who hears of each line as it is kept. He must not wait, nor change anything here.
    using Kept = std::function<void(const Conversation& conversation, const KeptLine& line)>;
    void onKept(Kept kept) { kept_ = std::move(kept); }

    // A word of the program's in the conversation in front.
    void tell(KeptLine::Kind kind, const std::string& text);

    // Before another conversation is in front, one goes, or what is there is shown otherwise, and
    // in a flood before lines go: what a front end hasn't shown yet must be shown now.
    void beforeChange(Task task) { beforeChange_ = std::move(task); }

    // So many of the last lines in front are to be shown once more.
    void showAgain(int lines);
    struct Again {
        std::uint64_t number = 0; // counts the times that it was asked for
        int lines = 0;
    };
    const Again& again() const { return again_; }

    // Another one with each change of anything here.
    std::uint64_t revision() const { return revision_; }

    // Whether nothing can be said in the one in front.
    bool isFrontClosed() const { return !front_->isOpen; }

    std::uint64_t lastNumber() const { return lastNumber_; } // of a line

private:
    void boundBytes();

    EventLoop& loop_;
    ChatLines& lines_;
    All all_; // never empty
    Conversation nowhere_{{Conversation::Kind::room, noNetwork}, {}};
    Conversation* home_;
    Conversation* front_;
    std::uint64_t lastNumber_ = 0, lastPlace_ = 0, lastVisit_ = 0, revision_ = 1;
    std::uint64_t moves_ = 0; // how often another one has come in front by itself
    bool isAsOwnerWants_ = false, looks_ = true;
    std::vector<std::string> networks_; // the names of all there were; from 1
    std::size_t bytes_ = 0;
    Again again_;
    Task beforeChange_ = [] {};
    Kept kept_;
};

} // namespace larkspin
