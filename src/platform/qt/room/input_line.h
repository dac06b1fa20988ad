// The line in which the owner types what he says, as on the terminal: with the lines typed last on
// the arrows up and down, and completion on Tab. Several lines pasted at once are said only after
// he has been asked.
#pragma once

#include "host/half_typed.h"
#include "library/completion.h"
#include "platform/qt/room/line_offers.h"

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

    // The task gets each finished line, while the key that ended it is being handled.
    void onLine(std::function<void(std::string line)> typed) { onLine_ = std::move(typed); }

    // The task is called as the owner begins to type a line.
    void onBegin(std::function<void()> begins) { onBegin_ = std::move(begins); }

    // What Tab makes of the text in front of the cursor.
    using Complete = std::function<Completion(std::string_view typed)>;
    void onTab(Complete complete) { complete_ = std::move(complete); }

    // Page up and page down scroll what is above the line.
    void onPage(std::function<void(int pages)> scroll) { onPage_ = std::move(scroll); }

    void empty();

    // What has been typed so far, to be put back later, when the owner has been somewhere else
    // meanwhile. A secret isn't told and isn't replaced.
    // Its cursor counts as Qt does.
    Draft draft() const;
    void put(const Draft& draft);

    // While a secret is typed, or may be.
    bool hides() const { return secret_ || isHeld_; }

    // The next typed line is neither shown nor kept, but given to the task. It is empty when the
    // owner leaves it so, or strikes Escape.
    using Secret = std::function<void(std::string line)>;
    void takeSecret(Secret secret);
    void dropSecret();

    // How a typed line comes back: secrets are masked.
    void maskBy(std::function<std::string(const std::string& line)> masked) {
        masked_ = std::move(masked);
    }

    // After a line for which this is true, nothing is shown or handed on until `goOn`, since it may
    // be a secret.
    void holdAfter(std::function<bool(const std::string& line)> line) {
        holdsAfter_ = std::move(line);
    }
    void goOn();

    // Whether the owner has begun to type something, or has something to answer here.
    bool isBegun() const { return !text().isEmpty() || hides() || offers_.isAsking(); }

private:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void noteBegin();
    bool takesPaste();
    void askAbout(PastedLines pasted);
    void say(std::vector<std::string> lines);
    bool takeSecretKey(int key);
    void forget();
    void endSecret(std::string line);
    void endLine();
    void handOn(std::string line);
    void recall(int way);
    void complete();
    void narrow();
    void take(const Completion::Choice& choice);
    bool replace(std::size_t characters, const std::string& text);
    Completion completion() const;
    void become(const QString& line, qsizetype cursor);

    LineHistory& history_;
    std::function<void(std::string)> onLine_ = [](const std::string&) {};
    std::function<void()> onBegin_ = [] {};
    bool isBegun_ = false;
    Complete complete_ = [](std::string_view) { return Completion{}; };
    std::function<void(int)> onPage_ = [](int) {};
    std::function<std::string(const std::string&)> masked_ = [](const std::string& line) {
        return line;
    };
    std::function<bool(const std::string&)> holdsAfter_ = [](const std::string&) { return false; };
    Secret secret_;                 // set while one is asked for
    bool isHeld_ = false;           // a secret may be typed before it is asked for
    bool isSecretComplete_ = false; // and has been ended with Return
    int back_ = 0;                  // how many lines of the history back the line is
    QString begun_;                 // what stood there before the owner went back
    QString before_;                // what stood there before the last change
    int cursorBefore_ = 0;
    std::size_t replaced_ = 0; // characters in front of the cursor, by a choice that is taken
    LineOffers offers_;
};

} // namespace larkspin
