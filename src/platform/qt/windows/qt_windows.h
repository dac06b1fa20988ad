// All described windows on a desktop. They are brought up to date once per turn, in front of the
// loop's sleep, however much has changed in it.
#pragma once

#include "platform/qt/windows/hand.h"
#include "platform/qt/windows/main_window.h"
#include "shell/window.h"

#include <memory>
#include <vector>

class QWidget;

namespace larkspin {

class QtWindows {
public:
    // A window is made when it is shown for the first time. The title's menu is called by a right
    // click on a title label, and by the keyboard's menu key.
    QtWindows(EventLoop& loop, const std::vector<Window*>& windows, const HandTells& tells = {},
              const MainWindow& main = {});
    ~QtWindows();

    // Null before the window was shown for the first time.
    QWidget* widgetOf(const Window& window) const;

private:
    struct All;
    std::shared_ptr<All> all_;
};

} // namespace larkspin
