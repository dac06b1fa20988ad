// Takes a picture of every window of a program with something in it: desktop_pictures
// DIRECTORY [ENDING].
#include "platform/qt/looks.h"
#include "platform/qt/windows/desk.h"
#include "shell/control_events.h"
#include "text/row_list.h"

#include <QApplication>
#include <QListView>
#include <QPixmap>
#include <cstdio>

using namespace larkspin;

namespace {

const Lines songs{"the marigolds - long way down.mp3", "paper kites over harbour street.mp3",
                  "dusk and dawn (live).wav",          "nine lanterns.mp3",
                  "waltz for a broken clock.mid",      "tin roof rain.mp3",
                  "north by night train.mp3",          "slow orbit.wma"};

void furnish(Desk& desk) {
    AppState& state = desk.state();
    desk.says({"'sn call the piano tuner", "'sn tapes for the weekend", "'sn new strings"});
    for (const char* item : {"calculator", "drawing board", "letters"}) {
        state.appTitles.add(item);
        state.appPaths.add("c:\\home\\jo\\" + std::string(item) + ".desktop");
    }
    desk.owner("'num 2", 2s);
    desk.owner("'play", 1s);
}

void take(Desk& desk, const std::string& name, const std::string& file) {
    desk.settle();
    const bool isTaken = desk.widget(name).grab().save(QString::fromStdString(file));
    std::printf("%s %s\n", isTaken ? "took" : "couldn't take", file.c_str());
}

void choose(Desk& desk, const std::string& name, const std::string& list, int row) {
    press(desk.window(name), list, row);
}

} // namespace

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    applyLooks(application);
    const std::string directory = count > 1 ? arguments[1] : ".";
    const std::string ending = count > 2 ? arguments[2] : ".png";
    Desk desk(songs);
    furnish(desk);
    for (const char* name : {"larkmain", "mp3s", "dire", "stops", "notez", "appz", "colors"})
        desk.show(name);
    desk.run([&] {
        choose(desk, "larkmain", "commandNames", 3);
        selectRows(desk.window("mp3s"), "playlistView", {2, 1});
        choose(desk, "notez", "List2", 1);
        choose(desk, "appz", "List1", 1);
        moveSlider(desk.window("colors"), "HScroll1", 255);
        moveSlider(desk.window("colors"), "HScroll2", 140);
        moveSlider(desk.window("colors"), "HScroll3", 40);
    });
    desk.window("dire").control("statusLine").visible = true;
    desk.state().searchTerm = "  scanning c:\\home\\jo\\Music\\albums...";
    desk.state().stopsCaption = "    scroll";
    for (const char* name : {"larkmain", "mp3s", "dire", "stops", "notez", "appz", "colors"})
        take(desk, name, directory + "/" + name + ending);
    desk.window("mp3s").place.height = 315;
    desk.advance(61s);
    take(desk, "mp3s", directory + "/mp3s-small" + ending);
}
