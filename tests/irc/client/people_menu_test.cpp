// What can be done about somebody in the room, as a menu has it.
#include "irc/client/irc_words_fixture.h"
#include "irc/client/people_menu.h"

namespace larkspin {
namespace {

struct PeopleMenuTest : IrcWordsTest {
    std::string entriesFor(const std::string& name) {
        std::string names;
        for (const MenuEntry& entry : menu.of(name))
            names += entry.name + ' ';
        return names;
    }
    void choose(const std::string& name, const std::string& wanted) {
        for (const MenuEntry& entry : menu.of(name))
            if (entry.name == wanted)
                chosen = entry.action;
    }
    std::string run; // lines
    PeopleMenu menu{rooms->conversations, rooms->own, rooms->networks,
                    [this](const std::string& line) { run += line + '\n'; }};
    Task chosen;
};

TEST_F(PeopleMenuTest, HasWhatIsPossibleThere) {
    rooms->own.comeIn("bob");
    EXPECT_EQ(entriesFor("jo"), "");
    EXPECT_EQ(entriesFor("bob"), "ignore ban bye ");
    choose("bob", "ban");
    chosen();
    EXPECT_EQ(rooms->own.people().count(), 1);
    server.names["#den"] = "jo @ann";
    typed("/connect irc.test jo #den");
    server.say(":irc 005 jo PREFIX=(ohv)@%+ :are supported");
    const std::string plain = "query whois ignore ";
    const std::pair<const char*, std::string> cases[] = {
        {"+v jo", ""},
        {"+h jo", "ranks voice out kick ban "},
        {"+o jo", "ranks deop voice out kick ban "}};
    for (const auto& [modes, more] : cases) {
        server.say(std::string(":ann!a@h MODE #den ") + modes);
        seenWithin(1s);
        EXPECT_EQ(entriesFor("ann"), plain + more) << modes;
    }
    EXPECT_EQ(entriesFor("jo"), "whois ");
    typed("/ignore ann");
    EXPECT_EQ(entriesFor("ann").substr(0, 20), "query whois unignore");
    server.say(":ann!a@h KICK #den jo :out");
    seenWithin(1s);
    rooms->conversations.enter(*rooms->conversations.numbered(1));
    EXPECT_EQ(entriesFor("ann"), "");
}

TEST_F(PeopleMenuTest, DoesNothingElsewhere) {
    server.names["#den"] = "@jo ann";
    typed("/connect irc.test jo #den");
    choose("ann", "kick");
    chosen();
    EXPECT_EQ(run, "/kick ann\n");
    rooms->conversations.enter(rooms->conversations.home());
    chosen();
    menu.talkTo("ann");
    EXPECT_EQ(run, "/kick ann\n");
}

} // namespace
} // namespace larkspin
