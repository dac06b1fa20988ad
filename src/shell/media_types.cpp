#include "shell/media_types.h"

#include "text/parts.h"

#include <algorithm>

namespace larkspin {

namespace {

using Age = MediaType::Age;

constexpr int lastOfFirst = 100, lastOfAll = 200; // places

constexpr MediaType types[] = {
    {"mp3", "mp3", "*.mp3", "mpeg layer 3", "fmp3", "audio/mpeg", 1, Age::first},
    {"wav", "wav", "*.wav", "wave", "fwav", "audio/x-wav;audio/vnd.wave", 3, Age::first},
    {"wma", "wma", "*.wma", "windows media audio", "fwma", "audio/x-ms-wma", 2, Age::first},
    {"midi", "midi", "*.mid", "midi", "fmid", "audio/midi", 4, Age::first},
    {allMediaTypes, "all", "", "media", "fallt", "", lastOfFirst, Age::first},
    {"flac", "flac", "*.flac", "flac", "fflac", "audio/flac", 101},
    {"ogg", "ogg", "*.ogg;*.oga", "ogg", "fogg", "audio/ogg;audio/x-vorbis+ogg;audio/x-flac+ogg",
     102},
    {"opus", "opus", "*.opus", "opus", "fopus", "audio/x-opus+ogg", 103},
    {"m4a", "m4a", "*.m4a;*.m4b", "mpeg 4 audio", "fm4a", "audio/mp4;audio/x-m4b", 104},
    {"aac", "aac", "*.aac", "advanced audio coding", "faac", "audio/aac", 105},
    {"ape", "ape", "*.ape", "monkey's audio", "fape", "audio/x-ape", 106},
    {"wavpack", "wavpack", "*.wv", "wavpack", "fwv", "audio/x-wavpack", 107},
    {"musepack", "musepack", "*.mpc", "musepack", "fmpc", "audio/x-musepack", 108},
    {"aiff", "aiff", "*.aiff;*.aif", "audio interchange", "faiff", "audio/x-aiff", 109},
    {anyMediaType, "any", "", "playable", "fany", "", lastOfAll},
};

using Texts = std::vector<std::string_view>;

void append(Texts& patterns, std::string_view joined) {
    while (!joined.empty())
        patterns.push_back(takePart(joined, ';'));
}

Texts patternsOf(const MediaType& type) {
    Texts patterns;
    append(patterns, type.patterns);
    if (type.patterns.empty())
        for (const MediaType* above = types; above != &type; ++above)
            append(patterns, above->patterns);
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

std::vector<const MediaType*> rowsOfTable() {
    std::vector<const MediaType*> rows;
    for (const MediaType& type : types)
        rows.push_back(&type);
    return rows;
}

// "mp3, wav, or all; or flac, or any"
std::string wordsOf(const std::vector<const MediaType*>& rows, std::string_view MediaType::*word) {
    Texts first, later;
    for (const MediaType* type : rows)
        (type->age == Age::first ? first : later).push_back(type->*word);
    return joined(first, ", ", "or ") + "; or " + joined(later, ", ", "or ");
}

} // namespace

std::span<const MediaType> mediaTypes() {
    return types;
}

std::vector<const MediaType*> mediaTypesInMenu() {
    std::vector<const MediaType*> entries = rowsOfTable();
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

std::vector<std::string> desktopMediaTypes() {
    std::vector<std::string> names;
    for (const MediaType& type : types)
        for (std::string_view left = type.named; !left.empty();)
            names.emplace_back(takePart(left, ';'));
    return names;
}

std::string typedMediaWords() {
    return wordsOf(rowsOfTable(), &MediaType::typed);
}

std::string toldMediaWords() {
    return wordsOf(mediaTypesInMenu(), &MediaType::word);
}

} // namespace larkspin
