// Where a window stands: where its description says, beside the main window as it comes up, or
// where the owner moves it. The description is told. It never gets lost beyond the screens.
#pragma once

#include "platform/qt/windows/main_window.h"
#include "shell/window.h"

#include <QPoint>
#include <QSize>

class QWidget;

namespace larkspin {

class WindowMover {
public:
    WindowMover(Window& window, QWidget& widget, const Neighbours& neighbours)
        : window_(window), widget_(widget), neighbours_(neighbours) {}

    // Moves the widget to where it belongs, if that is a new place, as it appears, or when the
    // screens are other ones. True when it has been moved.
    bool refresh(bool appears, bool areOtherScreens);
    // To be called when the widget has been moved.
    void moved();

    // The mouse on a label by which the window is dragged. It follows from the first small way on,
    // and not at once, so that a double click isn't taken for a move.
    void grip(QPoint mouse);
    void follow(QPoint mouse);
    void nudge(QPoint way); // by the keyboard

private:
    QPoint described() const;
    enum class Seen { whole, strip };
    QPoint onScreen(QPoint corner, Seen wanted) const;
    QPoint middleOfScreen() const; // of the main window's, or of the one with the pointer
    bool comesBeside(bool appears);
    QPoint beside() const;
    void tellPlace();

    Window& window_;
    QWidget& widget_;
    const Neighbours& neighbours_;
    QPoint asked_;          // where the description wanted it last
    QPoint gripped_, hold_; // where the button went down, and where that is on the window
    bool follows_ = false;
    bool isAsking_ = false;
    bool awaitsMain_ = false; // which wasn't to be seen yet when this one appeared
};

} // namespace larkspin
