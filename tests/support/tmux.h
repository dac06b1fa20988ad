// A terminal whose screen can be read: tmux, with a server of its own that runs one program.
#pragma once

#include "support/child.h"
#include "support/patience.h"
#include "support/temp_directory.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class Tmux {
public:
    // The command is the shell's, with these variables ("NAME=value").
    Tmux(const std::string& command, std::vector<std::string> variables, int columns, int rows) {
        variables.insert(variables.begin(), {"env", "-u", "TMUX", "LANG=C.UTF-8"});
        server_.write("options", "set -g escape-time 0\n");
        ask({"-f", (server_.path() / "options").native(), "new-session", "-d", "-x",
             std::to_string(columns), "-y", std::to_string(rows),
             spaced(variables) + "sh -c '" + command + "'"});
    }
    ~Tmux() { ask({"kill-server"}); }
    Tmux(const Tmux&) = delete;
    Tmux& operator=(const Tmux&) = delete;

    // Bytes, as a terminal sends them.
    void type(std::string_view bytes) const {
        constexpr std::size_t most = 1000; // in one command
        for (; !bytes.empty(); bytes.remove_prefix(std::min(most, bytes.size()))) {
            std::vector<std::string> command = {"send-keys", "-H"};
            for (const char byte : bytes.substr(0, most)) {
                char hex[3];
                std::snprintf(hex, sizeof hex, "%02x", static_cast<unsigned char>(byte));
                command.push_back(hex);
            }
            ask(std::move(command));
        }
    }
    void paste(const std::string& text) const { // as one, where the program asks for that
        server_.write("pasted", text);
        ask({"load-buffer", (server_.path() / "pasted").native()});
        ask({"paste-buffer", "-p", "-r"});
    }
    void resize(int columns, int rows) const {
        ask({"resize-window", "-x", std::to_string(columns), "-y", std::to_string(rows)});
    }

    std::string screen() const { return ask({"capture-pane", "-p"}); }
    std::string styled() const { return ask({"capture-pane", "-p", "-e"}); } // the same
    bool shows(std::string_view text) const {
        return comes([&] { return screen().find(text) != std::string::npos; });
    }
    bool loses(std::string_view text) const {
        return comes([&] { return screen().find(text) == std::string::npos; });
    }
    // Such as `pane_tty`.
    std::string tell(const std::string& what) const {
        const std::string told = ask({"display-message", "-p", "#{" + what + "}"});
        return told.substr(0, told.find('\n'));
    }
    // Of the program that the shell runs.
    pid_t programId() const {
        std::ifstream children("/proc/" + tell("pane_pid") + "/task/" + tell("pane_pid") +
                               "/children");
        pid_t id = 0;
        children >> id;
        return id;
    }

private:
    static std::string spaced(const std::vector<std::string>& words) {
        std::string all;
        for (const std::string& word : words)
            all += word + ' ';
        return all;
    }
    std::string ask(std::vector<std::string> command) const {
        command.insert(command.begin(), {"-S", (server_.path() / "server").native()});
        const auto tmux = Child::start("tmux", {}, command);
        return tmux->rest(patience);
    }

    TempDirectory server_;
};

} // namespace larkspin
