// Boxes, questions and file dialogs as windows of their own, which stay above all others. Events
// run while one is open. Escape dismisses it, and so does a long silence; nothing that it says is
// taken for markup. One takes the keyboard only where it answers something that the owner has just
// pressed: he may be typing elsewhere, and Space or Return would dismiss it unread.
#pragma once

#include "platform/posix/watching_loop.h"
#include "shell/dialogs.h"

#include <QPointer>

class QDialog;
class QFileDialog;
class QWidget;

namespace larkspin {

class QtDialogs : public Dialogs {
public:
    explicit QtDialogs(WatchingLoop& loop) : loop_(loop) {}

    void titledBox(const std::string& title, const std::string& text) override;
    void stopBox(const std::string& text) override;
    std::optional<std::string> openFile(const FileQuestion& question) override;
    std::vector<std::string> openFiles(const FileQuestion& question) override;
    std::optional<std::string> saveFile(const FileQuestion& question) override;
    std::optional<std::string> openDirectory(const FileQuestion& question) override;
    void dismissAll() override;

    // From now on they belong to that window, and have no entry of their own in the task bar.
    void belongTo(QWidget& window) { main_ = &window; }

    // To be called when the owner presses something in a window or a menu. A line that he types in
    // the room doesn't count.
    void ownerPresses();

private:
    bool askYesNo(const std::string& question, Preset preset) override;
    std::optional<std::string> askLine(const TextQuestion& question) override;
    // What the dialog ended with; 0 when it was dismissed.
    int show(QDialog& dialog, bool answersPress);
    std::vector<std::string> askPaths(QFileDialog& dialog, const FileQuestion& question,
                                      bool answersPress);
    bool isPressed() const; // a moment ago

    WatchingLoop& loop_;
    QPointer<QWidget> main_;
    std::optional<Nanoseconds> pressedAt_;
    std::vector<QDialog*> open_;
    unsigned dismissals_ = 0; // of all
};

} // namespace larkspin
