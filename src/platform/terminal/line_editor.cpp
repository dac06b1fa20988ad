#include "platform/terminal/line_editor.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <histedit.h>
#include <poll.h>
#include <string_view>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace larkspin {

namespace {

constexpr int historySize = 500;
constexpr const char* eraseLine = "\r\x1b[J"; // and all below it
constexpr int sequenceTimeout = 50;           // milliseconds, for the rest of what a key sends

// One character of those that a key sends. The rest of a key may never come: a lone escape, or
// half a character. Waiting for it would halt the program.
int readCharacter(EditLine*, wchar_t* character) {
    std::mbstate_t state{};
    for (;;) {
        pollfd readable{STDIN_FILENO, POLLIN, 0};
        char byte = 0;
        if (::poll(&readable, 1, sequenceTimeout) <= 0 || ::read(STDIN_FILENO, &byte, 1) != 1)
            return 0;
        const std::size_t length = std::mbrtowc(character, &byte, 1, &state);
        if (length == static_cast<std::size_t>(-2))
            continue;
        if (length == static_cast<std::size_t>(-1))
            *character = L'\uFFFD';
        return 1;
    }
}

std::size_t shownWidth(std::string_view text) {
    std::size_t width = 0;
    std::mbstate_t state{};
    while (!text.empty()) {
        wchar_t character = 0;
        const std::size_t length = std::mbrtowc(&character, text.data(), text.size(), &state);
        if (length == 0 || length > text.size())
            return width + text.size();
        const int columns = ::wcwidth(character);
        width += columns > 0 ? static_cast<std::size_t>(columns) : 0;
        text.remove_prefix(length);
    }
    return width;
}

std::size_t terminalWidth() {
    winsize size{};
    return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

} // namespace

struct LineEditor::Library {
    explicit Library(std::string p)
        : prompt(std::move(p)), edit(el_init("larkspin", stdin, stdout, stderr)),
          history(history_init()) {
        HistEvent event;
        ::history(history, &event, H_SETSIZE, historySize);
        ::history(history, &event, H_SETUNIQUE, 1);
        el_set(edit, EL_CLIENTDATA, this);
        el_set(edit, EL_PROMPT, &promptOf);
        el_set(edit, EL_EDITOR, "emacs");
        el_set(edit, EL_HIST, ::history, history);
        el_set(edit, EL_GETCFN, &readCharacter);
        el_set(edit, EL_BIND, "\\e[1~", "ed-move-to-beg", nullptr);
        el_set(edit, EL_BIND, "\\e[4~", "ed-move-to-end", nullptr);
        el_set(edit, EL_BIND, "\\e[3~", "ed-delete-next-char", nullptr);
    }
    ~Library() {
        history_end(history);
        el_end(edit);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    static char* promptOf(EditLine* edit) {
        Library* library = nullptr;
        el_get(edit, EL_CLIENTDATA, &library);
        return library->prompt.data();
    }

    std::string prompt;
    EditLine* edit;
    ::History* history;
};

LineEditor::LineEditor(PollLoop& loop, TerminalInput& input, std::string prompt)
    : loop_(loop), input_(input), library_(std::make_unique<Library>(std::move(prompt))) {
    prepare();
    loop_.watch(STDIN_FILENO, [this] { keyPressed(); });
}

LineEditor::~LineEditor() {
    close();
}

// Puts the terminal into the mode for single keys and shows the prompt with an empty line.
void LineEditor::prepare() {
    el_set(library_->edit, EL_UNBUFFERED, 0);
    el_set(library_->edit, EL_UNBUFFERED, 1);
}

void LineEditor::keyPressed() {
    int count = 0;
    const char* const bytes = el_gets(library_->edit, &count);
    const std::string_view typed(bytes ? bytes : "",
                                 bytes && count > 0 ? static_cast<std::size_t>(count) : 0);
    pollfd readable{STDIN_FILENO, POLLIN, 0};
    const bool isGone = ::poll(&readable, 1, 0) > 0 && (readable.revents & POLLHUP);
    constexpr std::string_view endKey = "\x04";
    if (typed == endKey || isGone) {
        close();
        input_.end();
        return;
    }
    if (!typed.ends_with('\n') && !typed.ends_with('\r'))
        return;
    const std::string line(typed.substr(0, typed.size() - 1));
    if (!line.empty()) {
        HistEvent event;
        ::history(library_->history, &event, H_ENTER, line.c_str());
    }
    prepare();
    input_.bring(line);
}

void LineEditor::hide() {
    if (!isOpen_)
        return;
    const LineInfo* const line = el_line(library_->edit);
    const std::string before =
        library_->prompt +
        std::string(line->buffer, static_cast<std::size_t>(line->cursor - line->buffer));
    const std::size_t rows = shownWidth(before) / terminalWidth();
    if (rows > 0)
        std::printf("\x1b[%zuA", rows);
    std::fputs(eraseLine, stdout);
    std::fflush(stdout);
}

void LineEditor::show() {
    if (isOpen_)
        el_set(library_->edit, EL_REFRESH);
}

void LineEditor::drawAnew() {
    if (!isOpen_)
        return;
    hide();
    const LineInfo* const line = el_line(library_->edit);
    const std::string typed(line->buffer, line->lastchar);
    prepare();
    if (!typed.empty())
        el_insertstr(library_->edit, typed.c_str());
    std::fputs(eraseLine, stdout); // the prompt that stands there already
    show();
}

void LineEditor::close() {
    if (!isOpen_)
        return;
    hide();
    isOpen_ = false;
    loop_.unwatch(STDIN_FILENO);
    el_set(library_->edit, EL_UNBUFFERED, 0);
}

} // namespace larkspin
