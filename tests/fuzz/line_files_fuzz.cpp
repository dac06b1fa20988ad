// Any bytes are loaded as a playlist and as an unsorted list, saved, and loaded again.
#include "fuzz/fuzz.h"
#include "library/line_files.h"
#include "shell/app_state.h"
#include "shell/files.h"

#include <algorithm>
#include <map>
#include <sstream>

using namespace larkspin;

struct FilesInMemory : Files {
    Presence presence(const std::string& path) override {
        return contents.contains(path) ? Presence::there : Presence::gone;
    }
    std::optional<std::uintmax_t> size(const std::string& path) override {
        return contents[path].size();
    }
    FileRead read(const std::string& path, std::size_t) override {
        if (!exists(path))
            return {FileRead::Outcome::missing};
        return {FileRead::Outcome::contents, contents[path]};
    }
    FileChange replace(const std::string& path, const std::string& text) override {
        contents[path] = text;
        return {};
    }
    FileChange append(const std::string&, const std::string&) override { return {"no"}; }
    FileChange rename(const std::string&, const std::string&) override { return {"no"}; }
    FileChange moveToWastebasket(const std::string&) override { return {"no"}; }
    FileChange remove(const std::string&) override { return {"no"}; }
    FileChange makeDirectory(const std::string&) override { return {}; }
    void hide(const std::string&) override {}
    std::map<std::string, std::string> contents;
};

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FilesInMemory files;
    LineFiles lineFiles(files);
    std::string& first = files.contents["first"];
    for (; size > 0; ++data, --size) // many line ends
        first += *data < 0xE0 ? static_cast<char>(*data) : *data % 2 == 0 ? '\r' : '\n';

    RowList list;
    lineFiles.loadlines("first", list);
    int count = 0;
    std::replace(first.begin(), first.end(), '\r', '\n');
    std::istringstream lines(first);
    for (std::string line; std::getline(lines, line);)
        if (line.find_first_not_of(" \t") != line.npos)
            demand(list.row(count++) == line);
    demand(list.count() == count);

    AppState state, again;
    lineFiles.loadPlaylist("first", state);
    demand(state.masterList.count() <= count); // less comments
    for (int index = 1; index < state.masterList.count(); ++index)
        demand(state.masterList.folded(index - 1) <= state.masterList.folded(index));
    lineFiles.savelines("second", state.masterList);
    lineFiles.loadPlaylist("second", again);
    for (const RowList* same : {&state.playlistView, &again.masterList, &again.playlistView}) {
        lineFiles.savelines("third", *same);
        demand(files.contents["second"] == files.contents["third"]);
    }
    return 0;
}
