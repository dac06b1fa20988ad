// A chat client that is nothing but windows, to be worked by other programs. A test steers it by
// lines on its standard input and hears of it by lines on its output; \r \n \t and \\ in them are
// what they are in C. It begins with "Owner" signed on, alone in the room "Town Square", and says
// "ready"; with the argument "player" it begins without the client's windows. It ends with its
// input, and when its frame is closed.
//
//   people A|B|C           who is in the room; none without any name
//   ejected A|B            who was put out of it
//   owns 1                 the owner of the client owns the room as well; or 0
//   signon NAME, signoff   another owner, or none
//   greeting CAPTION       his greeting, whatever it says
//   room CAPTION, noroom   another room in place of the last one, with the same people; or none
//   second CAPTION         a room in front of that, with nobody in it; nosecond takes it away
//   typed TEXT             stands in the room's input line; input: tells what does
//   say NAME<tab>TEXT      somebody says something
//   fill N                 much is said, so that there are so many bytes
//   limit N                of what is said no more than the last so many bytes are kept
//   clear                  nothing was said
//   modal CAPTION|TEXT...  a notice in a window of its own; nomodal takes it away
//   download CAPTION|TEXT  a window in which a download runs; nodownload takes it away
//   clock TEXT             what the notice of the clock will tell
//   opens 0                keywords open no windows any more; or 1
//   caption TEXT           the frame's
//   account NAME           the messenger's, in the registry
//   active                 tells which window is in front
//   player CAPTION         the window of another player, with this caption; noplayer: none
//   mark                   tells that all lines before it have been obeyed
//   hang MILLISECONDS      answers nobody in that time
//   crash                  is gone
//   quit                   ends
//
//   marked
//   input TEXT, active CAPTION
//   entered TEXT           into the room's input line, as it came
//   keyword TEXT           into the box for keywords, without blanks around it
//   pressed CAPTION ROW    a button, and the row selected in the list that it is about; -1: none
//   message TO: BODY       was sent
//   key KEY                on the frame, with "^" for Ctrl or "%" for Alt before it
//   hidden, minimised, restored, closed CAPTION
//   command NUMBER         to the other player
#include "client.h"
#include "other_player.h"
#include "told.h"

#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>

namespace {

using namespace larkspin::client;

constexpr UINT lineCame = WM_APP;

std::vector<std::string> split(const std::string& text, char by) {
    std::vector<std::string> parts;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t to = std::min(text.find(by, from), text.size());
        parts.push_back(unescaped(text.substr(from, to - from)));
        from = to + 1;
    }
    return parts;
}

std::string takeFirst(std::vector<std::string>& parts) {
    const std::string first = parts.empty() ? "" : parts.front();
    if (!parts.empty())
        parts.erase(parts.begin());
    return first;
}

unsigned long number(const std::string& text) {
    return std::strtoul(text.c_str(), nullptr, 10);
}

void keepAccount(const std::string& name) {
    RegSetKeyValueA(HKEY_CURRENT_USER,
                    "Software\\America Online\\AOL Instant Messenger (TM)\\CurrentVersion\\Login",
                    "Screen Name", REG_SZ, name.c_str(), static_cast<DWORD>(name.size() + 1));
}

class Steering {
public:
    explicit Steering(bool withClient) {
        aboutPeople();
        aboutWindows();
        aboutItself();
        if (!withClient)
            return;
        client_.open();
        client_.signOn("Owner");
        client_.enterRoom("Town Square");
        client_.room.people.set({"Owner"});
    }

    void obey(const std::string& line) {
        const std::size_t blank = line.find(' ');
        const auto command = commands_.find(line.substr(0, blank));
        if (command == commands_.end())
            tell("unknown", line);
        else
            command->second(blank == std::string::npos ? "" : line.substr(blank + 1));
    }

private:
    using Command = std::function<void(const std::string& rest)>;

