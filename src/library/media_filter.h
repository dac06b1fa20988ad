// The media filter: one word that decides, for every listing of files, which types are seen.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

struct AppState;
class Dialogs;
class FileLister;
class Reply;

class MediaFilter {
public:
    MediaFilter(AppState& state, FileLister& File1, Reply& reply, Dialogs& dialogs)
        : state_(state), File1_(File1), reply_(reply), dialogs_(dialogs) {}

    // Sets the filter with the menu's check mark, as at start and from the menu. A word that
    // is none of the five does nothing.
    void choose(std::string_view word);

    // Gives File1 the pattern of the filter back. No filter lets all media types through.
    void restorepattern();

    // The commands.
    void filter(const std::string& word);
    void tellFilter();

private:
    bool apply(std::string_view word);

    AppState& state_;
    FileLister& File1_;
    Reply& reply_;
    Dialogs& dialogs_;
};

} // namespace larkspin
