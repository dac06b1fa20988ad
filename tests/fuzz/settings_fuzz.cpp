// A value is written into an INI file of any contents, and taken out again: it reads back, and
// nothing else changes.
#include "fuzz/fuzz.h"
#include "shell/ini_text.h"
#include "text/blanks.h"
#include "text/fold.h"
#include "text/line_breaks.h"
#include "text/parts.h"

#include <sstream>

using namespace larkspin;

static std::string fitted(std::string_view text) {
    return std::string(
        withoutBlanks(breaksAsBlanks(std::string(text), lineBreaksAndNul), iniBlanks));
}

static std::string nameOf(std::string_view key) {
    return fitted(partedAt(key, '=').head);
}

// A name in brackets with a comment after it would open a section of its own.
static bool readsAsHeader(const std::string& name) {
    return name.starts_with('[') && fitted(partedAt(name, ']').tail).starts_with(';');
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
               : iniValue(now, "lark", foldCase(key)) == fitted(value));
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
