// The media window `mp3s`: its place, its two heights and its title label. What stands on it is
// listed in media_controls.
#pragma once

#include "chat/core.h"
#include "shell/settings.h"
#include "shell/window.h"

#include <string>

namespace larkspin {

class MediaControl;

class MediaWindow {
public:
    // Twips. Only these two heights are ever set.
    static constexpr int fullHeight = 2520;
    static constexpr int miniHeight = 315; // the title strip alone
    static constexpr int width = 4500;

    MediaWindow(const Core& core, MediaControl& player) : state_(core.state), player_(player) {}

    // Takes place and height from the settings, and gives them back at the end of a run.
    void load(const StoredSettings& stored);
    void save(SettingsChanges& changes) const;

    // The mini height leaves only the title label, which then serves as a small clock.
    bool isMini() const { return mp3s.place.height == miniHeight; }
    void toggleHeight();
    void showPosition();
    void showLength();

    Window mp3s{.name = "mp3s"};

private:
    AppState& state_;
    MediaControl& player_;
};

} // namespace larkspin
