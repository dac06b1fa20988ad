#include "chat/song_words.h"

#include "chat/catalogue.h"
#include "text/parts.h"

namespace larkspin {

namespace {

constexpr std::string_view playing = "playing", music = "music", playlists = "playlists",
                           choosing = "choosing", counts = "counts", notes = "notes",
                           programs = "programs", people = "people", style = "style",
                           machine = "machine", client = "client", larkspin = "larkspin";

constexpr SongWord words[] = {
    {playing, "play *", "play night ride"},
    {playing, "play", ""},
    {playing, "rnd", ""},
    {playing, "rnd *", "rnd night"},
    {playing, "num *", "num 12"},
    {playing, "next", ""},
    {playing, "pre", ""},
    {playing, "pause", ""},
    {playing, "resume", ""},
    {playing, "stop", ""},
    {playing, "volume 0-100", "volume 60"},
    {playing, "tempo 0-150", "tempo 110"},
    {playing, "repeat", ""},
    {playing, "repeatoff", ""},
    {playing, "shuffle", ""},
    {playing, "soff", ""},
    {playing, "cont", ""},
    {playing, "contoff", ""},
    {playing, "pos", ""},
    {playing, "pos *:**", "pos 1:20"},
    {playing, "len", ""},
    {playing, "fwd *", "fwd 30"},
    {playing, "rew *", "rew 30"},
    {playing, "rec *", "rec 1:20, 1:25"},
    {playing, "end", ""},
    {playing, "info", ""},
    {choosing, "yes", "", "recites the songs that were found"},
    {choosing, "no", "", "recites none of them, and plays none"},
    {choosing, "view", "", "shows them in a window"},
    {choosing, "m *", "m 3", "plays the one with that number"},
    {choosing, "cancel", "", "plays none of them"},
    {music, "scan *", "scan ~/Music"},
    {music, "scanpc", ""},
    {music, "transfer", ""},
    {music, "filter *", "filter any"},
    {music, "filter?", ""},
    {music, "listadd *", "listadd night"},
    {music, "listrmv *", "listrmv night"},
    {music, "count *", "count night"},
    {music, "media", ""},
    {music, "media?", ""},
    {music, "dir?", ""},
    {music, "scrd", ""},
    {music, "ref", ""},
    {music, "ref *", "ref rock"},
    {music, "rename *", "rename night ride"},
    {music, "delete", ""},
    {playlists, "pl", ""},
    {playlists, "pl?", ""},
    {playlists, "scrpl", ""},
    {playlists, "list *", "list evening"},
    {playlists, "save *", "save evening"},
    {playlists, "newpl", ""},
    {playlists, "clearpl", ""},
    {playlists, "xlist *", "xlist evening"},
    {counts, "tops", ""},
    {counts, "top *", "top 10"},
    {counts, "times", ""},
    {counts, "total", ""},
    {counts, "stats", ""},
    {counts, "pstat", ""},
    {counts, "pt", ""},
    {counts, "rt", ""},
    {counts, "first", ""},
    {notes, "sn *", "sn call the piano tuner"},
    {notes, "scrn", ""},
    {notes, "note *", "note 2"},
    {notes, "rn *", "rn piano"},
    {notes, "notes?", ""},
    {notes, "nshow", ""},
    {notes, "edit #, msg", "edit 2, call him again"},
    {notes, "del *", "del 2"},
    {notes, "clrn", ""},
    {programs, "apps", ""},
    {programs, "load *", "load letters"},
    {programs, "ap dir, name", "ap /usr/bin/xcalc, calculator"},
    {programs, "ap?", ""},
    {programs, "scra", ""},
    {programs, "rmva *", "rmva calculator"},
    {programs, "clra", ""},
    {people, "x *", "x bob"},
    {people, "unx *", "unx bob"},
    {people, "ban *", "ban bob"},
    {people, "unban *", "unban bob"},
    {people, "pr *", "pr den"},
    {people, "imson", ""},
    {people, "imsoff", ""},
    {people, "idle *", "idle at lunch"},
    {people, "idleoff", ""},
    {style, "color", ""},
    {style, "ascii *", "ascii <>"},
    {style, "af *", "af arial"},
    {style, "ac *", "ac 5083A9"},
    {style, "font *", "font arial"},
    {style, "fc *", "fc 0066BB"},
    {style, "eascii *", "eascii <>"},
    {style, "ef *", "ef arial"},
    {style, "ec *", "ec 5083A9"},
    {machine, "time", ""},
    {machine, "date", ""},
    {machine, "cinfo", ""},
    {machine, "free *", "free c"},
    {machine, "ut", ""},
    {machine, "url *", "url larkspin.invalid"},
    {machine, "amp", ""},
    {machine, "wplay", ""},
    {machine, "wstop", ""},
    {machine, "wnext", ""},
    {machine, "wpre", ""},
    {machine, "rstart", ""},
    {machine, "sdown", ""},
    {client, "kw *", "kw music"},
    {client, "new", ""},
    {client, "old", ""},
    {client, "sent", ""},
    {client, "ot", ""},
    {client, "ustat", ""},
    {client, "dstat", ""},
    {client, "aim?", ""},
    {client, "hidewelc", ""},
    {client, "signoff", ""},
    {client, "closeaol", ""},
    {larkspin, "help", "", "tells of all words by topics"},
    {larkspin, "help *", "help play", "tells of a word, or of a topic"},
    {larkspin, "coms", ""},
    {larkspin, "silent", ""},
    {larkspin, "silentoff", ""},
    {larkspin, "trig *", "trig ."},
    {larkspin, "'trig?", ""},
    {larkspin, "clear", "", "empties the line that you are about to say"},
    {larkspin, "ver", ""},
    {larkspin, "adv", ""},
    {larkspin, "sela", ""},
    {larkspin, "exit", ""},
};

} // namespace

std::span<const SongWord> songWords() {
    return words;
}

std::string_view SongWord::name() const {
    return partedAt(form, ' ').head;
}

// One of them is the same under any trigger, which its form has.
std::string SongWord::usage(std::string_view trigger) const {
    return std::string(form.starts_with('\'') ? "" : trigger).append(form);
}

std::string SongWord::told(std::string_view trigger) const {
    const std::string what = help.empty() ? helpOfForm(form) : std::string(help);
    const std::string such =
        example.empty() ? "" : std::string("; such as ").append(trigger).append(example);
    return usage(trigger) + "  \u2013  " + what + such;
}

} // namespace larkspin
