#include "platform/terminal/windows/screen_windows.h"

#include "platform/terminal/windows/window_layer.h"

namespace larkspin {

struct ScreenWindows::All {
    Stage& stage;
    std::vector<std::unique_ptr<WindowLayer>> windows;
};

// The loop keeps its task for longer than the windows live. The screen may have been drawn by then,
// so a change brings another turn.
ScreenWindows::ScreenWindows(EventLoop& loop, Stage& stage, const std::vector<Window*>& windows)
    : all_(std::make_shared<All>(All{stage, {}})) {
    for (Window* const window : windows)
        all_->windows.push_back(std::make_unique<WindowLayer>(stage, *window));
    loop.beforeSleep([&loop, kept = std::weak_ptr(all_)] {
        const auto all = kept.lock();
        if (!all)
            return;
        const bool wasChanged = all->stage.layers.isChanged();
        all->stage.refresh();
        if (!wasChanged && all->stage.layers.isChanged())
            loop.post([] {});
    });
}

} // namespace larkspin
