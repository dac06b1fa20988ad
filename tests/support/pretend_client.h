// The pretended client, steered by the same lines as the client of real windows, and telling the
// same.
#pragma once

#include "support/client_cases.h"
#include "support/pretend_host.h"

#include <map>
#include <sstream>

namespace larkspin {

class PretendClient : public PretendHost, public CasedClient {
public:
    using PretendHost::PretendHost;

    void tell(const std::string& line) override {
        const std::size_t blank = std::min(line.find(' '), line.size());
        commands_.at(line.substr(0, blank))(line.substr(std::min(blank + 1, line.size())));
    }
    Lines told(std::size_t) override { return std::exchange(told_, {}); }
    WindowTreeHost& host() override { return PretendHost::host; }

    void show(HostHandle window, int command) override {
        const std::map<int, const char*> words = {
            {0, "hidden "}, {6, "minimised "}, {9, "restored "}};
        told_.push_back(words.at(command) + caption(window));
        PretendHost::show(window, command);
    }
    bool post(HostHandle window, unsigned message, std::uint64_t wParam,
              std::int64_t lParam) override {
        if (message == window::close && has(window))
            told_.push_back("closed " + caption(window));
        return PretendHost::post(window, message, wParam, lParam);
    }

protected:
    void pressed(HostHandle icon) override {
        const std::string name = caption(icon);
        const bool isRooms = (*this)[icon].parent == room;
        const std::size_t row = (*this)[name == "Allow Entry" ? ejectedList : peopleList].row;
        const std::size_t before = messages.size();
        PretendHost::pressed(icon);
        if (messages.size() > before)
            told_.push_back("message " + messages.back());
        else
            told_.push_back("pressed " + name + ' ' +
                            (isRooms && row < 1000 ? std::to_string(row) : "-1"));
    }
    void entered(HostHandle field) override {
        told_.push_back(((*this)[field].className == "Edit" ? "keyword " : "entered ") +
                        text(field));
        PretendHost::entered(field);
    }

private:
    static Lines parts(const std::string& text) {
        Lines all;
        std::istringstream stream(text);
        for (std::string part; std::getline(stream, part, '|');)
            all.push_back(part);
        return all;
    }
    HostHandle input() { return first(room, "RICHCNTL"); }
    void enter(const std::string& caption) {
        remove(room);
        room = addRoom();
        (*this)[room].text = caption;
        peopleList = PretendHost::host.peopleList();
        ejectedList = PretendHost::host.ejectedList();
        (*this)[peopleList].rows = &people;
        (*this)[ejectedList].rows = &ejected;
    }
    void addInFront(const std::string& caption) {
        second_ = addRoom();
        (*this)[second_].text = caption;
        auto& all = (*this)[area].children;
        std::rotate(all.begin(), all.end() - 1, all.end());
    }
    void greet(const std::string& caption) {
        signOn("");
        welcome = addChild(caption);
    }
    static Lines rest(const Lines& of) { return {of.begin() + 1, of.end()}; }

    using Command = std::function<void(const std::string& rest)>;
    const std::map<std::string, Command> commands_ = {
        {"people", [this](const auto& text) { people = parts(text); }},
        {"ejected", [this](const auto& text) { ejected = parts(text); }},
        {"owns", [this](const auto& text) { ownsRoom = text == "1"; }},
        {"signon", [this](const auto& name) { signOn(name); }},
        {"signoff", [this](const auto&) { signOn(""); }},
        {"greeting", [this](const auto& caption) { greet(caption); }},
        {"room", [this](const auto& caption) { enter(caption); }},
        {"noroom", [this](const auto&) { remove(room); }},
        {"second", [this](const auto& caption) { addInFront(caption); }},
        {"nosecond", [this](const auto&) { remove(second_); }},
        {"typed", [this](const auto& text) { (*this)[input()].text = text; }},
        {"input",
         [this](const auto&) {
             const std::string has = text(input());
             told_.push_back(has.empty() ? "input" : "input " + has);
         }},
        {"modal", [this](const auto& text) { showModal(parts(text)[0], rest(parts(text))); }},
        {"download", [this](const auto& text) { showDownload(parts(text)[0], rest(parts(text))); }},
        {"nodownload", [this](const auto&) { remove(download); }},
        {"clock", [this](const auto& text) { clockText = text; }},
        {"account", [this](const auto& name) {
             registry[std::string(window::messengerKey) + '|' + window::messengerValue] = {
                 1, name + '\0'};
         }}};

    HostHandle second_ = 0;
    Lines told_;
};

} // namespace larkspin
