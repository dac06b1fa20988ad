#include "library/media_filter.h"

#include "chat/reply.h"
#include "library/listers.h"
#include "shell/app_state.h"
#include "shell/menu.h"
#include "text/fold.h"

#include <algorithm>
#include <iterator>

namespace larkspin {

namespace {

struct Filter {
    std::string_view word;
    std::string_view pattern;
    bool AppState::*checkMark;
    std::string_view typedWord; // as the command takes it
    std::string_view entry;     // of the menu
    std::string_view files;     // what a file dialog calls them; empty for all of them
};

constexpr Filter filters[] = {
    // the last one lets all through
    {"mp3", "*.mp3", &AppState::fmp3, "mp3", "fmp3", "mpeg layer 3"},
    {"wav", "*.wav", &AppState::fwav, "wav", "fwav", "wave"},
    {"wma", "*.wma", &AppState::fwma, "wma", "fwma", "windows media audio"},
    {"midi", "*.mid", &AppState::fmid, "midi", "fmid", "midi"},
    {"all types", "*.mp3;*.wav;*.wma;*.mid", &AppState::fallt, "all", "fallt", ""},
};

const Filter* find(std::string_view word) {
    const auto found = std::find_if(std::begin(filters), std::end(filters),
                                    [word](const Filter& filter) { return filter.word == word; });
    return found == std::end(filters) ? nullptr : found;
}

} // namespace

FileType fileTypeOf(std::string_view mediaFilter) {
    const Filter* const found = find(mediaFilter);
    if (!found || found->files.empty())
        return {"media files (*.mid, *.mp3, *.wav, *.wma)", "*.mid;*.mp3;*.wav;*.wma"};
    const std::string pattern(found->pattern);
    return {std::string(found->files) + " files (" + pattern + ")", pattern};
}

void MediaFilter::load(const std::string& stored) {
    const std::string word = foldCase(stored);
    choose(find(word) ? word : "mp3");
}

void MediaFilter::choose(std::string_view word) {
    if (!apply(word))
        return;
    for (const Filter& filter : filters)
        state_.*filter.checkMark = filter.word == word;
}

bool MediaFilter::apply(std::string_view word) {
    const Filter* filter = find(word);
    if (!filter)
        return false;
    File1_.setPattern(filter->pattern);
    state_.mediaFilter = filter->word;
    state_.scanpcf = "scan pc for " + state_.mediaFilter;
    return true;
}

void MediaFilter::restorepattern() {
    const Filter* filter = find(state_.mediaFilter);
    File1_.setPattern(filter ? filter->pattern : std::rbegin(filters)->pattern);
}

std::vector<MenuEntry> MediaFilter::menu() {
    std::vector<MenuEntry> entries;
    for (const std::string_view shown : {"fmp3", "fwma", "fwav", "fmid", "fallt"})
        for (const Filter& filter : filters)
            if (filter.entry == shown)
                entries.push_back({.name = std::string(filter.entry),
                                   .caption = std::string(filter.word),
                                   .action = [this, &filter] { choose(filter.word); },
                                   .checked = state_.*filter.checkMark});
    return entries;
}

// The check mark in the menu stays where it is until an entry there is chosen.
void MediaFilter::filter(const std::string& word) {
    if (reply_.silentguard())
        return;
    const auto typed = std::find_if(std::begin(filters), std::end(filters),
                                    [&](const Filter& f) { return f.typedWord == word; });
    if (typed == std::end(filters)) {
        reply_.saychat("invalid. choose mp3, wav, wma, midi, or all");
        return;
    }
    apply(typed->word);
    reply_.saychat("new media filter:  <b>" + state_.mediaFilter);
}

void MediaFilter::tellFilter() {
    reply_.sayOrBox("current media filter:  <b>" + state_.mediaFilter + "</b> (<b>" +
                        File1_.pattern() + "</b>)",
                    "current media filter:  " + state_.mediaFilter);
}

} // namespace larkspin
