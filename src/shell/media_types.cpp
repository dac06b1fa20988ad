#include "shell/media_types.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr int lastPlace = 100;

constexpr MediaType types[] = {
    {"mp3", "mp3", "*.mp3", "mpeg layer 3", "fmp3", 1},
    {"wav", "wav", "*.wav", "wave", "fwav", 3},
    {"wma", "wma", "*.wma", "windows media audio", "fwma", 2},
    {"midi", "midi", "*.mid", "midi", "fmid", 4},
    {allMediaTypes, "all", "", "media", "fallt", lastPlace},
};

using Texts = std::vector<std::string_view>;

Texts patternsOf(const MediaType& type) {
    if (!type.pattern.empty())
        return {type.pattern};
    Texts patterns;
    for (const MediaType* above = types; above != &type; ++above)
        if (!above->pattern.empty())
            patterns.push_back(above->pattern);
    return patterns;
}

std::string joined(const Texts& texts, std::string_view between, std::string_view beforeLast = {}) {
    std::string text;
    for (std::size_t at = 0; at < texts.size(); ++at) {
        if (at > 0)
            text += between;
        if (at > 0 && at + 1 == texts.size())
            text += beforeLast;
        text += texts[at];
    }
    return text;
}

} // namespace

std::span<const MediaType> mediaTypes() {
    return types;
}

std::vector<const MediaType*> mediaTypesInMenu() {
    std::vector<const MediaType*> entries;
    for (const MediaType& type : types)
        entries.push_back(&type);
    std::ranges::sort(entries, {}, &MediaType::place);
    return entries;
}

const MediaType& mediaTypeOf(std::string_view word) {
    const auto found = std::ranges::find(types, word, &MediaType::word);
    return found == std::end(types) ? mediaTypeOf(allMediaTypes) : *found;
}

std::string patternOf(const MediaType& type) {
    return joined(patternsOf(type), ";");
}

FileType fileTypeOf(const MediaType& type) {
    Texts patterns = patternsOf(type);
    std::ranges::sort(patterns);
    return {std::string(type.files) + " files (" + joined(patterns, ", ") + ")",
            joined(patterns, ";")};
}

std::string typedMediaWords() {
    Texts words;
    for (const MediaType& type : types)
        words.push_back(type.typed);
    return joined(words, ", ", "or ");
}

std::string toldMediaWords() {
    Texts words;
    for (const MediaType* type : mediaTypesInMenu())
        words.push_back(type->word);
    return joined(words, ", ", "or ");
}

} // namespace larkspin
