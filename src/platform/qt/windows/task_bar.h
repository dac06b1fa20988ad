// One entry in the task bar for the program's windows together.
#pragma once

class QWindow;

namespace larkspin {

// The window gets no entry when it is shown the next time, which is what must follow: a window
// manager forgets this when the window is hidden. Only on X.
void keepOffTaskBar(QWindow& window);

} // namespace larkspin
