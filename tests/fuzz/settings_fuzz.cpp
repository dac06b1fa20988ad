// A value is written into an INI file of any contents, and taken out again: it reads back, and
// nothing else changes.
#include "fuzz/fuzz.h"
#include "shell/ini_text.h"
#include "text/fold.h"

#include <sstream>

using namespace larkspin;

static std::string onOneLine(std::string text) {
    for (char& c : text)
        if (c == '\r' || c == '\n' || c == '\0')
            c = ' ';
    const auto first = text.find_first_not_of(" \t\f\v");
    return first == text.npos ? ""
                              : text.substr(first, text.find_last_not_of(" \t\f\v") + 1 - first);
}

static std::string nameOf(const std::string& key) {
    return onOneLine(key.substr(0, key.find('=')));
}

// A name in brackets with a comment after it would open a section of its own.
static bool readsAsHeader(const std::string& name) {
    const auto end = name.find(']');
    return name.starts_with('[') && end != name.npos &&
           onOneLine(name.substr(end + 1)).starts_with(';');
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const std::string key = input.ConsumeRandomLengthString(12);
    const std::string first = input.ConsumeRandomLengthString(12);
    const std::string value = input.ConsumeRandomLengthString(12);
    std::string old = input.ConsumeBool() ? "\xEF\xBB\xBF" : "";
    while (input.remaining_bytes() > 0)
        old += input.PickValueInArray(
                   {"[Lark]\r\n", "[lark] ; a=1\n", "\n[times played]", "\n", "=", key.c_str()}) +
               input.ConsumeRandomLengthString(20);
    if (key.find('[') != key.npos && (first + value).find(']') != key.npos)
        return 0; // might look like a section; no song with its count does

    const std::string now = withIniValue(old, "lark", key, value);
    demand(nameOf(key).empty() || readsAsHeader(nameOf(key))
               ? now == old
               : iniValue(now, "lark", foldCase(key)) == onOneLine(value));
    demand(withIniValue(now, "lark", key, value) == now);
    demand(withIniValue(withIniValue(old, "lark", key, first), "lark", key, value) == now);
    const std::string without = withoutIniKey(now, "lark", key);
    demand(iniValue(without, "lark", key).empty());
    const IniValues all = iniValues(old, "lark");
    std::istringstream lines(old);
    for (std::string line; std::getline(lines, line);) {
        const std::string_view before = iniValue(old, "lark", line);
        const auto found = all.find(foldCase(nameOf(line)));
        demand(found == all.end() ? before.empty() : before == found->second);
        for (const std::string& changed : {now, without}) {
            demand(iniValue(changed, "times played", line) == iniValue(old, "times played", line));
            demand(iniValue(changed, "lark", line) == before ||
                   equalFolded(nameOf(line), nameOf(key)));
        }
    }
    return 0;
}
