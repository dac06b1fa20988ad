#include "chat/catalogue.h"

#include "shell/app_state.h"
#include "shell/media_types.h"

namespace larkspin {

namespace {

struct Entry {
    std::string_view form; // after the trigger
    std::string_view help;
    bool namesFilters = false; // the help ends with their words
};

constexpr bool namesFilters = true;

// In the order in which the window shows them. A star, or a word after the first one, stands for
// what the owner adds.
constexpr Entry entries[] = {
    {"ac *", "changes ascii color"},
    {"adv", "advertises this great program"},
    {"af *", "changes the ascii font"},
    {"aim?", "tells the aim you're currently on"},
    {"amp", "sends winamp stats this will not be effected by silent mode"},
    {"ap?", "counts the number of applications n shit you have"},
    {"ap dir, name", "adds the directory item with the given name to the apps n shit list"},
    {"apps", "shows the applications n shit window"},
    {"ascii *", "changes ascii"},
    {"ban *", "ejects a person from the room, if you are owner"},
    {"cinfo", "gives a little info about your pc"},
    {"clearpl", "clears all files from playlist"},
    {"closeaol", "closes aol"},
    {"clra", "clears apps n shit list"},
    {"clrn", "clears notes"},
    {"color", "views color options"},
    {"coms", "brings this up"},
    {"cont", "continuous by filename"},
    {"contoff", "continuous off"},
    {"count *", "counts the number of mp3s according to the string given"},
    {"date", "tells date"},
    {"del *", "deletes a note according to the number given"},
    {"delete",
     "deletes current song (be careful with this, THERE'S NO SECOND CHANCES...IT DELETES THE SONG PERMANENTLY)"},
    {"dir?", "tells what directory you're in"},
    {"dstat", "aol download stats"},
    {"eascii *", "sets an end ascii"},
    {"ec *", "sets an end ascii font color"},
    {"ef *", "sets an end ascii font"},
    {"edit #, msg", "edits the desired note number with the desired message"},
    {"end", "ends repeat of position (it ends the rec * command)"},
    {"exit", "exits program"},
    {"fc *", "font color"},
    {"filter?", "tells what media filter lks is currently on. ", namesFilters},
    {"filter *", "sets a media filter. ", namesFilters},
    {"first", "tells the first time you loaded this"},
    {"free *", "gives memory info about the drive letter you enter."},
    {"font *", "changes prog font"},
    {"fwd *", "forwards according to the seconds given"},
    {"sela", "a command for the love of my life"},
    {"hidewelc", "hides welcome"},
    {"idle *", "idler"},
    {"idleoff", "idleoff"},
    {"imsoff", "turns ims off"},
    {"imson", "turns ims on"},
    {"info", "sends song info this will not be effected by silent mode"},
    {"kw *", "goes to a keyword"},
    {"len", "sends length of the song"},
    {"listadd *", "adds files to the playlist according to the string you type"},
    {"list *", "loads a playlist according to string"},
    {"listrmv *", "removes files from the playlist according to the string you type"},
    {"load *", "load an application or whatever according to the string given"},
    {"media?", "tells how many files are in the current directory"},
    {"media", "view and play your media"},
    {"new", "opens new mail"},
    {"newpl", "creates new playlist with the option to remove or keep files from the previous one"},
    {"next", "plays next song by filename"},
    {"note *", "sends the note according to the number"},
    {"notes?", "tells how many notes you have"},
    {"nshow", "shows the notes form"},
    {"num *", "plays song by number"},
    {"old", "opens old mail"},
    {"ot", "sends your online time"},
    {"pause", "pauses song"},
    {"pl?", "tells how many playlists you have"},
    {"pl", "tells what playlist is in use"},
    {"play *", "plays the song"},
    {"play",
     "plays the song stored in temp (temporary) meaning it plays whatever song you got done playin last."},
    {"pos *:**", "goes to the position in the song"},
    {"pos", "sends position of the current song in minutes and seconds"},
    {"pr *", "goes to the private room specified"},
    {"pre", "plays previous song by filename"},
    {"pstat", "program stats"},
    {"pt", "sends total time for all the mp3s you've ever played"},
    {"rec *",
     "repeats part of a song ex: rec 1:20, 1:25, it will repeat the position from 1:20 to 1:25 over and over again"},
    {"ref *", "refreshes a directory"},
    {"ref", "refreshes all directories or a custom directory"},
    {"rename *", "renames current song"},
    {"repeat", "repeats song"},
    {"repeatoff", "repeat off"},
    {"resume", "resumes song"},
    {"rew *", "rewinds according to the seconds given"},
    {"rmva *", "removes an app or whatever from the apps n shit list"},
    {"rn *", "retrieves note according to subject"},
    {"rnd *", "randomizes song by string"},
    {"rnd", "random song"},
    {"rstart", "restarts your computer"},
    {"rt", "sends total program runtime"},
    {"save *", "saves the playlist to the default larkspin directory according to name given"},
    {"scan *", "scans the directory or drive letter you enter for mp3s"},
    {"scanpc", "scans your pc for mp3s and adds them to the playlist"},
    {"scra", "scrolls all the apps n shit list and what they are linked to"},
    {"scrd", "scrolls all the directories you have"},
    {"scrn", "scrolls notes"},
    {"scrpl", "scrolls all playlists you have"},
    {"sdown", "shuts down your computer"},
    {"sent", "opens sent mail"},
    {"shuffle", "shuffled play"},
    {"signoff", "signs off of aol"},
    {"silent",
     "turns on silent mode (some features are unavailable in silent mode and will be replaced by message boxes)"},
    {"silentoff", "turns silent mode off"},
    {"sn *", "adds a note"},
    {"soff", "turns shuffle off"},
    {"stats", "sends some stats"},
    {"stop", "stops the song"},
    {"tempo 0-150", "sets speed"},
    {"time", "tells time"},
    {"times", "tells how many times the current song has been played"},
    {"top *", "scrolls top most played songs according to the number you type"},
    {"tops", "scrolls top 5 most played songs"},
    {"total", "total mp3s played"},
    {"transfer", "transfers scanned mp3s into the playlist"},
    {"trig *", "changes trigger"},
    {"unban *", "unbans someone from the room, if you are owner."},
    {"unx *", "unignores someone"},
    {"url *", "opens your default web browser and goes to a site"},
    {"ustat", "upload status"},
    {"ut", "tells windows uptime"},
    {"ver", "tells what version you're using"},
    {"volume 0-100", "sets volume"},
    {"wnext", "winamp next"},
    {"wplay", "play winamp"},
    {"wpre", "winamp previous"},
    {"wstop", "stops winamp"},
    {"x *", "ignores someone"},
    {"xlist *", "deletes a playlist"},
};

constexpr Entry atAnyTrigger = {"'trig?", "tells your current trigger"};

std::string wholeHelp(const Entry& entry) {
    return std::string(entry.help) + (entry.namesFilters ? toldMediaWords() : "");
}

} // namespace

void fillcatalogue(AppState& state) {
    state.commandNames.clear();
    state.commandHelp.clear();
    state.commandText.clear();
    for (const Entry& entry : entries) {
        state.commandNames.add(state.trigger + std::string(entry.form));
        state.commandHelp.add(wholeHelp(entry));
    }
    state.commandNames.add(atAnyTrigger.form);
    state.commandHelp.add(atAnyTrigger.help);
}

std::string helpOfForm(std::string_view form) {
    for (const Entry& entry : entries)
        if (entry.form == form)
            return wholeHelp(entry);
    return form == atAnyTrigger.form ? wholeHelp(atAnyTrigger) : "";
}

} // namespace larkspin
