#include "platform/terminal/screen/curses_picture.h"

#include "platform/terminal/screen/shown_colors.h"
#include "platform/terminal/screen/true_colors.h"
#include "text/visible.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <curses.h>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace larkspin {

namespace {

// The library would deal with signals by itself, and end the process in its own way.
class KeptSignals {
public:
    KeptSignals() {
        for (std::size_t at = 0; at < signals.size(); ++at)
            ::sigaction(signals[at], nullptr, &actions_[at]);
    }
    ~KeptSignals() {
        for (std::size_t at = 0; at < signals.size(); ++at)
            ::sigaction(signals[at], &actions_[at], nullptr);
    }
    KeptSignals(const KeptSignals&) = delete;
    KeptSignals& operator=(const KeptSignals&) = delete;

private:
    static constexpr std::array signals{SIGINT, SIGTERM, SIGTSTP, SIGWINCH};
    std::array<struct sigaction, signals.size()> actions_{};
};

// Without what asks old terminals for a pause.
std::string capability(const char* name) {
    const char* const found = ::tigetstr(const_cast<char*>(name));
    const std::string text = found && found != reinterpret_cast<const char*>(-1) ? found : "";
    return text.substr(0, text.find("$<"));
}

// As terminals tell it that have no description that does. GNU Screen, inside of such a terminal,
// doesn't know these colours.
bool showsAnyColor() {
    const auto variable = [](const char* name) {
        const char* const value = std::getenv(name);
        return std::string_view(value ? value : "");
    };
    const std::string_view depth = variable("COLORTERM");
    return COLORS == 256 && (depth == "truecolor" || depth == "24bit") &&
           !variable("TERM").starts_with("screen") &&
           capability("setaf").find("38;5;%p1%d") != std::string::npos;
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

struct ScreenCloser {
    void operator()(SCREEN* screen) const { ::delscreen(screen); }
};

// Bold would make the ground of a strip bright, or its text gray, where it is the other way round.
attr_t attributesOf(const CellStyle& style) {
    const bool isTurned = style.isStrip && ::has_colors() && COLORS <= fewColors;
    const bool isReversed = style.reversed != (style.isStrip && !::has_colors());
    attr_t attributes = A_NORMAL;
    for (const auto& [isSet, attribute] : {std::pair<bool, attr_t>{style.bold && !isTurned, A_BOLD},
                                           {style.dim, A_DIM},
                                           {style.italic, A_ITALIC},
                                           {style.underlined, A_UNDERLINE},
                                           {isReversed, A_REVERSE}})
        if (isSet)
            attributes |= attribute;
    return attributes;
}

} // namespace

struct CursesPicture::Parts {
    std::unique_ptr<std::FILE, FileCloser> file; // in memory
    std::unique_ptr<SCREEN, ScreenCloser> screen;
    int columns = 0;                 // of the last picture
    std::vector<std::uint64_t> rows; // and what its rows showed
    bool isShown = false;
    std::string colorReset; // of the terminal's own

    std::optional<TrueColors> trueColors; // where the terminal says that it has them

