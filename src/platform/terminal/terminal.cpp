#include "platform/terminal/terminal.h"

#include "shell/kept_files.h"
#include "text/number.h"
#include "text/utf8.h"
#include "text/visible.h"

#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

// How long a line may do its work undisturbed. Lines pasted together run one after the other by
// that, and a recital, which takes longer, can still be broken off by the next line.
constexpr Nanoseconds ownersPatience = std::chrono::milliseconds(300);

constexpr std::size_t mostSeenChoices = 40; // more than that nobody looks through

constexpr std::size_t longestInPrompt = 30; // characters: a server gives names of any length

bool inputIsTerminal() {
    return ::isatty(STDIN_FILENO) == 1;
}

bool outputIsTerminal() {
    return ::isatty(STDOUT_FILENO) == 1;
}

// Whether both lead to the same terminal or file. They then share one queue, so that lines keep
// their order.
bool errorsGoWithOutput() {
    struct stat output {
    }, errors{};
    return ::fstat(STDOUT_FILENO, &output) == 0 && ::fstat(STDERR_FILENO, &errors) == 0 &&
           output.st_dev == errors.st_dev && output.st_ino == errors.st_ino;
}

} // namespace

Terminal::Terminal(PollLoop& loop, ChatLines& lines, IrcNetworks::MakeConnection connections,
                   KeptFiles& files, const DataDirectory& directory, const std::string& screenName,
                   TerminalDialogs::ReadPath readPath)
    : output_(loop, STDOUT_FILENO), errors_(loop, STDERR_FILENO),
      input_(loop, inputIsTerminal() ? ownersPatience : TerminalInput::never),
      password_(screen, input_),
      screen(output_, errorsGoWithOutput() ? output_ : errors_,
             outputIsTerminal() ? TerminalScreen::Form::styled : TerminalScreen::Form::protocol),
      dialogs(screen, input_, readPath), desktop(shows()),
      rooms(loop, lines, std::move(connections), password_, files, directory, screenName,
            {.changed = [this] { showOwnName(); }}),
      loop_(loop), commands_(shows(), desktop, rooms.slashWords(),
                             [this](const std::string& line) { rooms.room.say(line); }) {
    rooms.networks.readPathsBy(readPath);
    rooms.conversations.beforeChange([this] { showNew(); });
    screen.before([this] { showNew(); });
    loop.beforeSleep([this] { showNew(); });
    // A reader that has gone shows as an error of writing, and the music plays on.
    std::signal(SIGPIPE, SIG_IGN);
    if (inputIsTerminal() && outputIsTerminal())
        openEditor(loop);
    if (editor_) {
        keepHistory(files, directory.historyFile());
        return;
    }
    reader_.emplace(loop, input_, STDIN_FILENO);
    if (inputIsTerminal())
        return;
    // The lines of a script wait while the reader of the output has much left to read.
    input_.holdUntil([this] { return output_.busyUntil(); });
    for (const auto when : {&QueuedOutput::whenTaken, &QueuedOutput::whenGone})
        (output_.*when)([this] { input_.deliverLater(); });
}

ShowUnder Terminal::shows() {
    return [this](std::string_view head, const std::string& text) { screen.show(head, text); };
}

void Terminal::openEditor(PollLoop& loop) {
    // The editing library works in characters. If the owner's locale knows bytes only, Debian's
    // C.UTF-8 is used.
    if (!std::setlocale(LC_CTYPE, "") || MB_CUR_MAX == 1)
        std::setlocale(LC_CTYPE, "C.UTF-8");
    editor_ = LineEditor::open(loop, input_, output_, prompt());
    if (!editor_)
        return;
    screen.aroundTypedLine([this] { editor_->hide(); }, [this] { editor_->show(); });
    loop.onSignals({SIGWINCH, SIGCONT}, [this] { editor_->drawAnew(); });
    loop.onSignals({SIGTSTP}, [this] { editor_->stop(); });
    editor_->holdAfter(&IrcWords::asksPassword);
    editor_->maskBy([this](const std::string& line, const Conversations::Begun& begun) {
        return rooms.withoutSecrets(line, begun);
    });
    editor_->placeBy([this] { return rooms.conversations.begun(); });
    password_.editBy(*editor_);
}

