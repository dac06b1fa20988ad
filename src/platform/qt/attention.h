// The owner's attention for a window that he doesn't look at: its entry in the task bar asks for
// it.
#pragma once

class QWidget;

namespace larkspin {

void askForAttention(QWidget& window);

} // namespace larkspin
