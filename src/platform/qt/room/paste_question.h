// Asks whether several pasted lines are to be said, and shows them: a panel above the line to type
// in, which keeps the keyboard.
#pragma once

#include "host/pasted_lines.h"

#include <QFrame>
#include <functional>

class QLabel;
class QListWidget;

namespace larkspin {

class PasteQuestion : public QFrame {
public:
    // The task gets the answer that the mouse gives.
    explicit PasteQuestion(std::function<void(bool says)> answered);

    void ask(const PastedLines& pasted);
    void scroll(int rows);
    int page() const; // rows

private:
    QLabel& question_; // these belong to the panel's layout
    QListWidget& lines_;
};

} // namespace larkspin
