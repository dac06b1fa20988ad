#include "platform/qt/room/qt_room.h"

#include "host/slash_help.h"
#include "shell/kept_files.h"

#include <QShortcut>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto placeSettles = 1s; // after the owner has moved the window, until its place is kept
constexpr std::size_t largestPlace = 10'000;

} // namespace

QtRoom::QtRoom(EventLoop& loop, ChatLines& lines, IrcNetworks::MakeConnection connections,
               KeptFiles& files, const DataDirectory& directory, const std::string& screenName)
    : loop_(loop), files_(files), placeFile_(directory.roomWindowFile()),
      history_(files, directory.historyFile()),
      rooms(loop, lines, std::move(connections), *this, files, directory, screenName,
            {.clearInput = [this] { window.clearInput(); },
             .bringForward = [this] { window.bringForward(); },
             .changed = [this] { window.roomChanged(); }}),
      words([this](const std::string& text) { tell(text); }) {
    window.onLine([this](const std::string& line, const Conversations::Begun& begun) {
        lines_.take(line, begun);
    });
    QObject::connect(new QShortcut(Qt::Key_F1, &window), &QShortcut::activated,
                     [this] { does("/help"); });
    window.onClose([this] { closeWindow(); });
    const auto showLooks = [this] {
        window.stamp(rooms.preferences.showsStamps());
        window.colorNames(rooms.preferences.colorsNames());
    };
    rooms.preferences.onChange(showLooks);
    showLooks();
    window.holdAfter(&IrcWords::asksPassword);
    window.maskBy([this](const std::string& line, const Conversations::Begun& begun) {
        return rooms.withoutSecrets(line, begun);
    });
    window.onGo([this](const std::string& place) { rooms.goTo(place); });
    window.onLook([this](bool isLooking) { rooms.conversations.look(isLooking); });
    window.onPeople([this](const std::string& name) { return peopleMenu.of(name); },
                    [this](const std::string& name) { peopleMenu.talkTo(name); });
    words.add(rooms.slashWords());
    window.restorePlace(files.read(placeFile_, largestPlace).contents);
    window.onPlace([this] { placeChanged(); });
}

void QtRoom::completeBy(LineTyping::Complete complete) {
    window.onTab([this, complete = std::move(complete)](std::string_view typed) {
        return rooms.completionOf(typed, words, complete);
    });
}

void QtRoom::open(Task quit) {
    words.add({helpWord(words, trigger_, [this](const std::string& text) { tell(text); }),
               quitWord([this, quit = std::move(quit)] {
                   rooms.words.quits();
                   quit();
               })});
    lines_.open();
    rooms.takeUpAgain();
}

void QtRoom::offer(const std::string& line) {
    window.turnToLine();
    if (rooms.conversations.front().isAtHome())
        does(line);
    else
        window.offer(line);
}

void QtRoom::closeWindow() {
    const RoomClosing wanted = rooms.preferences.closing();
    if (wanted == RoomClosing::quit)
        does("/quit");
    else if (wanted == RoomClosing::tray && hasTray_())
        window.hide();
    else
        window.showMinimized();
}

void QtRoom::tell(const std::string& text) {
    rooms.conversations.tell(KeptLine::Kind::answer, text);
}

void QtRoom::placeChanged() {
    place_ = window.place();
    // A window that is being moved tells of many places; the last one is kept.
    loop_.cancel(keeping_);
    keeping_ = loop_.once(placeSettles, [this] { keep(); });
}

void QtRoom::close() {
    rooms.finish();
    keep();
}

void QtRoom::keep() {
    rooms.preferences.keep();
    rooms.log.write();
    history_.save();
    if (place_.empty())
        return;
    files_.replace(placeFile_, std::exchange(place_, {}));
}

} // namespace larkspin
