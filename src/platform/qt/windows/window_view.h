// A described window as a frameless one of Qt's, with an outline and a view of each control.
#pragma once

#include "platform/qt/file_drops.h"
#include "platform/qt/windows/control_view.h"
#include "platform/qt/windows/hand.h"
#include "platform/qt/windows/main_window.h"
#include "platform/qt/windows/window_mover.h"

#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

namespace larkspin {

class WindowView : public QWidget {
public:
    // The neighbours must live on.
    WindowView(const Hand& hand, const Neighbours& neighbours);
    ~WindowView() override;

    // Brings the window up to date. With other screens than the last time it may have got out of
    // reach, and is moved. True when the display has been asked for something, which Qt does in its
    // next turn.
    bool refresh(bool areOtherScreens);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void goWithMain(bool isCalled);
    void appear();
    void disappear();
    void stayOnTopAgain();
    bool refreshFrame();
    void addMoveKeys();

    Hand hand_;
    Window& window_;
    const Neighbours& neighbours_;
    WindowMover mover_;
    QWidget inside_; // all but the outline
    std::vector<std::unique_ptr<ControlView>> controls_;
    std::optional<FileDrops> drops_; // where the window takes them
    std::optional<Color> background_;
    int alpha_ = 255;
    int calls_ = 0; // calls of the description that have been answered
    bool wasMainAway_ = false;
    bool goesWithMain_ = false; // which has gone, and nobody has called for this one since
    bool leaves_ = false;       // the window manager has had its time
    bool isAlong_ = false;      // out of sight with the main window
};

// Tells screen readers that such a view is a window. To be called once, before the first one is
// made.
void describeWindowsAloud();

} // namespace larkspin
