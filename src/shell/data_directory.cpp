#include "shell/data_directory.h"

#include "text/fold.h"
#include "text/stand_ins.h"

#include <algorithm>
#include <iterator>

namespace larkspin {

namespace {

struct OwnFile {
    std::string_view name, contents;
};

// All files that the program keeps, with what they hold in the owner's words. The lock holds
// nothing that could be lost.
constexpr OwnFile ownFiles[] = {
    {ownName::settings, "settings"},
    {ownName::counts, "play counts"},
    {ownName::unnamedPlaylist, "playlist"},
    {ownName::notes, "notes"},
    {ownName::appPaths, "applications n shit"},
    {ownName::appTitles, "applications n shit"},
    {ownName::history, "typed lines"},
    {ownName::irc, "irc account"},
    {ownName::ignored, "those you ignore"},
    {ownName::roomWindow, "place of the window"},
    {ownName::crash, ""},
    {ownName::lock, ""},
};

std::string_view withoutEnding(std::string_view name, std::string_view ending) {
    if (name.ends_with(ending))
        name.remove_suffix(ending.size());
    return name;
}

} // namespace

std::string_view DataDirectory::contentsOf(std::string_view path) const {
    for (const OwnFile& own : ownFiles)
        for (const std::string_view ending : {std::string_view(), besideEnding, aheadEnding})
            if (path == file(own.name).append(ending))
                return own.contents;
    return {};
}

bool DataDirectory::isOwnFile(std::string_view path) const {
    const std::string folded = foldCase(withoutMarks(path));
    if (folded.starts_with(foldCase(file(ownName::unfinishedStart))) ||
        folded.starts_with(foldCase(logsDirectory() + '\\')))
        return true;
    const std::string_view kept = withoutEnding(withoutEnding(folded, besideEnding), aheadEnding);
    return std::any_of(std::begin(ownFiles), std::end(ownFiles),
                       [&](const OwnFile& own) { return kept == foldCase(file(own.name)); });
}

} // namespace larkspin