    ShownColors colorsOf(const CellStyle& style);
    int pairOf(const CellStyle& style);
    cchar_t cellOf(const Cell& cell);
};

std::unique_ptr<CursesPicture> CursesPicture::open() {
    // The library tells characters by the locale. Here all is UTF-8, whatever the owner's is;
    // C.UTF-8 is built into the C library.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    const int descriptor = ::memfd_create("larkspin-screen", MFD_CLOEXEC);
    std::FILE* const file = descriptor < 0 ? nullptr : ::fdopen(descriptor, "r+");
    if (!file)
        return nullptr;
    auto parts = std::make_unique<Parts>();
    parts->file.reset(file);
    const KeptSignals kept;
    // The size is told with each picture. Without these the library begins with a usual one.
    ::unsetenv("LINES");
    ::unsetenv("COLUMNS");
    parts->screen.reset(::newterm(nullptr, file, file));
    if (!parts->screen || capability("cup").empty())
        return nullptr;
    if (::has_colors()) {
        ::start_color();
        ::use_default_colors();
        parts->colorReset = capability("oc");
        if (showsAnyColor())
            parts->trueColors.emplace();
    }
    ::typeahead(-1);
    ::idlok(stdscr, true); // lines that move are moved
    auto picture = std::unique_ptr<CursesPicture>(new CursesPicture(std::move(parts)));
    // Nothing is to be shown before the first picture.
    ::endwin();
    picture->takeBytes();
    return picture;
}

CursesPicture::CursesPicture(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}
CursesPicture::~CursesPicture() = default;

ShownColors CursesPicture::Parts::colorsOf(const CellStyle& style) {
    constexpr int most = 256; // beyond, a number is the colour itself
    constexpr Rgb named = 8;  // but for these
    const auto shown = [&style](const auto& numberOf) {
        const auto number = [&](CellColor color) { return color ? numberOf(*color) : -1; };
        return ShownColors{number(style.foreground), number(style.background)};
    };
    if (trueColors)
        return shown([this](Rgb color) { return trueColors->numberOf(color); });
    if (COLORS > most && ::tigetflag(const_cast<char*>("RGB")) > 0)
        return shown([](Rgb color) { return static_cast<int>(color < named ? 0 : color); });
    return shownColors(style, COLORS);
}

// The library keeps as many pairs as it has place for, and takes the place of the oldest then.
int CursesPicture::Parts::pairOf(const CellStyle& style) {
    if (!::has_colors() || (!style.foreground && !style.background))
        return 0;
    const auto [foreground, background] = colorsOf(style);
    return std::max(::alloc_pair(foreground, background), 0);
}

cchar_t CursesPicture::Parts::cellOf(const Cell& cell) {
    std::array<wchar_t, Cell::mostCodes + 1> text{};
    std::ranges::transform(cell.codes, text.begin(),
                           [](char32_t code) { return static_cast<wchar_t>(code); });
    int pair = pairOf(cell.style);
    cchar_t made{};
    if (::setcchar(&made, text.data(), attributesOf(cell.style), 0, &pair) != OK)
        ::setcchar(&made, L" ", attributesOf(cell.style), 0, &pair);
    return made;
}

void CursesPicture::drawRow(const Cells& cells, int row) {
    std::vector<cchar_t> line;
    line.reserve(static_cast<std::size_t>(cells.columns()));
    for (int column = 0; column < cells.columns(); ++column)
        if (const Cell& cell = cells.at(row, column); !cell.isSecondHalf())
            line.push_back(parts_->cellOf(cell));
    ::mvadd_wchnstr(row, 0, line.data(), static_cast<int>(line.size()));
}

std::string CursesPicture::draw(const Cells& cells, const std::optional<Cursor>& cursor,
                                bool anew) {
    Parts& parts = *parts_;
    ::set_term(parts.screen.get());
    const auto rows = static_cast<std::size_t>(cells.rows());
    const bool isResized = parts.rows.size() != rows || parts.columns != cells.columns();
    parts.rows.resize(rows);
    parts.columns = cells.columns();
    const bool isRecolored = parts.trueColors && parts.trueColors->isNearlyFull();
    if (isRecolored)
        parts.trueColors->clear();
    if (isResized)
        ::resize_term(cells.rows(), cells.columns());
    const bool isFirst = !std::exchange(parts.isShown, true);
    if (isResized || isRecolored || anew || isFirst)
        ::clearok(curscr, true);
    for (int row = 0; row < cells.rows(); ++row) {
        const std::uint64_t sum = cells.sumOf(row);
        const bool isOther = std::exchange(parts.rows[static_cast<std::size_t>(row)], sum) != sum;
        if (isOther || isResized || isRecolored)
            drawRow(cells, row);
    }
    const Cursor place = cursor.value_or(Cursor{0, 0, false});
    ::wmove(stdscr, std::clamp(place.row, 0, cells.rows() - 1),
            std::clamp(place.column, 0, cells.columns() - 1));
    ::curs_set(place.isShown ? 1 : 0);
    ::wrefresh(stdscr);
    return takeBytes();
}

std::string CursesPicture::end() {
    if (!std::exchange(parts_->isShown, false))
        return {};
    ::set_term(parts_->screen.get());
    ::endwin();
    return takeBytes();
}

std::string CursesPicture::abruptEnd() const {
    ::set_term(parts_->screen.get());
    return capability("sgr0") + capability("cnorm") + capability("rmcup") + "\r\n";
}

std::string CursesPicture::takeBytes() {
    const int descriptor = ::fileno(parts_->file.get());
    std::fflush(parts_->file.get());
    const off_t size = ::lseek(descriptor, 0, SEEK_END);
    std::string bytes(static_cast<std::size_t>(std::max<off_t>(size, 0)), '\0');
    const ssize_t read = ::pread(descriptor, bytes.data(), bytes.size(), 0);
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(read, 0)));
    if (::ftruncate(descriptor, 0) == 0)
        ::lseek(descriptor, 0, SEEK_SET);
    // Colours that the owner has given to numbers stay: nothing here has changed them.
    if (const std::string& reset = parts_->colorReset; !reset.empty())
        for (auto at = bytes.find(reset); at != bytes.npos; at = bytes.find(reset, at))
            bytes.erase(at, reset.size());
    return parts_->trueColors ? parts_->trueColors->in(bytes) : bytes;
}

// As xterm has it, and who is like it, or where the terminal says that it has a line for it.
std::string CursesPicture::title(const std::string& title) const {
    const std::string shown = visibleText(title, " ");
    ::set_term(parts_->screen.get());
    if (::tigetflag(const_cast<char*>("XT")) > 0)
        return "\x1b]2;" + shown + '\a';
    const std::string begin = capability("tsl"), end = capability("fsl");
    return begin.empty() || end.empty() ? "" : begin + shown + end;
}

bool CursesPicture::hasMouse() const {
    ::set_term(parts_->screen.get());
    return !capability("kmous").empty();
}

} // namespace larkspin
