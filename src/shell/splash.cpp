#include "shell/splash.h"

#include "shell/app_state.h"
#include "shell/controls.h"
#include "shell/event_loop.h"
#include "shell/version.h"

namespace larkspin {

Splash::Splash(AppState& state, EventLoop& loop, bool fades)
    : state_(state), loop_(loop), pause_(loop), fades_(fades) {
    dire.name = "dire";
    dire.spoken = "larkspin player";
    dire.place = {0, 0, 4500, 900};
    dire.centred = dire.passes = true;
    dire.controls = {
        label({.name = "title",
               .place = {0, 0, 4500, 450},
               .font = {.family = "Trebuchet MS"},
               .text = caption("  larkspin player            version " +
                               std::to_string(versionMajor) + "." + std::to_string(versionMinor)),
               .onMouseDown = [this] { dragwindow(loop_, dire); }}),
        label(
            {.name = "statusLine", .place = {0, 450, 4500, 450}, .text = shows(state_.searchTerm)}),
    };
}

void Splash::open() {
    keepontop(dire);
    showStatusLine(true);
    if (fades_)
        fadeIn();
    dire.visible = true;
}

void Splash::show(const std::string& status) {
    state_.searchTerm = status;
    showStatusLine(true);
    dire.visible = true;
}

void Splash::fadeIn() {
    dire.alpha = 0;
    dire.visible = true;
    // Each step shows, since events are served, and the pause between two lets the window be drawn.
    for (int alpha = 1; alpha <= 255; ++alpha) {
        loop_.serveTurn();
        dire.alpha = alpha;
        if (alpha == 100)
            state_.searchTerm = buildText() + "Applying Settings...";
        if (alpha == 200)
            state_.searchTerm = buildText() + "Starting Up...";
        pause_(0.0001);
    }
}

} // namespace larkspin
