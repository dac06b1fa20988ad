// The media filter: one word that decides, for every listing of files, which types are seen.
#pragma once

#include "chat/core.h"
#include "shell/dialogs.h"

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class FileLister;
struct MenuEntry;

// What a file dialog offers under that filter; under none of the five, media files of all types.
FileType fileTypeOf(std::string_view mediaFilter);

class MediaFilter {
public:
    MediaFilter(const Core& core, FileLister& File1)
        : state_(core.state), reply_(core.reply), File1_(File1) {}

    // Sets the filter with the menu's check mark, as at start and from the menu. A word that
    // is none of the five does nothing.
    void choose(std::string_view word);

    // The same at the start, where an unknown word counts as mp3.
    void load(const std::string& stored);

    // Gives File1 the pattern of the filter back. No filter lets all media types through.
    void restorepattern();

    // The tray's entries, one per filter.
    std::vector<MenuEntry> menu();

    // The commands.
    void filter(const std::string& word);
    void tellFilter();

private:
    bool apply(std::string_view word);

    AppState& state_;
    Reply& reply_;
    FileLister& File1_;
};

} // namespace larkspin
