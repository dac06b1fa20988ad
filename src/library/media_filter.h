// The media filter: one word that decides, for every listing of files, which types are seen.
#pragma once

#include "chat/core.h"

#include <string>
#include <vector>

namespace larkspin {

class FileLister;
struct MediaType;
struct MenuEntry;

class MediaFilter {
public:
    MediaFilter(const Core& core, FileLister& File1)
        : state_(core.state), reply_(core.reply), File1_(File1) {}

    // At the start. An unknown word counts as mp3.
    void load(const std::string& stored);

    // Gives File1 the pattern of the filter back. No filter lets all media types through.
    void restorepattern();

    // Lets all through that can be played, as its entry does.
    void takeAll();

    // The tray's entries, one per filter.
    std::vector<MenuEntry> menu();

    // The commands.
    void filter(const std::string& typed);
    void tellFilter();

private:
    void apply(const MediaType& type);
    void choose(const MediaType& type);

    AppState& state_;
    Reply& reply_;
    FileLister& File1_;
};

} // namespace larkspin
