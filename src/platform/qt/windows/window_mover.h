// Where a window stands: where its description says, or where the owner moves it, which the
// description is then told. It never gets lost beyond the screens.
#pragma once

#include "shell/window.h"

#include <QPoint>
#include <QSize>

class QWidget;

namespace larkspin {

class WindowMover {
public:
    WindowMover(Window& window, QWidget& widget) : window_(window), widget_(widget) {}

    // Moves the widget to where the description says, if that is a new place, or in any case. True
    // when it has been moved.
    bool refresh(bool inAnyCase);
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
    QPoint middleOfScreen() const; // of the screen with the pointer
    void tellPlace();

    Window& window_;
    QWidget& widget_;
    QPoint asked_;          // where the description wanted it last
    QPoint gripped_, hold_; // where the button went down, and where that is on the window
    bool follows_ = false;
    bool isAsking_ = false;
};

} // namespace larkspin
