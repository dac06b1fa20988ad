// The library that edits the typed line, held so that it can do no harm: it never waits for a key,
// never writes to the terminal itself, sees only keys that it is known to take well, and is told no
// terminal size that its tables can't bear. The terminal that it sees is one of our own making,
// which nobody reads; the mode of the real one is set here.
#pragma once

#include "platform/posix/line_history.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace larkspin {

class EditLibrary {
public:
    // Takes what is to be drawn on the terminal. It must not wait.
    using Draw = std::function<void(std::string_view bytes)>;

    // Nothing when standard input is no terminal, or no other can be had.
    static std::unique_ptr<EditLibrary> open(const std::string& prompt, Draw draw);
    ~EditLibrary();
    EditLibrary(const EditLibrary&) = delete;
    EditLibrary& operator=(const EditLibrary&) = delete;

    // Puts the terminal into the mode for single keys and shows the prompt with an empty line.
    void begin();
    // Gives the terminal its own mode back.
    void end();
    // Whether it isn't another's, as it is while the process runs in the background.
    bool hasTerminal() const;

    // Whether keys that would send a signal, such as Ctrl-C, come as keys instead.
    void takeSignalKeys(bool takes);

    // One key that does something, as the terminal sends it. A key without a use does nothing.
    void strike(std::string_view key);
    // Characters at the cursor. False when some had no place any more.
    bool insert(std::string_view characters);

    std::string line() const;
    std::string beforeCursor() const;
    // Puts a text in place of that many characters in front of the cursor. False when some of it
    // had no place any more.
    bool replaceBeforeCursor(std::size_t characters, std::string_view text);

    // What stands in front of the line from now on.
    void setPrompt(std::string prompt);

    // The lines that come back with the arrow up.
    static constexpr int historySize = static_cast<int>(LineHistory::mostLines);
    void remember(const std::string& line);

    // Takes the line off the screen, and draws it where the cursor stands.
    void erase();
    void draw();

private:
    struct Parts;

    explicit EditLibrary(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> parts_;
};

} // namespace larkspin
