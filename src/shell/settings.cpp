#include "shell/settings.h"

#include "shell/files.h"
#include "shell/ini_text.h"
#include "text/number.h"
#include "text/utf8.h"

namespace larkspin {

namespace {

constexpr std::size_t longestValue = 749;
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
    {Choice::playpath, "playpath", ""},
    {Choice::play, "play", ""},
    {Choice::closing, "eascii", ""},
    {Choice::closingFont, "efont", " "},
    {Choice::closingColor, "eascii color", ""},
};

std::string valueIn(std::string_view contents, std::string_view section, std::string_view key) {
    const std::string_view value = iniValue(contents, section, key);
    return std::string(value.substr(0, prefixLength(value, longestValue)));
}

} // namespace

std::string StoredSettings::get(std::string_view key) const {
    return valueIn(contents_, ownSection, key);
}

std::string Settings::getini(std::string_view section, std::string_view key,
                             const std::string& path) {
    return valueIn(files_.read(path).value_or(""), section, key);
}

void Settings::putini(std::string_view section, std::string_view key, std::string_view value,
                      const std::string& path) {
    const auto old = files_.read(path);
    const std::string contents = withIniValue(old.value_or(""), section, key, value);
    if (contents != old)
        files_.replace(path, contents);
}

void Settings::removeini(std::string_view, std::string_view, const std::string&) {}

StoredSettings Settings::all() {
    return StoredSettings(files_.read(settingsFile_).value_or(""));
}

void Settings::putAll(const SettingsChanges& changes) {
    const auto old = files_.read(settingsFile_);
    std::string contents = old.value_or("");
    for (const auto& [key, value] : changes)
        contents = withIniValue(contents, ownSection, key, value);
    if (contents != old)
        files_.replace(settingsFile_, contents);
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
