#include "platform/terminal/edit_library.h"

#include "platform/terminal/typed_keys.h"
#include "text/utf8.h"

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <fcntl.h>
#include <histedit.h>
#include <iterator>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

// In characters. The library's buffers hold a little more, and it makes mistakes when it has to
// enlarge them.
constexpr std::ptrdiff_t longestLine = 1000;
constexpr unsigned short widest = 1000, highest = 500; // of a terminal, in characters

// All keys that the library is given. Among its others are some that wait for the next key, take
// the line for a command to itself, or leave its cursor outside the line.
constexpr struct {
    std::string_view key;
    const char* function; // null where the library binds the key so by itself
} usableKeys[] = {
    {"\n", nullptr},
    {"\r", nullptr},
    {"\x01", nullptr}, // Return, Ctrl-A
    {"\x02", nullptr},
    {"\x04", nullptr},
    {"\x05", nullptr}, // Ctrl-B, D, E
    {"\x06", nullptr},
    {"\x08", nullptr},
    {"\x7F", nullptr}, // Ctrl-F, backspace
    {"\x0B", nullptr},
    {"\x0C", nullptr},
    {"\x0E", nullptr}, // Ctrl-K, L, N
    {"\x10", nullptr},
    {"\x14", nullptr},
    {"\x15", nullptr}, // Ctrl-P, T, U
    {"\x17", nullptr},
    {"\x19", nullptr}, // Ctrl-W, Y
    {"\x1b[A", nullptr},
    {"\x1b[B", nullptr},
    {"\x1b[C", nullptr}, // arrows, Home, End
    {"\x1b[D", nullptr},
    {"\x1b[H", nullptr},
    {"\x1b[F", nullptr},
    {"\x1bOA", nullptr},
    {"\x1bOB", nullptr},
    {"\x1bOC", nullptr},
    {"\x1bOD", nullptr},
    {"\x1bOH", nullptr},
    {"\x1bOF", nullptr},
    {"\x1b[1~", "ed-move-to-beg"},
    {"\x1b[7~", "ed-move-to-beg"},
    {"\x1b[4~", "ed-move-to-end"},
    {"\x1b[8~", "ed-move-to-end"},
    {"\x1b[3~", "ed-delete-next-char"},
    {"\x1b[1;5D", "ed-prev-word"},
    {"\x1b[1;3D", "ed-prev-word"},
    {"\x1b[1;5C", "em-next-word"},
    {"\x1b[1;3C", "em-next-word"},
    {"\x1b"
     "b",
     nullptr},
    {"\x1b"
     "f",
     nullptr},
    {"\x1b"
     "d",
     nullptr}, // by words
    {"\x1b\x7F", nullptr},
    {"\x1b\x08", nullptr},
    {"\x1b"
     "c",
     nullptr},
    {"\x1b"
     "l",
     nullptr},
    {"\x1b"
     "u",
     nullptr}, // case of a word
};

bool isUsable(std::string_view key) {
    const bool isOneCharacter = key.size() == 1 && key[0] >= ' ' && key[0] < '\x7F';
    return isOneCharacter || std::any_of(std::begin(usableKeys), std::end(usableKeys),
                                         [key](const auto& usable) { return usable.key == key; });
}

std::size_t columnsOf(std::wstring_view text) {
    std::size_t columns = 0;
    for (const wchar_t character : text)
        columns += static_cast<std::size_t>(std::max(::wcwidth(character), 0));
    return columns;
}

std::string textBetween(const wchar_t* from, const wchar_t* to) {
    std::string text;
    for (; from != to; ++from)
        appendCharacter(text, static_cast<char32_t>(*from));
    return text;
}

// The size of the real terminal, within reason.
winsize readSize() {
    winsize size{};
    ::ioctl(STDIN_FILENO, TIOCGWINSZ, &size);
    size.ws_col = size.ws_col < 2 ? 80 : std::min(size.ws_col, widest);
    size.ws_row = size.ws_row < 1 ? 24 : std::min(size.ws_row, highest);
    return size;
}

