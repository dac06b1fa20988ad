// Boxes, questions and lines to be answered, as described windows, so that they are drawn and
// worked like any other.
#pragma once

#include "platform/terminal/windows/cell_looks.h"
#include "shell/dialogs.h"
#include "shell/window.h"

#include <string>
#include <vector>

namespace larkspin {

// Twips, by which a described window gets the rows and columns that are wanted.
inline constexpr int twipsPerColumn = 75, twipsPerLine = 200, twipsPerRow = 285;
inline constexpr int dialogColumns = 50; // as many are shown on a usual terminal at once

// The strip of a dialog, by which it is moved, and the label that closes it.
std::vector<Control> dialogStrip(Window& window, int width, const std::string& title, Task dismiss);

// Buttons in the middle of a row.
struct DialogButton {
    std::string caption;
    Task press;
};
std::vector<Control> dialogButtons(int width, int top, const std::vector<DialogButton>& buttons);

// All controls of a dialog are in the colours of whoever opens it, and of no other.
void paint(Window& window, const TwoColors& colors);

class QuestionWindow {
public:
    enum class Kind { box, stop, yesOrNo, line };
    QuestionWindow(Kind kind, const std::string& title, const std::string& text,
                   const std::string& preset = {});
    QuestionWindow(const QuestionWindow&) = delete;
    QuestionWindow& operator=(const QuestionWindow&) = delete;

    static constexpr const char *yes = "yes", *no = "no"; // the buttons of such a question

    Window window;
    std::string focus; // the control that has the keyboard first

    bool isOver() const { return isOver_; }
    bool isAccepted() const { return isAccepted_; }
    const std::string& line() const { return line_; }

private:
    void end(bool accepts);

    std::string line_;
    bool isOver_ = false, isAccepted_ = false;
};

} // namespace larkspin
