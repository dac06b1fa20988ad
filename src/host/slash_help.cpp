#include "host/slash_help.h"

#include "chat/song_words.h"
#include "host/slash_examples.h"
#include "text/blanks.h"
#include "text/fold.h"
#include "text/parts.h"
#include "text/visible.h"

#include <algorithm>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

namespace {

constexpr const char* program = "larkspin"; // the topic

std::span<const SlashWord> all(const SlashWords* words) {
    return words ? std::span(words->all()) : std::span<const SlashWord>();
}

std::string helpOf(const SlashWord& word) {
    std::string line = word.usage() + "  \u2013  " + word.help;
    if (const auto example = exampleOf(word.name); !example.empty() && !word.arguments.empty())
        line.append("; such as /" + word.name + ' ').append(example);
    for (const std::string& alias : word.aliases)
        line += (&alias == &word.aliases.front() ? "; also /" : ", /") + alias;
    return line;
}

// In the order in which they come first, those of the songs before all others.
std::vector<std::string> topicsOf(const SlashWords* words) {
    std::vector<std::string> topics;
    const auto add = [&topics](std::string_view topic) {
        if (std::ranges::find(topics, topic) == topics.end())
            topics.emplace_back(topic);
    };
    for (const SongWord& word : songWords())
        add(word.topic);
    for (const SlashWord& word : all(words))
        add(word.topic);
    return topics;
}

void tellTopics(const Help& help) {
    for (const std::string& topic : topicsOf(help.words)) {
        std::string line = topic + ':';
        std::string_view last;
        for (const SongWord& word : songWords())
            if (word.topic == topic && word.name() != std::exchange(last, word.name()))
                line += ' ' + SongWord{topic, word.name(), ""}.usage(help.trigger);
        for (const SlashWord& word : all(help.words))
            if (word.topic == topic)
                line += " /" + word.name;
        help.tell(line);
    }
    help.tell("/help WORD tells of a word, /help TOPIC of a topic, such as /help " +
              std::string(songWords().front().topic));
}

bool tellTopic(const Help& help, std::string_view wanted) {
    const bool isAll = equalFolded(wanted, "all");
    bool isTold = isAll;
    for (const std::string& topic : topicsOf(help.words)) {
        if (!isAll && !equalFolded(topic, wanted))
            continue;
        isTold = true;
        for (const SongWord& word : songWords())
            if (word.topic == topic)
                help.tell(word.told(help.trigger));
        for (const SlashWord& word : all(help.words))
            if (word.topic == topic)
                help.tell(helpOf(word));
    }
    return isTold;
}

bool isNamed(const SongWord& word, std::string_view wanted) {
    std::string_view name = word.name();
    if (name.starts_with('\'')) // the same under any trigger
        name.remove_prefix(1);
    if (name.ends_with('?') && !wanted.ends_with('?'))
        name.remove_suffix(1);
    return equalFolded(name, wanted);
}

// A slash, or the trigger, before the word tells one kind of words from the other.
bool tellWord(const Help& help, std::string_view wanted) {
    std::string_view name = partedAt(wanted, ' ').head;
    const bool isSlash = name.starts_with('/');
    bool isSong = false, isTold = false;
    for (const std::string_view trigger : {std::string_view(help.trigger), std::string_view("'")})
        if (!isSlash && !isSong && !trigger.empty() && name.starts_with(trigger)) {
            name.remove_prefix(trigger.size());
            isSong = true;
        }
    for (const SongWord& word : songWords())
        if (!isSlash && isNamed(word, name)) {
            help.tell(word.told(help.trigger));
            isTold = true;
        }
    if (isSong || !help.words)
        return isTold;
    const SlashWord* const word = help.words->find(std::string(isSlash ? "" : "/").append(name));
    if (word)
        help.tell(helpOf(*word));
    return isTold || word;
}

} // namespace

void tellHelp(const Help& help, std::string_view about) {
    const std::string_view wanted = withoutBlanks(about);
    if (wanted.empty())
        tellTopics(help);
    else if (!tellTopic(help, wanted) && !tellWord(help, wanted))
        help.tell("there is no word and no topic " + visibleName(wanted));
}

SlashWord helpWord(const SlashWords& words, std::function<std::string()> trigger,
                   SlashWords::Tell tell) {
    return {"help",
            "[WORD|TOPIC|all]",
            "tells of all words",
            [&words, trigger = std::move(trigger), tell = std::move(tell)](std::string_view rest) {
                tellHelp({&words, trigger(), tell}, rest);
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
