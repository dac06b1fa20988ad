#include "platform/terminal/windows/screen_dialogs.h"

#include "platform/terminal/windows/window_layer.h"

#include <memory>

namespace larkspin {

namespace {

using namespace std::chrono_literals;
using Asks = QuestionWindow::Kind;
using Wants = FileWindow::Wants;

// A dialog that comes up within this time after a press is taken for the answer to it.
constexpr Nanoseconds answerTime = 1s;
// And one within this time after the start, if nothing has been typed.
constexpr Nanoseconds greetingTime = 10s;

std::optional<std::string> firstOf(const std::vector<std::string>& paths) {
    return paths.empty() ? std::nullopt : std::optional(paths.front());
}

} // namespace

ScreenDialogs::ScreenDialogs(WatchingLoop& loop, Stage& stage, Directories& directories)
    : loop_(loop), stage_(stage), directories_(directories) {
    stage_.pressed = [this] { pressedAt_ = loop_.now(); };
}

void ScreenDialogs::titledBox(const std::string& title, const std::string& text) {
    QuestionWindow box(Asks::box, title, text);
    answers(box);
}

void ScreenDialogs::stopBox(const std::string& text) {
    QuestionWindow box(Asks::stop, std::string(boxTitle), text);
    answers(box);
}

bool ScreenDialogs::askYesNo(const std::string& question, Preset preset) {
    QuestionWindow box(Asks::yesOrNo, std::string(boxTitle), question);
    if (preset == Preset::no)
        box.focus = QuestionWindow::no;
    return answers(box);
}

std::optional<std::string> ScreenDialogs::askLine(const TextQuestion& question) {
    QuestionWindow box(Asks::line, question.title, question.prompt, question.preset);
    if (!answers(box) || box.line().empty())
        return std::nullopt;
    return box.line();
}

bool ScreenDialogs::answers(QuestionWindow& question) {
    return show(question.window, question.focus, [&question] { return question.isOver(); }) &&
           question.isAccepted();
}

std::optional<std::string> ScreenDialogs::openFile(const FileQuestion& question) {
    return firstOf(askPaths(Wants::file, question));
}

std::vector<std::string> ScreenDialogs::openFiles(const FileQuestion& question) {
    return askPaths(Wants::files, question);
}

std::optional<std::string> ScreenDialogs::saveFile(const FileQuestion& question) {
    return firstOf(askPaths(Wants::newFile, question));
}

std::optional<std::string> ScreenDialogs::openDirectory(const FileQuestion& question) {
    return firstOf(askPaths(Wants::directory, question));
}

// The directory is read in an event of its own, in the middle of the wait for the answer.
std::vector<std::string> ScreenDialogs::askPaths(Wants wants, const FileQuestion& question) {
    const auto files = std::make_shared<FileWindow>(directories_, wants, question);
    loop_.post([asked = std::weak_ptr(files)] {
        if (const auto open = asked.lock())
            open->open();
    });
    const bool isAnswered =
        show(files->window, FileWindow::focus, [&files] { return files->isOver(); });
    return isAnswered ? files->paths() : std::vector<std::string>();
}

// The windows and the room stay open to the owner, who may have to look something up.
bool ScreenDialogs::show(Window& window, const std::string& focus,
                         const std::function<bool()>& isOver) {
    const bool isWaitedFor = isAwaited();
    isFirst_ = false;
    paint(window, stage_.colors());
    WindowLayer layer(stage_, window, Layer::Rank::box);
    layer.focusOn(focus);
    layer.refresh();
    if (isWaitedFor)
        layer.enterByKey();
    open_.push_back(&window);
    const unsigned before = dismissals_;
    loop_.waitFor([&] { return isOver() || dismissals_ != before; }, loop_.now() + answerLimit);
    std::erase(open_, &window);
    if (!isOver() || dismissals_ != before)
        return false;
    stage_.pressed(); // another question may follow
    return true;
}

// The dialogs vanish at once. Their callers go on when the handlers that were started inside their
// waits have returned.
void ScreenDialogs::dismissAll() {
    ++dismissals_;
    for (Window* const window : open_)
        window->visible = false;
}

bool ScreenDialogs::isAwaited() const {
    const bool greets =
        isFirst_ && loop_.now() - startedAt_ < greetingTime && !stage_.isLineBegun();
    return greets || (pressedAt_ && loop_.now() - *pressedAt_ < answerTime);
}

} // namespace larkspin
