#include "platform/qt/windows/main_window.h"

#include <QScreen>
#include <QWindow>
#include <utility>

namespace larkspin {

MainWindow::MainWindow(QWidget& widget, std::function<std::vector<QRect>()> parts)
    : widget_(&widget), parts_(std::move(parts)) {}

QWindow* MainWindow::handle() const {
    return widget_ ? widget_->windowHandle() : nullptr;
}

bool MainWindow::isSeen() const {
    return handle() && handle()->isExposed() && !widget_->isMinimized();
}

// Qt takes a window for minimized as soon as that is asked for, even where nobody minimizes it.
bool MainWindow::isAway() const {
    return handle() && (widget_->isHidden() || (widget_->isMinimized() && !handle()->isExposed()));
}

QRect MainWindow::area() const {
    return widget_->screen()->availableGeometry();
}

QRect MainWindow::frame() const {
    return widget_->frameGeometry();
}

} // namespace larkspin
