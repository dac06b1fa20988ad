#include "companions/launcher_window.h"

#include "chat/reply.h"
#include "companions/launcher.h"
#include "companions/launcher_items.h"
#include "library/playlist_row.h"
#include "shell/app_state.h"
#include "shell/controls.h"
#include "shell/dialogs.h"

namespace larkspin {

namespace {

constexpr Place launcherHome = {3300, 3300, 4500, 2970};
constexpr std::string_view ownTitle = "                       applications n shit";
constexpr std::string_view hint = "                     dbl click an item to load";

const std::vector<FileType> itemTypes{{"application files (*.exe)", "*.exe"},
                                      {"picture files (*.jpg, *.bmp, *.gif)", "*.jpg;*.bmp;*.gif"},
                                      {"audio files (*.mp3, *.wav, *.mid)", "*.mp3;*.wav;*.mid"},
                                      {"all files (*.*)", "*.*"}};

} // namespace

LauncherWindow::LauncherWindow(const Core& core, LauncherItems& items, Launcher& launcher)
    : state_(core.state), loop_(core.loop), dialogs_(core.dialogs), reply_(core.reply),
      items_(items), launcher_(launcher) {
    appz.place = launcherHome;
    appz.controls = controls();
    reset();
}

std::vector<Control> LauncherWindow::controls() {
    const Task takeHintBack = [this] { title_ = ownTitle; };
    return {
        titleStrip(
            loop_, appz,
            {.name = "Label1", .text = shows(title_), .onMouseMove = [this] { title_ = hint; }}),
        closeLabel(appz, {.name = "Label2"}),
        listBox({.name = "List1",
                 .place = {0, 345, 4500, 1965},
                 .spoken = "items",
                 .rows = &state_.appTitles,
                 .onClick = [this] { click(); },
                 .onDoubleClick = [this] { launcher_.launchSelected(); },
                 .onMouseMove = takeHintBack,
                 .onKey =
                     [this](Key key) {
                         if (key == Key::del)
                             deleteSelected();
                     }}),
        textField({.name = "Text1",
                   .place = {0, 2340, 4500, 315},
                   .spoken = "path of the item",
                   .text = shows(state_.appPathText),
                   .onMouseMove = takeHintBack}),
        button({.name = "Label3",
                .place = {0, 2685, 600, 285},
                .text = caption(" add"),
                .onClick = [this] { addFromDisk(); }}),
    };
}

void LauncherWindow::reset() {
    putAway(appz, launcherHome);
    title_ = ownTitle;
}

void LauncherWindow::apps() {
    if (reply_.refusedInSilence("to use application and shit options in silent mode go to the "
                                "system tray menu"))
        return;
    show();
    reply_.saychat("viewing applications n shit");
}

void LauncherWindow::click() {
    // The click has made the row current already; this shows its path as well.
    items_.select(items_.selected());
}

void LauncherWindow::addFromDisk() {
    const auto path = dialogs_.openFile({.title = "Open applications n shit", .types = itemTypes});
    const std::string fileTitle = path ? songOfPath(*path).title() : "";
    if (fileTitle.empty())
        return;
    const auto title = dialogs_.askText({.title = "what the fuck is this?",
                                         .prompt = "ok now wtf kinda program or item is this?",
                                         .preset = fileTitle});
    if (title && !items_.add(*path, *title))
        dialogs_.box("the applications n shit list is full");
}

// The list may change while the question is open, and the same question may even be opened again.
// So the item is looked up anew afterwards.
void LauncherWindow::deleteSelected() {
    const int index = items_.selected();
    if (index < 0)
        return;
    const Row item = items_.mark(index);
    if (dialogs_.ask("do you really wanna delete " + items_.title(index) + ":" +
                     items_.path(index) + "?"))
        items_.removeAt(items_.find(item));
}

} // namespace larkspin
