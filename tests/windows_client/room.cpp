#include "room.h"

#include "icon.h"
#include "told.h"

namespace larkspin::client {

namespace {

constexpr char ejectedList[] = "Ejected List";

std::string withoutTags(const std::string& text) {
    std::string plain;
    bool isTag = false;
    for (const char character : text) {
        if (character == '<')
            isTag = true;
        if (!isTag)
            plain += character;
        if (character == '>')
            isTag = false;
    }
    return plain;
}

void move(PersonList& from, PersonList& to) {
    auto left = from.names(), joined = to.names();
    const auto row = static_cast<std::size_t>(from.row());
    if (row >= left.size())
        return;
    joined.push_back(left[row]);
    left.erase(left.begin() + from.row());
    from.set(left);
    to.set(joined);
}

} // namespace

void Room::open(HWND parent, const std::string& caption) {
    close();
    window_ = innerWindow(parent, "AOL Child", caption, {190, 4, 640, 400},
                          [this](const Message& message) { return answer(message); });
    childWindow(window_, "_AOL_Static", "People here:", {450, 4, 170, 20});
    said.show(window_, {4, 4, 440, 310});
    inputLine(window_, "RICHCNTL", {4, 320, 440, 24},
              [this](const std::string& text) { enter(text); });
    childWindow(window_, "_AOL_Combobox", "Arial", {450, 320, 170, 24});
    people.show(window_, {450, 24, 170, 180});
    ejected.show(window_, {450, 210, 170, 104});
    icons(window_,
          {"Find", "Ignore Member", "Eject Member", ejectedList, "Allow Entry", "People List"},
          {4, 348, 102, 24}, [this](const std::string& button) { press(button); });
    owns(isOwned_);
}

Answer Room::answer(const Message& message) {
    if (message.number == WM_CLOSE) {
        tell("closed", textOf(message.window));
        takeAway(message.window);
        return 0;
    }
    if (message.number == WM_NCDESTROY)
        window_ = nullptr;
    return std::nullopt;
}

void Room::owns(bool itsOwner) {
    isOwned_ = itsOwner;
    HWND button = FindWindowExA(window_, nullptr, "_AOL_Icon", ejectedList);
    if (window_ != nullptr && button != nullptr)
        ShowWindow(button, isOwned_ ? SW_SHOW : SW_HIDE);
}

void Room::enter(const std::string& text) {
    tell("entered", text);
    if (!screenName_.empty())
        said.say(screenName_, withoutTags(text));
}

void Room::press(const std::string& button) {
    const bool lets = button == "Allow Entry";
    tell("pressed", button + ' ' + std::to_string((lets ? ejected : people).row()));
    if (button == "Eject Member")
        move(people, ejected);
    if (lets)
        move(ejected, people);
}

} // namespace larkspin::client
