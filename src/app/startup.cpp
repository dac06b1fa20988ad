// Start, save, exit and restart. The order of the steps holds the program together: the room
// is greeted before silent mode is set, so that the greeting is always said; no row is current
// before the media window shows; and the scanners start last, when all that a command touches
// is in place.

#include "app/program.h"
#include "app/tray_menu.h"
#include "chat/catalogue.h"
#include "shell/desktop.h"
#include "shell/dialogs.h"
#include "shell/event_loop.h"
#include "shell/kept_files.h"
#include "shell/pause.h"
#include "shell/process.h"
#include "shell/this_run.h"
#include "text/dates.h"
#include "text/fold.h"
#include "text/number.h"

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto settlingTime = 300ms;
constexpr auto longestLastWork = 500ms; // for lines that are taken when the process is to end

std::string withoutBold(std::string text) {
    for (const std::string_view tag : {"<b>", "</b>"})
        for (auto at = text.find(tag); at != std::string::npos; at = text.find(tag, at))
            text.erase(at, tag.size());
    return text;
}

} // namespace

void Program::start() {
    claimOnlyCopy();
    phase_ = Phase::loading;
    isEndWanted_ = isEnding_ = false;
    const Pause pause(machine.loop);
    loadWindows();
    const ThisRun run(shell.state);
    pause(0.1);
    shell.splash.show(buildText() + "Loading..");

    const StoredSettings stored = shell.settings.all();
    companions.windowColors.load(stored);
    const std::string load = stored.get("load");
    // Settings that couldn't be read don't make a run the first one.
    isFirstRun_ = !number(load) && stored.wereRead();
    const std::string loadNumber = number(load) ? load : "1";
    shell.state.trigger = number(load) ? foldCase(stored.get("trigger")) : "'";
    if (isFirstRun_)
        welcomeFirstRun();
    greet(loadNumber);
    countLoad(loadNumber);
    loadFolders(stored);
    machine.desktop.addTrayIcon(trayIcon(*this));
    phase_ = Phase::running; // from here on there is something to save
    tellSoon();
    if (isEndWanted_)
        end();
    if (shell.state.rol)
        mediaWindow.refreshButton.refreshAtStart();
    if (!run.lasts())
        return;

    shell.splash.showStatusLine(false);
    pause(0.1);
    if (!run.lasts())
        return;
    shell.splash.hide();
    listen();
    mediaWindow.refreshButton.tellOfStart();
    // Lines that the owner has typed since the greeting come in only now, when all that they touch
    // is in place.
    openFrontEnd();
    doEarlyTasks();
}

void Program::claimOnlyCopy() {
    if (machine.process.claimOnlyCopy())
        return;
    machine.dialogs.box(
        "i've unloaded myself because you're an idiot and you already have one open");
    machine.process.end();
}

void Program::loadWindows() {
    shell.reset();
    shell.state.clock.connect(machine.loop, [this] { secondTick(); });
    shell.state.clock.enable();
    shell.splash.open();
}

void Program::welcomeFirstRun() {
    // A front end whose boxes wait for nobody comes to no event.
    const TimerId early = machine.loop.once(0ns, [this] { tellEarlyFiles(); });
    isWelcoming_ = true;
    machine.dialogs.box(
        "this must be your first time running this damn program, there should be an icon of a cd "
        "down in the system tray...this is where you see the time at on your computer...go there "
        "and right click it for a menu...the default trigger for the first load is a ' so until "
        "you change it that will be your trigger, have fun.  -moraine");
    isWelcoming_ = false;
    machine.loop.cancel(early);
    machine.files.makeDirectory(shell.directory.path());
    shell.settings.put("first load", dateAndTime(machine.loop.localTime()));
}

void Program::greet(const std::string& loadNumber) {
    // From now on the owner knows that the program is there, and may type.
    phase_ = Phase::greeted;
    machine.host.clearChatInput();
    chat.reply.saychat("larkspin player - by moraine");
    Pause{machine.loop}(0.2);
    chat.reply.saychat("load:  <b>" + loadNumber + "</b> - mp3s played:  <b>" +
                       playback.counters.played() + "</b>");
}

void Program::countLoad(const std::string& loadNumber) {
    shell.state.loads = "load number:  " + loadNumber;
    // The trigger is stored as well. If this run is killed, the next one isn't a first run any
    // more, and would find none.
    shell.settings.putAll(
        {{"load", numberText(numberOrZero(loadNumber) + 1)}, {"trigger", shell.state.trigger}});
}

void Program::loadFolders(const StoredSettings& stored) {
    library.load(stored);
    shell.load(stored);
    chat.loadSilence(stored);
    playback.load(stored);
    mediaWindow.load(stored);
    fillcatalogue(shell.state);
    companions.load();
}

