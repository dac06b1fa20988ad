#include "platform/posix/drive_paths.h"

#include "text/stand_ins.h"
#include "text/utf8.h"

#include <algorithm>
#include <vector>

namespace larkspin {

namespace {

// Whether the name needs no translation, like nearly all names: it has no character for a stand-in,
// no private one, and no blank at an end.
bool isPlain(std::string_view name) {
    constexpr char privateLead = '\xEF'; // of U+F000 to U+FFFF in UTF-8
    return std::none_of(name.begin(), name.end(),
                        [](char byte) { return needsStandIn(byte) || byte == privateLead; }) &&
           !name.starts_with(' ') && !name.ends_with(' ');
}

bool isSeparator(char byte) {
    return byte == '\\' || byte == '/';
}

// A mark goes, and the character after it is meant as itself. A stand-in becomes the character that
// it stands for.
void appendNativeName(std::string& path, std::string_view name) {
    while (!name.empty()) {
        Character character = firstCharacter(name);
        if (character.valid && character.code == standInBase && character.length < name.size()) {
            name.remove_prefix(character.length);
            character = firstCharacter(name);
            path += name.substr(0, character.length);
        } else if (const auto meant = standsFor(character.code); character.valid && meant) {
            path += *meant;
        } else {
            path += name.substr(0, character.length);
        }
        name.remove_prefix(character.length);
    }
}

} // namespace

std::string nativePath(std::string_view drivePath) {
    if (drivePath.size() < 2 || (drivePath[0] != 'c' && drivePath[0] != 'C') || drivePath[1] != ':')
        return {};
    drivePath.remove_prefix(2);
    std::string path;
    while (!drivePath.empty()) {
        std::size_t length = 0;
        while (length < drivePath.size() && !isSeparator(drivePath[length]))
            ++length;
        if (length > 0) {
            path += '/';
            appendNativeName(path, drivePath.substr(0, length));
        }
        drivePath.remove_prefix(length < drivePath.size() ? length + 1 : length);
    }
    return path.empty() ? "/" : path;
}

std::string driveName(std::string_view nativeName) {
    if (isPlain(nativeName))
        return std::string(nativeName);
    std::string name;
    for (std::size_t at = 0; at < nativeName.size();) {
        const Character character = firstCharacter(nativeName.substr(at));
        const bool atAnEnd = at == 0 || at + 1 == nativeName.size();
        if (needsStandIn(nativeName[at]) || (nativeName[at] == ' ' && atAnEnd)) {
            appendCharacter(name, standInBase + character.code);
        } else {
            if (character.valid && (character.code == standInBase || standsFor(character.code)))
                appendCharacter(name, standInBase);
            name += nativeName.substr(at, character.length);
        }
        at += character.length;
    }
    return name;
}

std::string drivePath(std::string_view nativePath) {
    std::vector<std::string_view> names;
    while (!nativePath.empty()) {
        const auto name = nativePath.substr(0, nativePath.find('/'));
        nativePath.remove_prefix(std::min(nativePath.size(), name.size() + 1));
        if (name == ".." && !names.empty())
            names.pop_back();
        else if (!name.empty() && name != "." && name != "..")
            names.push_back(name);
    }
    std::string path = names.empty() ? "c:\\" : "c:";
    for (const auto name : names)
        path.append("\\").append(driveName(name));
    return path;
}

} // namespace larkspin
