// Boxes and questions as lines on the screen. A question is answered by the next line of the input;
// an empty one dismisses it, and so does a long silence.
#pragma once

#include "shell/dialogs.h"

#include <functional>

namespace larkspin {

class TerminalInput;
class TerminalScreen;

class TerminalDialogs : public Dialogs {
public:
    // Gives the drive path for what the owner typed.
    using ReadPath = std::function<std::string(std::string_view typed)>;

    TerminalDialogs(TerminalScreen& screen, TerminalInput& input, ReadPath readPath)
        : screen_(screen), input_(input), readPath_(std::move(readPath)) {}

    void titledBox(const std::string& title, const std::string& text) override;
    void stopBox(const std::string& text) override;

    // A path may be native and absolute, open with `~/`, or be a drive path; any other is taken to
    // be in the question's directory. Several are separated by `|`.
    std::optional<std::string> openFile(const FileQuestion& question) override;
    std::vector<std::string> openFiles(const FileQuestion& question) override;
    std::optional<std::string> saveFile(const FileQuestion& question) override;
    std::optional<std::string> openDirectory(const FileQuestion& question) override;
    void dismissAll() override;

private:
    // Yes is a line that opens with y. Everything else is No.
    bool askYesNo(const std::string& question, Preset preset) override;
    std::optional<std::string> askLine(const TextQuestion& question) override;
    // Nothing when the question was dismissed.
    std::optional<std::string> answer();
    std::optional<std::string> askPath(std::string_view head, const FileQuestion& question);
    std::string pathOf(std::string_view typed, const FileQuestion& question) const;

    TerminalScreen& screen_;
    TerminalInput& input_;
    ReadPath readPath_;
};

} // namespace larkspin
