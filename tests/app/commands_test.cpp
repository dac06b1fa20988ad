// A command stands in three places: in the table that obeys, in the catalogue that helps, and in
// the manual.
#include "app/command_rows.h"
#include "app/program.h"
#include "chat/song_words.h"
#include "support/talk.h"
#include "text/fold.h"
#include "text/wildcard.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <set>

namespace larkspin {
namespace {

// A word, and whether something stands after it: "'ref", "'ref *".
std::string shapeOf(const std::string& line) {
    const auto word = line.find(' ');
    return line.substr(0, word) + (word == line.npos ? "" : " *");
}

// What the manual's tables say of each.
std::map<std::string, std::string> described() {
    std::ifstream manual(LARKSPIN_MANUAL);
    std::map<std::string, std::string> found;
    for (std::string line; std::getline(manual, line);)
        for (auto at = line.find("`'"); line[0] == '|' && at != line.npos;
             at = line.find("`'", at + 1))
            found[shapeOf(line.substr(at + 1, line.find('`', at + 1) - at - 1))] += line;
    found.erase("'"); // the trigger alone
    return found;
}

std::set<std::string> shapesOf(const auto& named) {
    std::set<std::string> shapes;
    for (const auto& [shape, rest] : named)
        shapes.insert(shape);
    return shapes;
}

// How words of some length begin.
std::set<std::string> beginnings(const std::string& text) {
    static const std::regex four("\\b[a-z]{4}");
    const std::string folded = foldCase(text);
    return {std::sregex_token_iterator(folded.begin(), folded.end(), four), {}};
}

struct Commands : testing::Test {
    // The help for each in the commands window.
    std::map<std::string, std::string> helps() const {
        const AppState& state = machine.program->shell.state;
        std::map<std::string, std::string> found;
        for (int row = 0; row < state.commandNames.count(); ++row)
            found[shapeOf(std::string(state.commandNames.row(row)))] = state.commandHelp.row(row);
        return found;
    }
    VirtualMachine machine{Lines{}};
};

TEST_F(Commands, AreObeyedListedAndDescribed) {
    std::set<std::string> obeyed;
    for (const auto handler : {HandledBy::NiteScan1, HandledBy::NiteScan2, HandledBy::NiteScan3})
        for (const CommandRow& row : commandRows(*machine.program, handler))
            obeyed.insert(shapeOf((row.afterTrigger ? "'" : "") + std::string(row.pattern)));
    EXPECT_EQ(shapesOf(described()), obeyed);
    for (const char* unlisted :
         {"'yes", "'no", "'view", "'cancel", "'m *", "'clear", "'help", "'help *"})
        EXPECT_EQ(obeyed.erase(unlisted), 1u) << unlisted;
    EXPECT_EQ(shapesOf(helps()), obeyed);
}

// The help by topics names each once, and its examples are lines that are obeyed.
TEST_F(Commands, HaveATopicAndAnExampleWhereTheirFormLeavesSomethingOpen) {
    std::set<std::string> patterns, shown;
    for (const auto handler : {HandledBy::NiteScan1, HandledBy::NiteScan2, HandledBy::NiteScan3})
        for (const CommandRow& row : commandRows(*machine.program, handler))
            patterns.emplace(row.pattern);
    std::multiset<std::string> taught;
    for (const SongWord& word : songWords()) {
        SCOPED_TRACE(word.form);
        const std::string shape = shapeOf(word.usage("'"));
        taught.insert(shape);
        EXPECT_EQ(word.example.empty(), !shape.ends_with(" *"));
        const std::string line(word.example.empty() ? word.form : word.example);
        EXPECT_EQ(std::ranges::count_if(
                      patterns, [&](const auto& each) { return fits(foldCase(line), each); }),
                  1);
        EXPECT_NE(word.told("'"), word.usage("'") + "  \u2013  ");
    }
    std::multiset<std::string> obeyed;
    for (const std::string& pattern : patterns)
        obeyed.insert(shapeOf(pattern.starts_with('\'') ? pattern : "'" + pattern));
    EXPECT_EQ(taught, obeyed);
}

TEST_F(Commands, HaveAHelpOfTheirOwnThatSaysWhatTheManualSays) {
    const std::set<std::string> ownWords{
        "'adv",    "'ap?",   "'cinfo", "'coms", "'eascii *", "'ec *", "'ef *",  "'free *", "'imson",
        "'imsoff", "'pstat", "'rt",    "'scra", "'sela",     "'soff", "'unx *", "'ut"};
    const auto manual = described();
    std::set<std::string> told;
    for (const auto& [shape, help] : helps()) {
        SCOPED_TRACE(shape + ": " + help);
        EXPECT_TRUE(told.insert(help).second);
        const auto words = beginnings(manual.at(shape));
        const bool hasCommon = std::ranges::any_of(
            beginnings(help), [&](const auto& beginning) { return words.contains(beginning); });
        EXPECT_EQ(hasCommon, !ownWords.contains(shape));
        if (shape.ends_with("off"))
            EXPECT_NE(help.find("off"), help.npos);
    }
}

} // namespace
} // namespace larkspin
