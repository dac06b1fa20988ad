// The conversations one below the other, and what is unread in them.
#include "host/conversation_rows.h"
#include "host/conversations.h"
#include "support/virtual_machine.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

struct ConversationRows : testing::Test {
    Conversation& begin(int on, Conversation::Kind kind, const std::string& name) {
        return conversations.add({kind, on, name});
    }
    void say(Conversation& in, bool isForOwner = false) {
        conversations.keep(
            in, {.kind = KeptLine::Kind::said, .speaker = "ann", .isForOwner = isForOwner});
    }
    VirtualLoop loop;
    ChatLines lines{loop};
    Conversations conversations{loop, lines, "lobby"};
    const int net = conversations.newNetwork("net"), other = conversations.newNetwork("other");
    Conversation& ann = begin(net, Conversation::Kind::person, "ann");
    Conversation& far = begin(other, Conversation::Kind::room, "#far");
    Conversation& den = begin(net, Conversation::Kind::room, "#den");
};

TEST_F(ConversationRows, StandByNetworkWithRoomsBeforeTalks) {
    begin(0, Conversation::Kind::room, "own");
    say(den);
    say(ann, true);
    den.isOpen = false;
    std::string all;
    for (const ConversationRow& row : conversationRows(conversations))
        all += (row.number ? std::to_string(*row.number) : "-") + " " + row.spoken() + '\n';
    EXPECT_EQ(all, "0 lobby, here\n- own\n- net\n3 #den, 1 unread, left\n"
                   "1 ann, 1 unread, 1 for you\n- other\n2 #far\n");
}

TEST_F(ConversationRows, LeadInACircleAndToWhatIsUnread) {
    EXPECT_EQ(&besideFront(conversations, 1), &den);
    EXPECT_EQ(&besideFront(conversations, -1), &far);
    EXPECT_EQ(&besideFront(conversations, 4), &conversations.home());
    EXPECT_EQ(nextUnread(conversations), nullptr);
    say(conversations.home());
    say(ann);
    EXPECT_EQ(nextUnread(conversations), &ann);
    say(far, true);
    EXPECT_EQ(nextUnread(conversations), &far);
}

TEST_F(ConversationRows, TheUnreadBeginsAtTheFirstLineOfOthers) {
    const auto first = [&] { return den.firstUnread(); };
    conversations.enter(den);
    say(den);
    EXPECT_EQ(first(), 0U);
    conversations.look(false);
    conversations.keep(den, {.text = "bob joins"});
    say(den);
    EXPECT_EQ(den.unread(), 1);
    conversations.enter(far); // by itself
    conversations.enter(den);
    EXPECT_EQ(den.unread(), 1);
    conversations.look(true);
    EXPECT_EQ(den.unread(), 0);
    EXPECT_EQ(first(), 2U);
    conversations.keep(den, {.kind = KeptLine::Kind::said, .text = "mine", .isOwners = true});
    EXPECT_EQ(den.linesAfter(den.lines()[1].number), 2);
    conversations.enter(far);
    conversations.keep(
        den, {.kind = KeptLine::Kind::said, .text = "played back", .at = 1, .isOld = true});
    conversations.enter(den);
    EXPECT_EQ(first(), 0U);
    conversations.enter(far);
    conversations.enter(den);
    EXPECT_EQ(first(), den.lines().size());
}

} // namespace
} // namespace larkspin
