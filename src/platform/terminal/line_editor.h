// The line that the owner types on a terminal, with the usual keys and a history, at the bottom
// of the screen. Finished lines are brought to the input. A line holds a thousand characters, far
// more than a room takes; what is typed past that is refused with a beep.
#pragma once

#include "library/completion.h"
#include "platform/terminal/edit_library.h"
#include "platform/terminal/queued_output.h"
#include "platform/terminal/terminal_input.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace larkspin {

class LineEditor {
public:
    // On standard input; what is drawn goes to the output. Nothing when that is no terminal to
    // edit on.
    static std::unique_ptr<LineEditor> open(PollLoop& loop, TerminalInput& input,
                                            QueuedOutput& output, const std::string& prompt);
    ~LineEditor();
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;

    // What Tab makes of the text in front of the cursor.
    using Complete = std::function<Completion(std::string_view typed)>;
    void onTab(Complete complete) { complete_ = std::move(complete); }

    // A line that comes back with the arrow up, like those that are typed, of which the task is
    // told.
    void remember(const std::string& line) { library_->remember(line); }
    void onLine(std::function<void(const std::string& line)> typed) { onLine_ = std::move(typed); }

    // What stands in front of the line, unless a secret is asked for.
    void setPrompt(const std::string& prompt);

    // The line that is typed next isn't shown, remembered or brought to the input, but taken from
    // here. Blank where the owner leaves it so.
    using Secret = std::function<void(std::string line)>;
    void takeSecret(const std::string& prompt, Secret secret);
    void dropSecret();

    // After such a line keys wait for `goOn`: what they type may be a secret.
    void holdAfter(std::function<bool(const std::string& line)> line) {
        holdsAfter_ = std::move(line);
    }
    void goOn();

    // Take the line off the screen and put it back, for what is to stand above it.
    void hide();
    void show();

    // After the terminal's size or mode has changed under it.
    void drawAnew();

    // Gives the terminal back.
    void close();

private:
    LineEditor(PollLoop& loop, TerminalInput& input, QueuedOutput& output,
               std::unique_ptr<EditLibrary> library, std::string prompt);
    void bytesCame();
    void takeKeys();
    void take(std::string_view key);
    void type(std::string_view characters);
    void takeSecretKey(std::string_view key);
    void takeTyped();
    void showPrompt(const std::string& prompt);
    void endLine();
    void complete();

    PollLoop& loop_;
    TerminalInput& input_;
    QueuedOutput& output_;
    std::unique_ptr<EditLibrary> library_;
    Complete complete_ = [](std::string_view) { return Completion{}; };
    std::function<void(const std::string&)> onLine_ = [](const std::string&) {};
    std::function<bool(const std::string&)> holdsAfter_ = [](const std::string&) { return false; };
    std::string prompt_;
    Secret secret_; // while it is asked for
    std::string typedSecret_;
    std::string bytes_;                  // that make no whole key so far
    TimerId incomplete_ = TimerId::none; // when the rest of that key won't come any more
    bool takesNextAsItIs_ = false;       // the next character is no key
    bool isHeld_ = false;
    bool isOpen_ = true;
};

} // namespace larkspin
