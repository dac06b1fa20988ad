// Boxes, questions and file dialogs as windows on a terminal's screen, above all others. Events run
// while one is open. Escape dismisses it, and so does a long silence. One takes the keyboard only
// where it answers something that the owner has just pressed, or greets him as the program starts:
// he may be typing a line, and Space or Return would dismiss it unread. Otherwise F6 leads into it,
// Return on an empty line, and the mouse.
#pragma once

#include "platform/posix/watching_loop.h"
#include "platform/terminal/windows/file_window.h"
#include "platform/terminal/windows/question_window.h"
#include "platform/terminal/windows/stage.h"
#include "shell/dialogs.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class ScreenDialogs : public Dialogs {
public:
    // All must live on.
    ScreenDialogs(WatchingLoop& loop, Stage& stage, Directories& directories);

    void titledBox(const std::string& title, const std::string& text) override;
    void stopBox(const std::string& text) override;
    std::optional<std::string> openFile(const FileQuestion& question) override;
    std::vector<std::string> openFiles(const FileQuestion& question) override;
    std::optional<std::string> saveFile(const FileQuestion& question) override;
    std::optional<std::string> openDirectory(const FileQuestion& question) override;
    void dismissAll() override;

private:
    bool askYesNo(const std::string& question, Preset preset) override;
    std::optional<std::string> askLine(const TextQuestion& question) override;
    bool answers(QuestionWindow& question);
    std::vector<std::string> askPaths(FileWindow::Wants wants, const FileQuestion& question);
    // False when it was dismissed.
    bool show(Window& window, const std::string& focus, const std::function<bool()>& isOver);
    // Whether a dialog that comes up now takes the keyboard.
    bool isAwaited() const;

    WatchingLoop& loop_;
    Stage& stage_;
    Directories& directories_;
    std::optional<Nanoseconds> pressedAt_;
    const Nanoseconds startedAt_ = loop_.now();
    bool isFirst_ = true;
    std::vector<Window*> open_;
    unsigned dismissals_ = 0; // of all
};

} // namespace larkspin