// On a network it begins with the conversation, since all are shown one below the other.
std::string Terminal::prompt() const {
    const auto bounded = [](const std::string& name) {
        return name.substr(0, prefixLength(name, longestInPrompt));
    };
    const Conversation& front = rooms.conversations.front();
    const std::string place =
        front.isAtHome() ? "" : '[' + bounded(rooms.conversations.fullName(front)) + "] ";
    return place + bounded(visibleName(rooms.room.ownName())) + ": ";
}

void Terminal::showNew() {
    using Speaker = TerminalScreen::Speaker;
    newLines_.take(
        {.entered =
             [this](const Conversation& conversation, bool) {
                 screen.showRoom(wordsOfEntering(rooms.conversations, conversation), Speaker::owner,
                                 stampOf({.at = loop_.moment()}, loop_));
                 showOwnName();
             },
         .leftOut =
             [this](int lines) {
                 screen.showRoom(counted(lines, "line") + " before these", Speaker::owner);
             },
         .line = [this](const KeptLine& line) { showLine(line); },
         .elsewhere =
             [this](const Conversation& conversation, const KeptLine& line) {
                 screen.showRoom(wordsFromElsewhere(rooms.conversations, conversation, line),
                                 Speaker::other, stampOf(line, loop_));
             }});
}

// What the owner types stands on his screen already.
void Terminal::showLine(const KeptLine& line) {
    using Speaker = TerminalScreen::Speaker;
    const bool isAnswer = line.kind == KeptLine::Kind::answer;
    const Speaker speaker = line.isOwners || isAnswer ? Speaker::owner : Speaker::other;
    if (line.isOnScreen)
        return;
    if (line.kind == KeptLine::Kind::said)
        screen.showLine(line.speaker, line.text, speaker, stampOf(line, loop_));
    else
        screen.showRoom(wordsOf(line), speaker, stampOf(line, loop_));
}

void Terminal::showOwnName() {
    if (editor_)
        editor_->setPrompt(prompt());
}

void Terminal::completeBy(LineEditor::Complete complete) {
    if (!editor_)
        return;
    editor_->onTab([this, complete = std::move(complete)](std::string_view typed) {
        Completion completion = rooms.completionOf(typed, commands_.words(), complete);
        showChoices(completion);
        return completion;
    });
}

// Only when nothing could be added to what was typed.
void Terminal::showChoices(const Completion& completion) {
    if (!completion.addsNothing)
        return;
    const std::size_t count = completion.choices.size();
    const std::size_t seen = std::min(count, mostSeenChoices);
    for (std::size_t choice = 0; choice < seen; ++choice)
        screen.show("tab", completion.choices[choice].shown);
    if (const auto others = count - seen + static_cast<std::size_t>(completion.others); others > 0)
        screen.show("tab", "and " + std::to_string(others) + " more");
}

void Terminal::keepHistory(Files& files, const std::string& path) {
    history_.emplace(files, path);
    for (const std::string& line : history_->lines())
        editor_->remember(line);
    editor_->onLine([this](const std::string& line) { history_->add(line); });
}

void Terminal::open(std::vector<Window*> windows, Recitals& recitals, Task quit) {
    recitals.onEnd([this] { input_.deliverLater(); });
    // `/quit` drops the lines after it, as if the input had ended there.
    commands_.connect(std::move(windows), [this] {
        rooms.words.quits();
        input_.cut();
    });
    // Nobody hears a recital when the reader has gone, so nothing waits for its end.
    input_.open(
        {.actsAtOnce = [this](const std::string& line) { return commands_.words().knows(line); },
         .take = [this](const std::string& line) { take(line); },
         .ended = std::move(quit),
         .underWay = [this, &recitals] { return output_.isRead() ? recitals.count() : 0; }});
    rooms.networks.takeUpAgain();
}

void Terminal::take(const std::string& line) {
    const bool isTaken = rooms.goBackFor(line, input_.begun());
    if (isTaken && SlashWords::isMeantForIt(line))
        rooms.conversations.asOwnerWants([&] { commands_.run(line); });
    else if (isTaken)
        rooms.room.say(line, editor_ != nullptr);
    if (editor_)
        editor_->goOn();
}

void Terminal::close() {
    rooms.finish();
    showNew(); // also of lines that can't be said any more
    password_.dismiss();
    if (editor_)
        editor_->close();
    if (history_)
        history_->save();
    output_.finish();
}

} // namespace larkspin
