// A machine whose media window is open, for tests that work it by hand.
#pragma once

#include "shell/control_events.h"
#include "support/talk.h"

namespace larkspin {

struct MediaMachine : VirtualMachine {
    explicit MediaMachine(const Lines& songs = {"a.mp3", "b.mp3", "c.mp3"})
        : VirtualMachine(songs, 100s) {
        mp3s().visible = true;
    }

    Window& mp3s() { return window("mp3s"); }
    std::string shown(const std::string& control) { return mp3s().control(control).text(); }
    std::string lastOpened() const {
        const std::string path = player.opened.empty() ? "" : player.opened.back();
        return path.substr(path.rfind('\\') + 1);
    }
    std::string notFound() const {
        return "not found, refresh the directory (" + drive("music/rock") + "\\)";
    }

    void press(const std::string& control, int row = noRow) {
        run([&] { EXPECT_TRUE(larkspin::press(mp3s(), control, row)) << control; });
    }
    void pressTwice(const std::string& control, int row = noRow) {
        run([&] { EXPECT_TRUE(larkspin::pressTwice(mp3s(), control, row)) << control; });
    }
    void choose(const std::string& button, const std::string& entry) {
        press(button);
        chooseFromPopup(entry);
    }

    // A line said, or a button pressed; what comes of it, as `answer` tells it; and which file
    // has been opened last, unless that is all the same.
    struct Act {
        std::string act, answer, opened = {};
    };
    void work(const std::vector<Act>& acts) {
        for (const Act& one : acts) {
            SCOPED_TRACE(one.act);
            EXPECT_EQ(answerTo([&] { one.act[0] == '\'' ? void(owner(one.act)) : press(one.act); }),
                      one.answer);
            if (!one.opened.empty())
                EXPECT_EQ(lastOpened(), one.opened);
        }
    }
};

} // namespace larkspin