// A process in the background that touches its terminal's mode is stopped.
bool isInForeground() {
    return ::tcgetpgrp(STDIN_FILENO) == ::getpgrp();
}

} // namespace

struct EditLibrary::Parts {
    ~Parts() {
        if (edit)
            ::el_end(edit);
        if (history)
            ::history_end(history);
        if (file)
            std::fclose(file);
        ::close(standIn);
        ::close(standInsOther);
    }

    bool open();
    void bindKeys();
    void setMode() const;

    static ssize_t write(void* self, const char* bytes, std::size_t size) {
        static_cast<Parts*>(self)->drawBytes({bytes, size});
        return static_cast<ssize_t>(size);
    }
    static Parts* of(EditLine* edit) {
        Parts* parts = nullptr;
        ::el_get(edit, EL_CLIENTDATA, &parts);
        return parts;
    }
    static char* promptOf(EditLine* edit) { return of(edit)->prompt.data(); }
    // Gives the library the characters of a key. It always gets the whole key at once, and after
    // the last character it hears that there are no more, so it never waits.
    static int nextCharacter(EditLine* edit, wchar_t* character) {
        std::wstring& key = of(edit)->key;
        if (key.empty())
            return 0;
        *character = key.front();
        key.erase(0, 1);
        return 1;
    }

    std::string prompt;
    Draw drawBytes;
    int standIn = -1, standInsOther = -1; // the two ends of the terminal that the library sees
    std::FILE* file = nullptr;            // what it draws on
    EditLine* edit = nullptr;
    ::History* history = nullptr;
    std::wstring key;  // what is left of the one that is being struck
    termios ownMode{}; // of the real terminal
    bool takesSignalKeys = false;
    winsize size{};
};

bool EditLibrary::Parts::open() {
    if (::tcgetattr(STDIN_FILENO, &ownMode) != 0)
        return false;
    // The library wants a terminal whose mode it can set and whose size it can ask for. It gets a
    // pseudo terminal, and nobody reads the other end. What it draws comes to `write`.
    standInsOther = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (standInsOther < 0 || ::grantpt(standInsOther) != 0 || ::unlockpt(standInsOther) != 0)
        return false;
    standIn = ::ioctl(standInsOther, TIOCGPTPEER, O_RDWR | O_NOCTTY | O_CLOEXEC);
    file = ::fopencookie(this, "w", {nullptr, &write, nullptr, nullptr});
    if (standIn < 0 || !file)
        return false;
    size = readSize();
    ::ioctl(standIn, TIOCSWINSZ, &size);
    edit = ::el_init_fd("larkspin", stdin, file, file, standIn, standIn, standIn);
    history = ::history_init();
    return edit && history;
}

void EditLibrary::Parts::bindKeys() {
    HistEvent event;
    ::history(history, &event, H_SETSIZE, historySize);
    // A line said several times in a row comes back once.
    ::history(history, &event, H_SETUNIQUE, 1);
    ::el_set(edit, EL_CLIENTDATA, this);
    ::el_set(edit, EL_PROMPT, &promptOf);
    ::el_set(edit, EL_EDITOR, "emacs");
    ::el_set(edit, EL_HIST, ::history, history);
    ::el_set(edit, EL_GETCFN, &nextCharacter);
    for (const auto& usable : usableKeys) {
        if (!usable.function)
            continue;
        const std::string name = "\\e" + std::string(usable.key.substr(1));
        ::el_set(edit, EL_BIND, name.c_str(), usable.function, nullptr);
    }
}

std::unique_ptr<EditLibrary> EditLibrary::open(const std::string& prompt, Draw draw) {
    auto parts = std::make_unique<Parts>();
    parts->prompt = prompt;
    parts->drawBytes = std::move(draw);
    if (!parts->open())
        return nullptr;
    parts->bindKeys();
    return std::unique_ptr<EditLibrary>(new EditLibrary(std::move(parts)));
}

