// One entry in the task bar for the program's windows together.
#pragma once

class QWidget;
class QWindow;

namespace larkspin {

// The window gets no entry when it is shown the next time, which is what must follow: a window
// manager forgets this when the window is hidden. Only on X.
void keepOffTaskBar(QWindow& window);

// The window, which is to be shown next, belongs to the main one, if that is in sight. Else it has
// an entry of its own, since a window manager might not show it.
void belongTo(const QWidget* main, QWidget& window);

} // namespace larkspin
