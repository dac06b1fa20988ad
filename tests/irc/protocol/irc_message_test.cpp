// Lines of the protocol, there and back, and names as servers compare them.
#include "irc/protocol/irc_features.h"
#include "irc/protocol/irc_input.h"
#include "irc/protocol/irc_message.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

std::string parts(std::string_view line) {
    const auto message = readIrcMessage(line);
    if (!message)
        return "nothing";
    std::string all;
    for (const auto& [name, value] : message->tags)
        all += name + '=' + value + ';';
    all += '<' + message->sender + "> " + message->command;
    for (const std::string& parameter : message->parameters)
        all += '|' + parameter;
    return all;
}

TEST(IrcMessage, IsTakenApart) {
    const struct {
        const char *line, *parts;
    } cases[] = {
        {":ann!a@h PRIVMSG #c :two words :)", "<ann!a@h> PRIVMSG|#c|two words :)"},
        {"  ping  a   b  ", "<> PING|a|b"},
        {":irc  001   me   :", "<irc> 001|me|"},
        {"@time=1;a/b=\\:\\s\\\\\\r\\n\\x\\;c;=d :s PART :#c",
         "time=1;a/b=; \\\r\nx;c=;<s> PART|#c"},
        {"M 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 :17",
         "<> M|1|2|3|4|5|6|7|8|9|10|11|12|13|14|15 16 :17"},
        {"M 1 2 3 4 5 6 7 8 9 10 11 12 13 14 :15 16",
         "<> M|1|2|3|4|5|6|7|8|9|10|11|12|13|14|15 16"},
        {"   ", "nothing"},
        {"@a :ann ", "nothing"},
        {"\x1b[2J a", "nothing"},
    };
    for (const auto& [line, expected] : cases)
        EXPECT_EQ(parts(line), expected) << line;
}

TEST(IrcMessage, ATagIsFoundByItsNameAndTheLastOneCounts) {
    const auto message = *readIrcMessage("@a=1;b;a=2 PING");
    EXPECT_EQ(message.tag("a"), "2");
    EXPECT_EQ(message.tag("b"), "");
    EXPECT_EQ(message.tag("c"), "");
}

TEST(IrcMessage, NothingThatIsSentBecomesMoreThanOneLineOrParameter) {
    EXPECT_EQ(ircLine("TOPIC", {"#c", ""}), "TOPIC #c :\r\n");
    EXPECT_EQ(ircLine("PRIVMSG", {"#c x", std::string("a\r\nQ\0\n :b", 9)}),
              "PRIVMSG #c :aQ :b\r\n");
    EXPECT_EQ(ircLine("KICK", {"#c", "a b", ":c"}), "KICK #c a ::c\r\n");
    EXPECT_EQ(ircLine("KICK", {"#c", "", "x"}), "");
    EXPECT_EQ(ircLine("KICK", {":#c", "a"}), "");
    const std::string line = ircLine("PRIVMSG", {"#c", std::string(498, 'x') + "ä"});
    EXPECT_EQ(line.substr(508), "x\r\n");
}

TEST(IrcInput, LinesComeWholeAndEndAtLineFeedsAlone) {
    IrcInput input;
    std::string lines;
    const auto add = [&](std::string_view bytes) {
        input.add(bytes, [&](std::string_view line) { lines.append(line) += '|'; });
    };
    for (const char byte : std::string_view("PING a\r\n\r\n\nhi\rPING b\r\r\nbegun"))
        add({&byte, 1});
    EXPECT_EQ(lines, "PING a|hi\rPING b|");
    lines.clear();
    add(" whole\n");
    for (int part = 0; part < 100; ++part)
        add(std::string(1000, 'x'));
    add("end\nnext\nlost");
    input.clear();
    add("x\n");
    EXPECT_EQ(lines, "begun whole|next|x|");
}

TEST(IrcNames, CompareAsTheServerDoes) {
    EXPECT_EQ(foldIrcName("A[]\\^Ä", CaseMapping::rfc1459), "a{}|~Ä");
    EXPECT_EQ(foldIrcName("A[]\\^", CaseMapping::rfc1459Strict), "a{}|^");
    EXPECT_EQ(foldIrcName("A[]\\^", CaseMapping::ascii), "a[]\\^");
}

TEST(IrcNames, FeaturesAreAsToldLast) {
    IrcFeatures features;
    const struct {
        const char *words, *signs, *modes;
    } cases[] = {
        {"PREFIX=(qov)~@+ CASEMAPPING=ascii CHANMODES=eIbq,k,fl,inm CHANTYPES=!", "~@+", "k"},
        {"PREFIX=(ov)@ PREFIX=) PREFIX=ov CASEMAPPING=rfc1459 CHANMODES=b", "~@+", ""},
        {"-PREFIX -CHANMODES", "@+", "k"},
        {"PREFIX=", "", "k"},
    };
    for (const auto& [words, signs, modes] : cases) {
        features.read(*readIrcMessage(std::string(":irc 005 me ") + words + " :are supported"));
        EXPECT_EQ(features.rankSigns, signs) << words;
        EXPECT_EQ(features.parameterModes, modes) << words;
        EXPECT_EQ(features.fold("A^"), "a^");
        EXPECT_FALSE(features.isChannel("#a"));
    }
    for (const bool has : {true, false}) {
        features.read(*readIrcMessage(std::string(":irc 005 me -CHANTYPES ") +
                                      (has ? "STATUSMSG=@" : "-STATUSMSG") + " :are supported"));
        EXPECT_TRUE(features.isChannel("#a"));
        EXPECT_EQ(features.isRankedChannel("@#a"), has);
        EXPECT_FALSE(features.isRankedChannel("@a"));
    }
    for (const auto& [mapping, name] : {std::pair("rfc1459", "a~{"),
                                        {"strict-rfc1459", "a^{"},
                                        {"rfc1459-strict", "a^{"},
                                        {"rfc7613", "a^["}}) {
        IrcFeatures told;
        told.read(*readIrcMessage(std::string(":irc 005 me CASEMAPPING=") + mapping + " :x"));
        EXPECT_EQ(told.fold("A^["), name) << mapping;
    }
}

} // namespace
} // namespace larkspin
