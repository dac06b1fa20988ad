// The one table of media types. The media filter, its menu and its words, the patterns of scans and
// of file dialogs and the help are all made from it.
#pragma once

#include "shell/dialogs.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct MediaType {
    // The five that there have always been are told as they always were; the others come after
    // them.
    enum class Age { first, later };

    std::string_view word;     // as it is stored, shown and told
    std::string_view typed;    // as the command takes it
    std::string_view patterns; // of its files, joined by semicolons; empty: those that stand above
    std::string_view files;    // what a file dialog calls them
    std::string_view entry;    // of the tray's menu
    std::string_view named;    // by desktops, joined by semicolons
    int place;                 // in the menu and the help, which have an order of their own
    Age age = Age::later;
};

inline constexpr std::string_view allMediaTypes = "all types"; // the first four
inline constexpr std::string_view anyMediaType = "any";        // everything that can be played

std::span<const MediaType> mediaTypes();
std::vector<const MediaType*> mediaTypesInMenu(); // by their places

// The row of that word; for any other word that of `allMediaTypes`.
const MediaType& mediaTypeOf(std::string_view word);

// What a lister lets through, and what a file dialog offers.
std::string patternOf(const MediaType& type);
FileType fileTypeOf(const MediaType& type);

// How a desktop names what can be played: "audio/mpeg" and so on.
std::vector<std::string> desktopMediaTypes();

// "mp3, wav, or all; or flac, or any": as the command takes them, and as the help tells them.
std::string typedMediaWords();
std::string toldMediaWords();

} // namespace larkspin
