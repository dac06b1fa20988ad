#include "host/preferences.h"

#include "shell/kept_files.h"
#include "text/blanks.h"
#include "text/fold.h"
#include "text/number.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace larkspin {

namespace {

// The keys of the settings.
constexpr const char *stampsKey = "time stamps", *nameColorsKey = "name colours",
                     *notificationsKey = "notifications", *textSizeKey = "text size",
                     *colorsKey = "room colours", *closingKey = "closing the room",
                     *musicFolderKey = "music folder";

constexpr const char *yesText = "yes", *noText = "no";

// The names are those of the values, in their order.
template <typename Value, std::size_t count>
std::optional<Value> valueNamed(const char* const (&names)[count], std::string_view name) {
    const auto found =
        std::ranges::find_if(names, [&](const char* each) { return equalFolded(each, name); });
    if (found == std::end(names))
        return std::nullopt;
    return static_cast<Value>(found - std::begin(names));
}

// The only word of the rest, which may be none; nothing when there are more.
std::optional<std::string_view> onlyWord(std::string_view rest) {
    const std::string_view word = takeWord(rest);
    return withoutBlanks(rest).empty() ? std::optional(word) : std::nullopt;
}

} // namespace

Preferences::Preferences(EventLoop& loop, KeptFiles& files, const DataDirectory& directory,
                         SlashWords::Tell tell)
    : loop_(loop), settings_(files, directory), tell_(std::move(tell)) {
    const StoredSettings stored = settings_.all();
    values_.stamps = stored.get(stampsKey) != noText;
    values_.nameColors = stored.get(nameColorsKey) == yesText;
    values_.notifications = stored.get(notificationsKey) != noText;
    values_.textSize =
        plainNumber(stored.get(textSizeKey), smallestText, largestText).value_or(values_.textSize);
    values_.colors =
        valueNamed<RoomColors>(roomColorNames, stored.get(colorsKey)).value_or(values_.colors);
    values_.closing =
        valueNamed<RoomClosing>(roomClosingNames, stored.get(closingKey)).value_or(values_.closing);
    values_.musicFolder = stored.get(musicFolderKey);
}

// Seen at once, also where the disk takes its time.
template <typename Value> bool Preferences::show(Value Values::*which, Value value) {
    if (values_.*which == value)
        return false;
    values_.*which = std::move(value);
    for (const Task& each : changed_)
        each();
    return true;
}

template <typename Value>
void Preferences::change(Value Values::*which, Value value, const char* key,
                         const std::string& text) {
    if (show(which, std::move(value)))
        settings_.put(key, text);
}

void Preferences::showStamps(bool shows) {
    change(&Values::stamps, shows, stampsKey, shows ? yesText : noText);
}

void Preferences::colorNames(bool colors) {
    change(&Values::nameColors, colors, nameColorsKey, colors ? yesText : noText);
}

void Preferences::notify(bool notifies) {
    change(&Values::notifications, notifies, notificationsKey, notifies ? yesText : noText);
}

void Preferences::setTextSize(int percent) {
    if (!show(&Values::textSize, std::clamp(percent, smallestText, largestText)))
        return;
    loop_.cancel(keeping_);
    keeping_ = loop_.once(textSizeSettles, [this] { keep(); });
}

void Preferences::keep() {
    loop_.cancel(keeping_);
    if (std::exchange(keeping_, TimerId::none) != TimerId::none)
        settings_.put(textSizeKey, std::to_string(textSize()));
}

void Preferences::setColors(RoomColors colors) {
    change(&Values::colors, colors, colorsKey, roomColorNames[static_cast<int>(colors)]);
}

void Preferences::setClosing(RoomClosing closing) {
    change(&Values::closing, closing, closingKey, roomClosingNames[static_cast<int>(closing)]);
}

bool Preferences::setMusicFolder(std::string_view typed) {
    const auto folder = typed.empty() ? std::string() : folders_.find(typed);
    if (folder)
        change(&Values::musicFolder, *folder, musicFolderKey, *folder);
    return folder.has_value();
}

