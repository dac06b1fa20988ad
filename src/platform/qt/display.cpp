#include "platform/qt/display.h"

#include "platform/qt/icon.h"
#include "platform/qt/looks.h"

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QEvent>
#include <QIcon>
#include <QScreen>
#include <QSessionManager>
#include <QThread>
#include <cstdio>
#include <cstdlib>
#include <sysexits.h>
#include <utility>
#include <vector>
#include <xcb/xcb.h>

namespace larkspin {

namespace {

Task lossTask; // called by exit handlers, which can reach no object
QtMessageHandler tellAsUsual = nullptr;
constexpr unsigned longestSave = 10; // seconds

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename Type> using Reply = std::unique_ptr<Type, Free>;

[[noreturn]] void endWithoutDisplay() {
    std::fputs(
        "larkspin: there is no display to show windows on; larkspin-tty runs in a terminal\n",
        stderr);
    std::_Exit(EX_UNAVAILABLE);
}

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value && *value;
}

// Qt would abort when it can't connect to a display.
void tellWhatQtSays(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtFatalMsg)
        endWithoutDisplay();
    if (type != QtDebugMsg)
        std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
}

// On Wayland Qt calls _exit(2) when its connection breaks, right after these words, either in the
// program's thread or in one of its own. Its own one is held here until the program's thread has
// saved.
void hearOfLoss(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    tellAsUsual(type, context, message);
    if (!message.startsWith("The Wayland connection "))
        return;
    if (QThread::currentThread() == QCoreApplication::instance()->thread())
        return lossTask();
    QMetaObject::invokeMethod(QCoreApplication::instance(), lossTask, Qt::QueuedConnection);
    QThread::sleep(longestSave);
}

// X comes first, even where it runs on Wayland, since Wayland lets no program place its windows or
// bring one to the front. The owner's own choice, by Qt's variables or options, goes before that.
// Ours is given as arguments, because variables would go on to whatever the program starts.
std::vector<std::string> withOurs(const std::vector<std::string>& given) {
    std::vector<std::string> arguments = {"larkspin"};
    if (!isSet("QT_QPA_PLATFORM") && isSet("DISPLAY"))
        arguments.insert(arguments.end(),
                         {"-platform", isSet("WAYLAND_DISPLAY") ? "xcb;wayland" : "xcb"});
    if (!isSet("QT_QPA_PLATFORMTHEME")) // a desktop's own would bring its toolkit along
        arguments.insert(arguments.end(), {"-platformtheme", "generic"});
    arguments.insert(arguments.end(), given.begin(), given.end());
    return arguments;
}

// From the documentation of QApplication and QGuiApplication.
constexpr DisplayOption options[] = {{Display::probe},
                                     {"-platform", true},
                                     {"-platformpluginpath", true},
                                     {"-platformtheme", true},
                                     {"-plugin", true},
                                     {"-qwindowgeometry", true},
                                     {"-qwindowicon", true},
                                     {"-qwindowtitle", true},
                                     {"-session", true},
                                     {"-style", true},
                                     {"-stylesheet", true},
                                     {"-display", true},
                                     {"-geometry", true},
                                     {"-reverse"}};

constexpr const char* trayName = "_NET_SYSTEM_TRAY_S0";

// Returns 0, which is no atom, when the display has gone.
xcb_atom_t atomOf(xcb_connection_t* connection, std::string_view name) {
    const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        connection,
        xcb_intern_atom(connection, false, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// Hears when a tray comes: by the rules of X, whoever takes such a name tells all that listen to
// the root window, as Qt does.
class Newcomers : public QAbstractNativeEventFilter {
public:
    Newcomers(xcb_connection_t* connection, Task trayCame)
        : manager_(atomOf(connection, "MANAGER")), tray_(atomOf(connection, trayName)),
          trayCame_(std::move(trayCame)) {}

    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
        const auto* const event = static_cast<const xcb_client_message_event_t*>(message);
        constexpr int sentByOthers = 0x80;
        if ((event->response_type & ~sentByOthers) == XCB_CLIENT_MESSAGE &&
            event->type == manager_ && event->data.data32[1] == tray_)
            trayCame_();
        return false;
    }

private:
    xcb_atom_t manager_, tray_;
    Task trayCame_;
};

// Takes the wish to quit before Qt asks the windows, some of which only hide when they are closed.
class Quits : public QObject {
public:
    explicit Quits(Task end) : end_(std::move(end)) {}

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::Quit)
            return false;
        end_();
        return true;
    }

private:
    Task end_;
};

} // namespace

std::span<const DisplayOption> Display::knownOptions() {
    return options;
}

Display::Display(const std::vector<std::string>& given) {
    if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY") && !isSet("QT_QPA_PLATFORM"))
        endWithoutDisplay();
    // Qt keeps references to both.
    static std::vector<std::string> arguments = withOurs(given);
    static int count = static_cast<int>(arguments.size());
    static std::vector<char*> texts;
    for (std::string& argument : arguments)
        texts.push_back(argument.data());
    texts.push_back(nullptr);
    qInstallMessageHandler(tellWhatQtSays);
    application_ = std::make_unique<QApplication>(count, texts.data());
    qInstallMessageHandler(nullptr);
    applyLooks(*application_);
    QApplication::setApplicationName("larkspin");
    QApplication::setDesktopFileName("larkspin");
    QApplication::setWindowIcon(programIcon());
    QApplication::setQuitOnLastWindowClosed(false);
}

Display::~Display() = default;

// By the rules of X, a program that draws the windows of all together owns this name. On Wayland Qt
// can't fade a window, and complains each time.
bool Display::drawsTransparency() const {
    return isOwned("_NET_WM_CM_S0");
}

bool Display::hasTray() const {
    return isOwned(trayName);
}

void Display::onTray(Task task) {
    if (!connection())
        return;
    newcomers_ = std::make_unique<Newcomers>(connection(), std::move(task));
    application_->installNativeEventFilter(newcomers_.get());
}

xcb_connection_t* Display::connection() const {
    const auto* const x = application_->nativeInterface<QNativeInterface::QX11Application>();
    return x ? x->connection() : nullptr;
}

bool Display::isOwned(std::string_view name) const {
    xcb_connection_t* const x = connection();
    if (!x)
        return false;
    const Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, atomOf(x, name)), nullptr));
    return owner && owner->owner != XCB_NONE;
}

DisplaySize Display::size() const {
    const QScreen* const screen = QApplication::primaryScreen();
    if (!screen)
        return {};
    const QSize size = screen->size() * screen->devicePixelRatio();
    return {screen->depth(), size.width(), size.height()};
}

void Display::onSessionEnd(Task save, Task end) {
    QObject::connect(application_.get(), &QGuiApplication::commitDataRequest,
                     [save = std::move(save)](QSessionManager&) { save(); });
    quits_ = std::make_unique<Quits>(std::move(end));
    application_->installEventFilter(quits_.get());
}

// On X, Qt calls exit(3) when its connection breaks.
void Display::onLoss(Task task) {
    lossTask = std::move(task);
    tellAsUsual = qInstallMessageHandler(hearOfLoss);
    std::atexit([] { lossTask(); });
}

void Display::run() {
    QApplication::exec();
}

} // namespace larkspin
