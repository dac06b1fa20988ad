#include "shell/settings.h"

#include "shell/files.h"
#include "shell/ini_text.h"
#include "text/utf8.h"

namespace larkspin {

namespace {

constexpr std::size_t longestValue = 749;

} // namespace

std::string Settings::getini(std::string_view section, std::string_view key,
                             const std::string& path) {
    const auto contents = files_.read(path);
    if (!contents)
        return {};
    const std::string_view value = iniValue(*contents, section, key);
    return std::string(value.substr(0, prefixLength(value, longestValue)));
}

void Settings::putini(std::string_view section, std::string_view key, std::string_view value,
                      const std::string& path) {
    const auto old = files_.read(path);
    const std::string contents = withIniValue(old.value_or(""), section, key, value);
    if (contents != old)
        files_.replace(path, contents);
}

} // namespace larkspin