EditLibrary::EditLibrary(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

EditLibrary::~EditLibrary() = default;

// TCSANOW: to wait until all output is written would never end on a terminal that has been stopped.
void EditLibrary::Parts::setMode() const {
    if (!isInForeground())
        return;
    termios mode = ownMode;
    mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | IEXTEN);
    if (takesSignalKeys)
        mode.c_lflag &= ~static_cast<tcflag_t>(ISIG);
    mode.c_cc[VMIN] = 1;
    mode.c_cc[VTIME] = 0;
    ::tcsetattr(STDIN_FILENO, TCSANOW, &mode);
}

void EditLibrary::takeSignalKeys(bool takes) {
    parts_->takesSignalKeys = takes;
    parts_->setMode();
}

void EditLibrary::begin() {
    parts_->setMode();
    parts_->size = readSize();
    ::ioctl(parts_->standIn, TIOCSWINSZ, &parts_->size);
    // Switching this off and on again makes the library begin a new line.
    ::el_set(parts_->edit, EL_UNBUFFERED, 0);
    ::el_set(parts_->edit, EL_UNBUFFERED, 1);
}

void EditLibrary::end() {
    ::el_set(parts_->edit, EL_UNBUFFERED, 0);
    if (isInForeground())
        ::tcsetattr(STDIN_FILENO, TCSANOW, &parts_->ownMode);
}

bool EditLibrary::hasTerminal() const {
    return isInForeground();
}

void EditLibrary::strike(std::string_view key) {
    if (!isUsable(key))
        return;
    parts_->key = wideText(key);
    int count = 0;
    ::el_gets(parts_->edit, &count);
    parts_->key.clear();
}

bool EditLibrary::insert(std::string_view characters) {
    const LineInfoW* const line = ::el_wline(parts_->edit);
    const auto room = std::max<std::ptrdiff_t>(longestLine - (line->lastchar - line->buffer), 0);
    const std::wstring all = wideText(characters);
    const std::wstring taken = all.substr(0, static_cast<std::size_t>(room));
    const bool isAscii = all.size() == 1 && all[0] >= ' ' && all[0] < 0x7F;
    if (taken.size() == 1 && isAscii) {
        strike(characters); // the library draws less for a key than `draw` does
    } else if (!taken.empty()) {
        erase();
        ::el_winsertstr(parts_->edit, taken.c_str());
        draw();
    }
    return taken.size() == all.size();
}

std::string EditLibrary::line() const {
    const LineInfoW* const line = ::el_wline(parts_->edit);
    return textBetween(line->buffer, line->lastchar);
}

std::string EditLibrary::beforeCursor() const {
    const LineInfoW* const line = ::el_wline(parts_->edit);
    return textBetween(line->buffer, line->cursor);
}

bool EditLibrary::replaceBeforeCursor(std::size_t characters, std::string_view text) {
    const LineInfoW* const line = ::el_wline(parts_->edit);
    const auto count = std::min(characters, static_cast<std::size_t>(line->cursor - line->buffer));
    erase();
    if (count > 0)
        ::el_deletestr(parts_->edit, static_cast<int>(count));
    draw();
    return insert(text);
}

void EditLibrary::setPrompt(std::string prompt) {
    erase();
    parts_->prompt = std::move(prompt);
    draw();
}

void EditLibrary::remember(const std::string& line) {
    HistEvent event;
    ::history(parts_->history, &event, H_ENTER, line.c_str());
}

void EditLibrary::erase() {
    const LineInfoW* const line = ::el_wline(parts_->edit);
    const std::wstring_view before(line->buffer,
                                   static_cast<std::size_t>(line->cursor - line->buffer));
    const std::size_t columns = columnsOf(wideText(parts_->prompt)) + columnsOf(before);
    // How far the cursor is below the line's first row.
    const std::size_t rows =
        std::min<std::size_t>(columns / parts_->size.ws_col, parts_->size.ws_row - 1);
    std::string bytes = rows > 0 ? "\x1b[" + std::to_string(rows) + "A" : "";
    bytes += "\r\x1b[J"; // the line and all below it
    std::fflush(parts_->file);
    parts_->drawBytes(bytes);
}

void EditLibrary::draw() {
    ::el_set(parts_->edit, EL_REFRESH);
}

} // namespace larkspin
