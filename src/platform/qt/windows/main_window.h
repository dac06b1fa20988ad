// The owner's main window: the others come up beside it, on its screen, and go and come back with
// it.
#pragma once

#include <QPointer>
#include <QRect>
#include <QWidget>
#include <functional>
#include <vector>

class QWindow;

namespace larkspin {

struct Window;

class MainWindow {
public:
    MainWindow() = default; // there is none
    // `parts` tells what of it isn't to be covered, the most important first, by places on the
    // screen.
    MainWindow(QWidget& widget, std::function<std::vector<QRect>()> parts);

    bool exists() const { return !widget_.isNull(); }
    bool isSeen() const;
    bool isAway() const; // minimized or hidden, after it was shown

    // These need one that is seen.
    QRect area() const; // of its screen, without panels
    QRect frame() const;
    std::vector<QRect> parts() const { return parts_(); }
    QWindow* handle() const;

private:
    QPointer<QWidget> widget_;
    std::function<std::vector<QRect>()> parts_ = [] { return std::vector<QRect>(); };
};

// Whom a window stands with.
struct Neighbours {
    MainWindow main = {};
    // Where the other windows are that can be seen.
    std::function<std::vector<QRect>(const Window& window)> others = [](const Window&) {
        return std::vector<QRect>();
    };
    // How far, in twips, what stands on a window reaches above it.
    std::function<int(const Window& window)> above = [](const Window&) { return 0; };
};

} // namespace larkspin
