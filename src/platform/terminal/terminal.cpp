#include "platform/terminal/terminal.h"

#include "platform/terminal/dumb_terminal.h"
#include "shell/kept_files.h"
#include "text/number.h"

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

// How long a line may do its work undisturbed. Lines pasted together run one after the other by
// that, and a recital, which takes longer, can still be broken off by the next line.
constexpr Nanoseconds ownersPatience = std::chrono::milliseconds(300);

bool inputIsTerminal() {
    return ::isatty(STDIN_FILENO) == 1;
}

bool outputIsTerminal() {
    return ::isatty(STDOUT_FILENO) == 1;
}

TerminalScreen::Form formOfOutput() {
    using Form = TerminalScreen::Form;
    return !outputIsTerminal() ? Form::protocol : isDumbTerminal() ? Form::plain : Form::styled;
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
      screen(output_, errorsGoWithOutput() ? output_ : errors_, formOfOutput()),
      dialogs(screen, input_, readPath), desktop(shows()),
      rooms(loop, lines, std::move(connections), password_, files, directory, screenName, {}),
      loop_(loop), commands_(shows(), desktop, rooms.slashWords(),
                             [this](const std::string& line) { rooms.room.say(line); }),
      isForPerson_(inputIsTerminal() && outputIsTerminal()), reader_(loop, input_, STDIN_FILENO) {
    rooms.networks.readPathsBy(readPath);
    rooms.conversations.beforeChange([this] { showNew(); });
    screen.before([this] { showNew(); });
    loop.beforeSleep([this] { showNew(); });
    // A reader that has gone shows as an error of writing, and the music plays on.
    std::signal(SIGPIPE, SIG_IGN);
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

void Terminal::showNew() {
    using Speaker = TerminalScreen::Speaker;
    newLines_.take(
        {.entered =
             [this](const Conversation& conversation, bool) {
                 screen.showRoom(wordsOfEntering(rooms.conversations, conversation), Speaker::owner,
                                 stampOf({.at = loop_.moment()}, loop_));
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
    rooms.takeUpAgain();
}

void Terminal::take(const std::string& line) {
    if (SlashWords::isMeantForIt(line))
        rooms.conversations.asOwnerWants([&] { commands_.run(line); });
    else
        rooms.room.say(line, isForPerson_);
}

void Terminal::close() {
    rooms.finish();
    showNew(); // also of lines that can't be said any more
    password_.dismiss();
    output_.finish();
}

} // namespace larkspin