std::vector<SlashWord> Preferences::words() {
    const auto by = [this](bool (Preferences::*typed)(std::string_view)) {
        return [this, typed](std::string_view rest) { return (this->*typed)(rest); };
    };
    return about("larkspin",
                 {
                     switchWord("stamps", "whether lines show when they were said", &Values::stamps,
                                &Preferences::showStamps, "lines show when they were said",
                                "lines don't show when they were said"),
                     switchWord("namecolours", "whether each name has a colour of its own",
                                &Values::nameColors, &Preferences::colorNames,
                                "each name has a colour of its own", "all names have one colour"),
                     switchWord("notifications",
                                "whether you are told what is said to you while you are elsewhere",
                                &Values::notifications, &Preferences::notify,
                                "you are told what is said to you while you are elsewhere",
                                "you aren't told what is said to you while you are elsewhere"),
                     {"textsize", "[PERCENT|+|-]", "how large the text of the room's window is",
                      by(&Preferences::typedTextSize)},
                     {"colours",
                      "[larkspin|light|dark]",
                      "larkspin's colours for the room, or such as the desktop or the terminal has",
                      by(&Preferences::typedColors),
                      {"colors"}},
                     {"closing", "[minimize|tray|quit]",
                      "what closing the room's window does: minimizes it, hides it where a tray "
                      "has the icon, or ends larkspin",
                      by(&Preferences::typedClosing)},
                     {"musicfolder", "[FOLDER|none]",
                      "where your music is, which is where folders are asked for",
                      by(&Preferences::takeMusicFolder)},
                 });
}

SlashWord Preferences::switchWord(const char* name, const char* help, bool Values::*which,
                                  void (Preferences::*set)(bool), const char* on, const char* off) {
    return {name, "[on|off]", help, [this, which, set, on, off](std::string_view rest) {
                const auto wanted = onlyWord(rest);
                const bool isOn = wanted && equalFolded(*wanted, "on");
                if (!wanted || !(wanted->empty() || isOn || equalFolded(*wanted, "off")))
                    return false;
                if (!wanted->empty())
                    (this->*set)(isOn);
                tell_(values_.*which ? on : off);
                return true;
            }};
}

bool Preferences::typedTextSize(std::string_view rest) {
    const auto wanted = onlyWord(rest);
    if (!wanted)
        return false;
    const std::string_view digits =
        wanted->ends_with('%') ? wanted->substr(0, wanted->size() - 1) : *wanted;
    const auto percent = plainNumber(digits, smallestText, largestText);
    const bool isStep = *wanted == "+" || *wanted == "-";
    if (!wanted->empty() && !isStep && !percent)
        return false;
    if (isStep)
        changeTextSize(*wanted == "+" ? 1 : -1);
    else if (percent)
        setTextSize(*percent);
    tell_("the text of the room's window has " + std::to_string(textSize()) + " %");
    return true;
}

bool Preferences::typedColors(std::string_view rest) {
    const auto wanted = onlyWord(rest);
    const auto colors = valueNamed<RoomColors>(roomColorNames, wanted.value_or(""));
    if (!wanted || (!wanted->empty() && !colors))
        return false;
    if (colors)
        setColors(*colors);
    tell_(values_.colors == RoomColors::larkspin
              ? std::string("the room has larkspin's colours")
              : "the room has " + std::string(roomColorNames[static_cast<int>(values_.colors)]) +
                    " colours");
    return true;
}

bool Preferences::typedClosing(std::string_view rest) {
    static constexpr const char* does[] = {"minimizes it", "hides it where a tray has the icon",
                                           "ends larkspin"};
    const auto wanted = onlyWord(rest);
    const auto closing = valueNamed<RoomClosing>(roomClosingNames, wanted.value_or(""));
    if (!wanted || (!wanted->empty() && !closing))
        return false;
    if (closing)
        setClosing(*closing);
    tell_(std::string("closing the room's window ") + does[static_cast<int>(values_.closing)]);
    return true;
}

bool Preferences::takeMusicFolder(std::string_view rest) {
    const std::string_view typed = withoutBlanks(rest);
    const bool isNone = equalFolded(typed, "none");
    if (!typed.empty() && !setMusicFolder(isNone ? "" : typed))
        tell_("there is no folder " + visibleText(typed, " "));
    else if (musicFolder().empty())
        tell_("no folder is known where your music is: /musicfolder FOLDER");
    else
        tell_("your music is in " + visibleText(asTyped(musicFolder()), " "));
    return true;
}

} // namespace larkspin
