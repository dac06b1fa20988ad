#include "shell/data_directory.h"

#include "text/fold.h"

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
    {"larkspin.ini", "settings"},
    {"played.ini", "play counts"},
    {"temp.lst", "playlist"},
    {"larkmain.lpb", "notes"},
    {"lksapp.lst", "applications n shit"},
    {"lksappl.lst", "applications n shit"},
    {"history.txt", "typed lines"},
    {"irc.txt", "irc account"},
    {"room-window.txt", "place of the window"},
    {"larkspin.lock", ""},
};

// How the names of half-written files begin. The next start removes what is left of them.
constexpr std::string_view unfinishedStart = ".larkspin-";

// The marks of text/stand_ins.h aren't written to the disk: a name with one is that of the same
// file as the name without.
std::string withoutMarks(std::string_view text) {
    constexpr std::string_view mark = "\uF000";
    std::string name(text);
    for (auto at = name.find(mark); at != std::string::npos; at = name.find(mark, at))
        name.erase(at, mark.size());
    return name;
}

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
    if (folded.starts_with(foldCase(file(unfinishedStart))))
        return true;
    const std::string_view kept = withoutEnding(withoutEnding(folded, besideEnding), aheadEnding);
    return std::any_of(std::begin(ownFiles), std::end(ownFiles),
                       [&](const OwnFile& own) { return kept == foldCase(file(own.name)); });
}

} // namespace larkspin
