#include "library/media_filter.h"

#include "chat/reply.h"
#include "library/listers.h"
#include "shell/app_state.h"
#include "shell/media_types.h"
#include "shell/menu.h"
#include "text/fold.h"

#include <algorithm>

namespace larkspin {

void MediaFilter::load(const std::string& stored) {
    const std::string word = foldCase(stored);
    const bool isKnown = mediaTypeOf(word).word == word;
    choose(mediaTypeOf(isKnown ? word : "mp3"));
}

void MediaFilter::choose(const MediaType& type) {
    apply(type);
    state_.markedFilter = type.word;
}

void MediaFilter::apply(const MediaType& type) {
    File1_.setPattern(patternOf(type));
    state_.mediaFilter = type.word;
    state_.scanpcf = "scan pc for " + state_.mediaFilter;
}

void MediaFilter::takeAll() {
    choose(mediaTypeOf(anyMediaType));
}

void MediaFilter::restorepattern() {
    File1_.setPattern(patternOf(mediaTypeOf(state_.mediaFilter)));
}

std::vector<MenuEntry> MediaFilter::menu() {
    std::vector<MenuEntry> entries;
    for (const MediaType* type : mediaTypesInMenu())
        entries.push_back({.name = std::string(type->entry),
                           .caption = std::string(type->word),
                           .action = [this, type] { choose(*type); },
                           .checked = state_.markedFilter == type->word});
    return entries;
}

// The check mark in the menu stays where it is until an entry there is chosen.
void MediaFilter::filter(const std::string& typed) {
    if (reply_.silentguard())
        return;
    const auto types = mediaTypes();
    const auto wanted = std::ranges::find(types, typed, &MediaType::typed);
    if (wanted == types.end()) {
        reply_.saychat("invalid. choose " + typedMediaWords());
        return;
    }
    apply(*wanted);
    reply_.saychat("new media filter:  <b>" + state_.mediaFilter);
}

void MediaFilter::tellFilter() {
    reply_.sayOrBox("current media filter:  <b>" + state_.mediaFilter + "</b> (<b>" +
                        File1_.pattern() + "</b>)",
                    "current media filter:  " + state_.mediaFilter);
}

} // namespace larkspin
