#include "shell/settings.h"

#include "shell/files.h"
#include "text/fold.h"
#include "text/number.h"
#include "text/utf8.h"

namespace larkspin {

namespace {

constexpr std::size_t longestValue = 749;
// In bytes. Real settings take two or three thousand. The file is read very often, and one larger
// than this would slow each read down.
constexpr std::size_t largestSettings = std::size_t{1024} * 1024;
constexpr std::string_view ownSection = "lark";

struct Default {
    Choice choice;
    std::string_view key;
    std::string_view fallback;
};

constexpr Default defaults[] = {
    {Choice::openingFont, "afont", "arial narrow"},
    {Choice::openingColor, "ascii color", "5083A9"},
    {Choice::opening, "ascii", "'\u00AClks -"},
    {Choice::font, "font", "arial narrow"},
    {Choice::fontColor, "font color", "0066BB"},
    {Choice::played, "played", "0"},
    {Choice::closing, "eascii", ""},
    {Choice::closingFont, "efont", " "},
    {Choice::closingColor, "eascii color", ""},
};

std::string cut(std::string_view value) {
    return std::string(value.substr(0, prefixLength(value, longestValue)));
}

std::string idOf(const std::string& path, std::string_view section, std::string_view key) {
    // A line break parts them, which none of the three can hold.
    return path + '\n' + foldCase(section) + '\n' + foldCase(key);
}

} // namespace

std::string StoredSettings::get(std::string_view key) const {
    const auto found = values_.find(foldCase(key));
    return found == values_.end() ? "" : cut(found->second);
}

std::string Settings::getini(std::string_view section, std::string_view key,
                             const std::string& path) {
    const FileRead file = readIni(path);
    if (file.failed())
        unread_.insert(idOf(path, section, key));
    else if (!unread_.empty())
        unread_.erase(idOf(path, section, key));
    return cut(iniValue(file.contents, section, key));
}

void Settings::putini(std::string_view section, std::string_view key, std::string_view value,
                      const std::string& path) {
    change(path, section, {{std::string(key), std::string(value)}});
}

void Settings::removeini(std::string_view section, std::string_view key, const std::string& path) {
    const FileRead old = readIni(path);
    if (unread_.contains(idOf(path, section, key)))
        return;
    const std::string contents = withoutIniKey(old.contents, section, key);
    if (contents != old.contents)
        files_.replace(path, contents);
}

StoredSettings Settings::all() {
    // A new start tries anew.
    outOfUse_ = false;
    const FileRead file = readIni(settingsFile_);
    outOfUse_ = file.failed();
    return StoredSettings(iniValues(file.contents, ownSection), !file.failed());
}

void Settings::putAll(const SettingsChanges& changes) {
    change(settingsFile_, ownSection, changes);
}

void Settings::change(const std::string& path, std::string_view section,
                      const SettingsChanges& changes) {
    const FileRead old = readIni(path);
    // A file that can't be read isn't replaced, since all its other settings would be lost.
    if (old.failed())
        return;
    std::string contents = old.contents;
    for (const auto& [key, value] : changes)
        if (!unread_.contains(idOf(path, section, key)))
            contents = withIniValue(contents, section, key, value);
    if (contents != old.contents)
        files_.replace(path, contents);
}

FileRead Settings::readIni(const std::string& path) {
    // Only the settings are bounded: the file of play counts grows with the songs played.
    if (path != settingsFile_)
        return files_.read(path);
    return outOfUse_ ? FileRead{} : files_.read(path, largestSettings);
}

std::string Settings::yochoose(Choice choice) {
    for (const Default& known : defaults) {
        if (known.choice != choice)
            continue;
        const std::string value = get(known.key);
        const bool isMissing = choice == Choice::played ? !number(value) : value.empty();
        return isMissing ? std::string(known.fallback) : value;
    }
    return {};
}

} // namespace larkspin
