#include "host/slash_help.h"

#include "text/blanks.h"
#include "text/fold.h"
#include "text/visible.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

namespace {

constexpr const char* program = "larkspin"; // the topic

std::string helpOf(const SlashWord& word) {
    std::string line = word.usage() + "  \u2013  " + word.help;
    for (const std::string& alias : word.aliases)
        line += (&alias == &word.aliases.front() ? "; also /" : ", /") + alias;
    return line;
}

// In the order in which they come first.
std::vector<std::string> topicsOf(const SlashWords& words) {
    std::vector<std::string> topics;
    for (const SlashWord& word : words.all())
        if (std::ranges::find(topics, word.topic) == topics.end())
            topics.push_back(word.topic);
    return topics;
}

void tellTopics(const SlashWords& words, const SlashWords::Tell& tell) {
    for (const std::string& topic : topicsOf(words)) {
        std::string line = topic + ':';
        for (const SlashWord& word : words.all())
            if (word.topic == topic)
                line += " /" + word.name;
        tell(line);
    }
    tell("/help WORD tells of a word, /help TOPIC of a topic, such as /help " +
         words.all().front().topic);
}

void tellAbout(const SlashWords& words, std::string_view wanted, const SlashWords::Tell& tell) {
    const bool isAll = equalFolded(wanted, "all");
    bool isTopic = false;
    for (const SlashWord& word : words.all())
        if (isAll || equalFolded(word.topic, wanted)) {
            tell(helpOf(word));
            isTopic = true;
        }
    const std::string line =
        wanted.starts_with('/') ? std::string(wanted) : '/' + std::string(wanted);
    if (const SlashWord* const word = isTopic ? nullptr : words.find(line))
        tell(helpOf(*word));
    else if (!isTopic)
        tell("there is no word and no topic " + visibleName(wanted));
}

} // namespace

SlashWord helpWord(const SlashWords& words, SlashWords::Tell tell) {
    return {"help",
            "[WORD|TOPIC|all]",
            "tells of these words",
            [&words, tell = std::move(tell)](std::string_view rest) {
                const std::string_view wanted = withoutBlanks(rest);
                if (wanted.empty())
                    tellTopics(words, tell);
                else
                    tellAbout(words, wanted, tell);
                return true;
            },
            {"h"},
            program};
}

SlashWord quitWord(Task quit) {
    return {"quit",
            "",
            "saves and ends larkspin, on a network too: /disconnect leaves that alone",
            [quit = std::move(quit)](std::string_view) {
                quit();
                return true;
            },
            {"exit"},
            program};
}

} // namespace larkspin
