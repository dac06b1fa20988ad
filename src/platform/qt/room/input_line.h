// The line in which the owner types what he says, as on the terminal: with the lines typed last on
// the arrows up and down, and completion on Tab.
#pragma once

#include "library/completion.h"

#include <QLineEdit>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace larkspin {

class LineHistory;

class InputLine : public QLineEdit {
public:
    // The history must live on.
    explicit InputLine(LineHistory& history);

    // Told of each line that is finished, from within the key that does so.
    void onLine(std::function<void(std::string line)> typed) { onLine_ = std::move(typed); }

    // What Tab makes of the text in front of the cursor, and what is told where it could become
    // several things.
    using Complete = std::function<Completion(std::string_view typed)>;
    void onTab(Complete complete) { complete_ = std::move(complete); }
    void onChoices(std::function<void(const Completion&)> show) { onChoices_ = std::move(show); }

    // Page up and page down belong to what is above it.
    void onPage(std::function<void(int pages)> scroll) { onPage_ = std::move(scroll); }

    void empty();

    // The line that is typed next isn't shown or kept, but taken from here; blank where the owner
    // leaves it so, or strikes Escape.
    using Secret = std::function<void(std::string line)>;
    void takeSecret(Secret secret);
    void dropSecret();

    // After such a line nothing is shown or handed on until `goOn`: it may be a secret.
    void holdAfter(std::function<bool(const std::string& line)> line) {
        holdsAfter_ = std::move(line);
    }
    void goOn();

private:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeLineBreaks();
    bool hides() const { return secret_ || isHeld_; }
    bool takeSecretKey(int key);
    void endSecret(std::string line);
    void endLine();
    void recall(int way);
    void complete();

    LineHistory& history_;
    std::function<void(std::string)> onLine_ = [](const std::string&) {};
    Complete complete_ = [](std::string_view) { return Completion{}; };
    std::function<void(const Completion&)> onChoices_ = [](const Completion&) {};
    std::function<void(int)> onPage_ = [](int) {};
    std::function<bool(const std::string&)> holdsAfter_ = [](const std::string&) { return false; };
    Secret secret_;                 // while it is asked for
    bool isHeld_ = false;           // before that
    bool isSecretComplete_ = false; // before that, too
    int back_ = 0;                  // how many lines of the history back the line is
    QString begun_;                 // what stood there before the owner went back
};

} // namespace larkspin
