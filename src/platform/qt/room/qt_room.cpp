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
        if (!isOpen_ || rooms.goBackFor(line, begun))
            take(line);
    });
    QObject::connect(new QShortcut(Qt::Key_F1, &window), &QShortcut::activated,
                     [this] { does("/help"); });
    window.onClose([this] { closeWindow(); });
    rooms.preferences.onChange([this] { window.stamp(rooms.preferences.showsStamps()); });
    window.stamp(rooms.preferences.showsStamps());
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

void QtRoom::completeBy(InputLine::Complete complete) {
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
    isOpen_ = true;
    for (std::string& line : std::exchange(early_, {}))
        // Each in an event of its own, like a line that is typed from now on.
        loop_.post([this, line = std::move(line)] { take(line); });
    rooms.networks.takeUpAgain();
}

void QtRoom::take(const std::string& line) {
    // A line typed before the room is open is kept for later. But after one that asks for a
    // password it may be that password, which must be kept nowhere.
    const bool mayBeSecret = !early_.empty() && IrcWords::asksPassword(early_.back());
    if (!isOpen_ && !mayBeSecret)
        early_.push_back(line);
    else if (!isOpen_)
        tell("a password is taken when it is asked for");
    else if (SlashWords::isMeantForIt(line))
        rooms.conversations.asOwnerWants([&] { words.run(line); });
    else
        rooms.room.say(line);
}

void QtRoom::does(const std::string& line) {
    loop_.post([this, line] { take(line); });
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
