#include "library/completion.h"

#include "library/playlist_row.h"
#include "shell/app_state.h"
#include "text/canonical.h"
#include "text/fold.h"
#include "text/parts.h"
#include "text/stand_ins.h"
#include "text/utf8.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr std::size_t playlistEnding = 4; // ".lkl"

// Collects the texts that fit a beginning, and what all of them have in common.
class Fitting {
public:
    // The texts replace the whole beginning.
    explicit Fitting(std::string_view beginning)
        : replaced_(characterCount(beginning)), sure_(foldCase(beginning).size()) {}

    // Adds a name that fits, and what it leads to as a choice. One that is shown like the one
    // before it counts once.
    void add(std::string_view name, Completion::Choice choice) {
        if (count_ > 0 && choice.shown == last_)
            return;
        common_ = count_ == 0 ? std::string(name) : common_.substr(0, commonBytes(name));
        last_ = choice.shown;
        if (choices_.size() < mostChoices)
            choices_.push_back({asSeen(choice.text), asSeen(choice.shown), std::move(choice.help)});
        ++count_;
    }

    Completion completion() {
        if (count_ == 0)
            return {};
        if (count_ == 1)
            return {replaced_, choices_.front().text, std::move(choices_)};
        const int others = count_ - static_cast<int>(choices_.size());
        const bool addsNothing = foldCase(common_).size() <= sure_;
        return {replaced_, asSeen(common_), std::move(choices_), others, addsNothing};
    }

private:
    std::size_t commonBytes(std::string_view text) const {
        std::string_view rest = common_;
        while (!rest.empty() && !text.empty()) {
            // Compared letter by letter, each with its accents, so that none is cut in two.
            const std::size_t length = clusterLength(rest);
            const std::size_t other = clusterLength(text);
            if (!equalFolded(rest.substr(0, length), text.substr(0, other)))
                break;
            rest.remove_prefix(length);
            text.remove_prefix(other);
        }
        return common_.size() - rest.size();
    }

    std::size_t replaced_;
    std::size_t sure_;   // bytes of it, once folded
    std::string common_; // in the spelling of the first one
    std::string last_;
    std::vector<Completion::Choice> choices_;
    int count_ = 0;
};

template <typename Fits>
Completion songsThat(const AppState& state, std::string_view typed, bool byNumber, Fits fits) {
    Fitting fitting(typed);
    for (int index = 0; index < state.masterList.count(); ++index) {
        if (!fits(rowname(state.masterList.folded(index))))
            continue;
        const std::string name(rowname(state.masterList.row(index)));
        if (name.empty())
            continue; // no song
        // A name becomes the number that the command takes.
        const std::string number = std::to_string(index + 1);
        fitting.add(name, byNumber ? Completion::Choice{number, number + "  " + name}
                                   : Completion::Choice{name, name});
    }
    return fitting.completion();
}

// Many names begin with the number of a track, so what begins none is looked for further on. Of
// several songs that hold it nothing more is sure then.
Completion songs(const AppState& state, std::string_view typed, bool byNumber) {
    const std::string sought = foldName(typed);
    Completion found = songsThat(state, typed, byNumber,
                                 [&](std::string_view name) { return name.starts_with(sought); });
    if (!found.choices.empty())
        return found;
    found = songsThat(state, typed, byNumber,
                      [&](std::string_view name) { return name.find(sought) != name.npos; });
    if (found.choices.size() > 1) {
        found.text = typed;
        found.addsNothing = true;
    }
    return found;
}

Completion playlists(const AppState& state, std::string_view typed) {
    Fitting fitting(typed);
    const std::string beginning = foldName(typed);
    for (const std::string& fileName : state.p) {
        const std::string_view name = withoutLast(fileName, playlistEnding);
        if (foldCase(name).starts_with(beginning))
            fitting.add(name, {std::string(name), std::string(name)});
    }
    return fitting.completion();
}

// A command that can't do without an argument gets a blank after it.
Completion commands(const AppState& state, std::string_view typed) {
    Fitting fitting(typed);
    const std::string beginning = foldCase(typed);
    for (int index = 0; index < state.commandNames.count(); ++index) {
        const std::string_view form = state.commandNames.row(index);
        const auto blank = form.find(' ', std::min(state.trigger.size(), form.size()));
        const std::string_view word = form.substr(0, blank);
        if (foldCase(word).starts_with(beginning))
            fitting.add(word, {std::string(form.substr(0, blank + (blank != form.npos))),
                               std::string(form), std::string(state.commandHelp.row(index))});
    }
    return fitting.completion();
}

} // namespace

Completion completionOf(const AppState& state, std::string_view typed) {
    const std::size_t triggerLength = prefixLength(typed, characterCount(state.trigger));
    const std::string_view afterTrigger = typed.substr(triggerLength);
    const auto [typedWord, argument, hasArgument] = partedAt(afterTrigger, ' ');
    // Before the first blank the command's own word is completed, after it the argument.
    if (!hasArgument)
        return commands(state, typed);
    if (!equalFolded(typed.substr(0, triggerLength), state.trigger))
        return {};
    const std::string word = foldCase(typedWord);
    if (word == "play" || word == "rnd" || word == "num")
        return songs(state, argument, word == "num");
    if (word == "list" || word == "xlist" || word == "save")
        return playlists(state, argument);
    return {};
}

Completion completionAmong(const std::vector<CompletedWord>& words, std::string_view typed) {
    Fitting fitting(typed);
    const std::string beginning = foldCase(typed);
    for (const auto& [word, arguments, help] : words) {
        if (!foldCase(word).starts_with(beginning))
            continue;
        const bool isWhole = arguments.empty() || arguments.starts_with('[');
        fitting.add(word,
                    {isWhole ? word : word + ' ',
                     arguments.empty() ? word : std::string(word).append(" ").append(arguments),
                     help});
    }
    return fitting.completion();
}

} // namespace larkspin