void Program::listen() {
    chat.NiteScan1.startscan();
    chat.NiteScan3.startscan();
    machine.loop.cancel(settling_);
    settling_ = machine.loop.once(settlingTime, [this] { settling_ = TimerId::none; });
}

void Program::openFrontEnd() {
    if (const Task open = std::exchange(open_, nullptr))
        open();
}

void Program::bring(const std::vector<std::string>& paths, BroughtFiles::Then then) {
    hasEarlyFiles_ = !isRunning();
    whenRunning([this, paths, then] { broughtFiles.take(paths, then); });
    if (isWelcoming_)
        tellEarlyFiles();
}

void Program::whenRunning(const Task& task) {
    if (isRunning())
        task();
    else
        earlyTasks_.push_back(task);
}

void Program::doEarlyTasks() {
    hasEarlyFiles_ = false;
    for (const Task& task : std::exchange(earlyTasks_, {}))
        task();
}

void Program::tellEarlyFiles() {
    if (hasEarlyFiles_)
        chat.reply.tellOwner("files are taken once the box is closed");
}

// Lines may have been typed, or lie in a pipe, that haven't been read yet. Each takes several turns
// on its way to the command.
void Program::takeEarlyLines() {
    listen();
    openFrontEnd();
    const TimerId limit = machine.loop.once(longestLastWork, [this] { finish(false); });
    const std::size_t earlier = chat.recitals.count(); // they don't go on in the middle of this
    for (int turn = 0; turn < 5 || chat.recitals.count() > earlier; ++turn)
        machine.loop.waitUntil(machine.loop.now() + std::chrono::milliseconds(10));
    machine.loop.cancel(limit);
}

// News comes up wherever a file is read or written, so it is told in an event of its own. News of
// the start waits until the start is over.
void Program::tellSoon() {
    machine.loop.cancel(telling_);
    if (phase_ == Phase::running)
        telling_ = machine.loop.once(0ns, [this] { tellNews(); });
}

// Tells what couldn't be read or written, one thing after the other, since more may come meanwhile.
void Program::tellNews() {
    machine.files.tellNews(
        [this](const std::string& text) { chat.reply.sayOrBox(text, withoutBold(text)); });
}

void Program::save() {
    machine.files.makeDirectory(shell.directory.path());
    SettingsChanges changes;
    playback.save(changes);
    mediaWindow.save(changes);
    shell.save(changes);
    library.save(changes);
    chat.save(changes);
    companions.windowColors.save(changes);
    // All changes go into the file of the settings together, which is replaced only once.
    shell.settings.putAll(changes);
    companions.save();
    machine.files.hide(shell.directory.settingsFile());
}

bool Program::saveWhole() {
    const int failed = machine.files.failedSaves();
    save();
    return machine.files.failedSaves() == failed;
}

void Program::unload(bool speaks) {
    phase_ = Phase::saving;
    // Questions that are open belong to this run, and nobody is to wait for their answers.
    machine.dialogs.dismissAll();
    save();
    machine.loop.cancel(telling_);
    if (speaks)
        tellNews();
    // News that can't be told in the room any more is noted on the program's own output.
    for (const std::string& text : machine.files.takeNews())
        machine.note("larkspin: " + withoutBold(text));
    chat.stopScanners();
    companions.unload();
    shell.splash.hide();
    mediaWindow.unload();
    playback.unload();
    shell.reset();
    machine.desktop.removeTrayIcon();
    phase_ = Phase::off;
}

void Program::exit() {
    chat.reply.saychat("larkspin player - unload");
    finish(true);
}

void Program::end() {
    if (phase_ == Phase::greeted) {
        isEndWanted_ = true;
        return;
    }
    // Lines that were typed during the start may not have been taken yet.
    const bool isEarly = settling_ != TimerId::none || !chat.NiteScan1.running();
    if (phase_ == Phase::running && isEarly && !std::exchange(isEnding_, true))
        takeEarlyLines();
    finish(false);
}

void Program::finish(bool speaks) {
    if (phase_ == Phase::running)
        unload(speaks);
    machine.process.end();
}

void Program::keep() {
    if (phase_ == Phase::running)
        save();
}

void Program::restart() {
    if (phase_ != Phase::running)
        return; // a restart or an end is under way
    const ThisRun run(shell.state);
    chat.reply.saychat("restarting larkspin player");
    if (!run.lasts())
        return; // another restart has come and gone meanwhile
    // Lists and settings that can't be saved exist in this run alone, so it must not end.
    if (!saveWhole()) {
        tellNews();
        chat.reply.sayOrBox("not restarted, what can't be saved would be lost");
        return;
    }
    unload(true);
    Pause{machine.loop}(0.5);
    start();
}

} // namespace larkspin
