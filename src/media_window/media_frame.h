// The frame of the media window `mp3s`: its place, its two heights and its title label.
#pragma once

#include "chat/core.h"
#include "shell/settings.h"
#include "shell/window.h"

#include <string>
#include <string_view>

namespace larkspin {

class MediaControl;

class MediaFrame {
public:
    // Twips. Only these two heights are ever set.
    static constexpr int fullHeight = 2520;
    static constexpr int miniHeight = 315; // the title strip alone
    static constexpr int width = 4500;
    static constexpr int firstEdge = 4500; // left and top, until it has been moved

    MediaFrame(const Core& core, MediaControl& player) : state_(core.state), player_(player) {}

    // Takes place and height from the settings, and gives them back at the end of a run.
    void load(const StoredSettings& stored);
    void save(SettingsChanges& changes) const;

    // Hides the window while the splash window tells of a long job, and shows it again after that.
    // The settings count it as shown meanwhile. A job may run within another one.
    void stepAside();
    void comeBack();

    // The mini height leaves only the title strip. Its label then serves as a small clock.
    bool isMini() const { return mp3s.place.height == miniHeight; }
    void toggleHeight();
    void showPosition();
    void showLength();

    // Show a hint in the title label: about the control under the mouse, or about the label itself.
    // The label's own hint tells how to resize the window, or names the song in the mini height.
    void hint(std::string_view text);
    void hintOfTitle();

    Window mp3s{.name = "mp3s",
                .spoken = "larkspin media",
                .place = {firstEdge, firstEdge, width, fullHeight}};

private:
    std::string songName();

    AppState& state_;
    MediaControl& player_;
    int jobs_ = 0; // long jobs for which the window has stepped aside
};

} // namespace larkspin
