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
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace larkspin {

class LineEditor {
public:
    // Edits on standard input and draws on the output. Nothing when standard input is no terminal
    // that can be edited on.
    static std::unique_ptr<LineEditor> open(PollLoop& loop, TerminalInput& input,
                                            QueuedOutput& output, const std::string& prompt);
    ~LineEditor();
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;

    // What Tab makes of the text in front of the cursor.
    using Complete = std::function<Completion(std::string_view typed)>;
    void onTab(Complete complete) { complete_ = std::move(complete); }

    // Adds a line to those that come back with the arrow up. Typed lines are added as well, and the
    // task of `onLine` is told of them.
    void remember(const std::string& line) { library_->remember(line); }
    void onLine(std::function<void(const std::string& line)> typed) { onLine_ = std::move(typed); }

    // What stands on the screen, and comes back, in place of a line that has been typed, and
    // begun there: secrets are masked.
    using Mask = std::function<std::string(const std::string&, const Conversations::Begun&)>;
    void maskBy(Mask masked) { masked_ = std::move(masked); }

    // Tells where a line is that is begun now; the input gets that with the line.
    void placeBy(std::function<Conversations::Begun()> place) { place_ = std::move(place); }

    // What stands in front of the line, unless a secret is asked for.
    void setPrompt(const std::string& prompt);

    // The next typed line is neither shown nor remembered nor brought to the input, but given to
    // the task. It is empty when the owner leaves it so.
    using Secret = std::function<void(std::string line)>;
    void takeSecret(const std::string& prompt, Secret secret);
    void dropSecret();

    // After a line for which this is true, keys wait for `goOn`, since they may type a secret.
    void holdAfter(std::function<bool(const std::string& line)> line) {
        holdsAfter_ = std::move(line);
    }
    void goOn();

    // Take the line off the screen and put it back, so that other text can come above it.
    void hide();
    void show();

    // After the terminal's size or mode has changed under it.
    void drawAnew();

    // Stops the process, as Ctrl-Z asks for, with the terminal as it was found.
    void stop();

    // Gives the terminal back.
    void close();

private:
    LineEditor(PollLoop& loop, TerminalInput& input, QueuedOutput& output,
               std::unique_ptr<EditLibrary> library, std::string prompt);
    void beginWith(const std::string& typed);
    void hear();
    void bytesCame();
    void takeKeys();
    void take(std::string_view key);
    void type(std::string_view characters);
    void takeSecretKey(std::string_view key);
    void noteWhereBegun();
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
    Mask masked_ = [](const std::string& line, const Conversations::Begun&) { return line; };
    std::function<bool(const std::string&)> holdsAfter_ = [](const std::string&) { return false; };
    std::function<Conversations::Begun()> place_ = [] { return Conversations::Begun(); };
    std::optional<Conversations::Begun> begun_; // while something is typed
    std::string prompt_;
    Secret secret_; // while it is asked for
    std::string typedSecret_;
    std::string bytes_;                  // of a key whose rest hasn't come
    TimerId incomplete_ = TimerId::none; // after which that rest isn't expected any more
    TimerId look_ = TimerId::none;       // for the terminal, while the process is in the background
    bool takesNextAsItIs_ = false;       // the next character is no key
    bool isHeld_ = false;
    bool isOpen_ = true;
};

} // namespace larkspin