    void aboutPeople() {
        commands_["people"] = [this](const auto& rest) {
            client_.room.people.set(split(rest, '|'));
        };
        commands_["ejected"] = [this](const auto& rest) {
            client_.room.ejected.set(split(rest, '|'));
        };
        commands_["owns"] = [this](const auto& rest) { client_.room.owns(rest == "1"); };
        commands_["signon"] = [this](const auto& rest) { client_.signOn(rest); };
        commands_["signoff"] = [this](const auto&) { client_.signOn({}); };
        commands_["greeting"] = [this](const auto& rest) { client_.greet(rest); };
        commands_["say"] = [this](const auto& rest) {
            auto parts = split(rest, '\t');
            const std::string name = takeFirst(parts);
            client_.room.said.say(name, takeFirst(parts));
        };
        commands_["fill"] = [this](const auto& rest) { client_.room.said.fill(number(rest)); };
        commands_["limit"] = [this](const auto& rest) { client_.room.said.limit(number(rest)); };
        commands_["clear"] = [this](const auto&) { client_.room.said.clear(); };
    }
    void aboutWindows() {
        commands_["room"] = [this](const auto& rest) { client_.enterRoom(rest); };
        commands_["noroom"] = [this](const auto&) { client_.room.close(); };
        commands_["second"] = [this](const auto& rest) { client_.enterSecondRoom(rest); };
        commands_["nosecond"] = [this](const auto&) { client_.second.close(); };
        commands_["typed"] = [this](const auto& rest) {
            SetWindowTextA(client_.room.input(), rest.c_str());
        };
        commands_["input"] = [this](const auto&) { tell("input", textOf(client_.room.input())); };
        commands_["modal"] = [this](const auto& rest) {
            auto parts = split(rest, '|');
            const std::string caption = takeFirst(parts);
            client_.showModal(caption, parts);
        };
        commands_["nomodal"] = [this](const auto&) { client_.showModal({}, {}); };
        commands_["download"] = [this](const auto& rest) {
            auto parts = split(rest, '|');
            const std::string caption = takeFirst(parts);
            client_.showDownload(caption, parts);
        };
        commands_["nodownload"] = [this](const auto&) { client_.showDownload({}, {}); };
        commands_["clock"] = [this](const auto& rest) { client_.clock(rest); };
        commands_["opens"] = [this](const auto& rest) { client_.opens(rest == "1"); };
        commands_["caption"] = [this](const auto& rest) { client_.caption(rest); };
        commands_["player"] = [this](const auto& rest) { player_.show(rest); };
        commands_["noplayer"] = [this](const auto&) { player_.show({}); };
    }
    void aboutItself() {
        commands_["account"] = [](const auto& rest) { keepAccount(rest); };
        commands_["active"] = [](const auto&) { tell("active", textOf(GetForegroundWindow())); };
        commands_["mark"] = [](const auto&) { tell("marked"); };
        commands_["hang"] = [](const auto& rest) { Sleep(number(rest)); };
        // As sudden as any, but nobody is asked whether he wants to see where.
        commands_["crash"] = [](const auto&) { TerminateProcess(GetCurrentProcess(), 3); };
        commands_["quit"] = [](const auto&) { PostQuitMessage(0); };
    }

    Client client_{[] { PostQuitMessage(0); }};
    OtherPlayer player_;
    std::map<std::string, Command> commands_;
};

// Lines come to the windows' thread as messages.
DWORD WINAPI readLines(void* given) {
    const HWND window = static_cast<HWND>(given);
    std::string line;
    while (std::getline(std::cin, line)) {
        while (line.ends_with('\r'))
            line.pop_back();
        PostMessageA(window, lineCame, 0, reinterpret_cast<LPARAM>(new std::string(line)));
    }
    PostMessageA(window, lineCame, 0, reinterpret_cast<LPARAM>(new std::string("quit")));
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    Steering steering(argc < 2 || std::string(argv[1]) != "player");
    const HWND steered =
        childWindow(HWND_MESSAGE, "Steered", "", {}, [&steering](const Message& message) -> Answer {
            if (message.number != lineCame)
                return std::nullopt;
            const std::unique_ptr<const std::string> line(
                reinterpret_cast<const std::string*>(message.lParam));
            steering.obey(*line);
            return 0;
        });
    tell("ready");
    CloseHandle(CreateThread(nullptr, 0, readLines, steered, 0, nullptr));
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    ExitProcess(0); // the thread that reads lines is never done
}
