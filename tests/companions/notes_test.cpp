// Notes, by command and by their window.
#include "shell/control_events.h"
#include "support/talk.h"

#include <utility>

namespace larkspin {

static const std::string moment = "12/19/03-07:05 pm:     "; // of all that is made here

// In its first run, with these notes and their window shown.
struct NotesTest : VirtualMachine {
    explicit NotesTest(const Lines& texts) : VirtualMachine(Lines{}) {
        for (const std::string& text : texts)
            owner("'sn " + text);
        chooseFromTray("noted");
        forget();
    }

    Lines texts() {
        Lines all = rowsOf(state().notes);
        for (std::string& note : all)
            note.erase(0, moment.size());
        return all;
    }
    Window& notez() { return window("notez"); }
    std::string shown(const std::string& control) { return notez().control(control).text(); }
    void pressRow(int row) { press(notez(), "List2", row); }
    void pressDelete() { pressKey(notez(), "List2", Key::del); }
};

TEST(Notes, AreAddedToldChangedAndDeleted) {
    NotesTest machine({});
    converse(machine,
             {Turn("'sn Call Mum", "note number <b>1</b> added"),
              Turn("'sn a,b  c ", "note number <b>2</b> added"),
              Turn("'sn \xD7\x90 <b>\tm", "note number <b>3</b> added"),
              Turn("'notes?", "total notes:  <b>3"), Turn("'note 1", "<b>1</b>.  Call Mum"),
              Turn({"'NOTE 3", "'note  3 ", "'note 2.6"}, "<b>3</b>.  \xD7\x90 <b>\tm"),
              Turn("'edit 2, New, Text ", "edited note <b>2</b> - New, Text"),
              Turn("'edit  2 ,xy, z", "edited note <b>2</b> - y, z"),
              Turn("'del 1", "deleted note index <b>1"), Turn("'note 1", "<b>1</b>.  y, z")});
    EXPECT_EQ(machine.trayEntry("noted"), "view 3 notes") << "a deletion leaves it as it was";
    EXPECT_EQ(machine.answer("'clrn"), "cleared <b>2</b> notes");
    EXPECT_EQ(machine.trayEntry("noted"), "view 0 notes");
    EXPECT_EQ(machine.answer("'scrn"), "scrolling <b>0</b> notes");
}

TEST(Notes, RefuseWhatIsNoNoteWithoutTouchingOthers) {
    const std::string invalid = "you fucker, that isnt a valid note number";
    const std::string tooFew = "you dont have that many notes you fag";
    const std::string huge = "9999999999999999999999";
    NotesTest machine({"a", "b", ""});
    converse(machine,
             {Turn({"'note 0", "'note x", "'note ", "'note -1", "'note 0.5", "'note -" + huge,
                    "'note 2, 3", "'edit 0, x", "'edit , x", "'edit -1, x", "'edit x,  "},
                   invalid),
              Turn({"'del 0", "'del x", "'del ", "'del -1", "'del 1e0"},
                   "you fucker 0 isnt a valid note number"),
              Turn({"'note 4", "'note " + huge, "'edit 4, x", "'edit 65537, x"}, tooFew),
              Turn({"'del 4", "'del " + huge}, "you've only got <b>3</b> notes you fag"),
              Turn({"'edit 1, ", "'edit 9,  "}, "the fuck are you tryin to do?"),
              Turn({"'edit 1 x", "'edit 1,x", "'note 3"}, "")});
    machine.state().trigger = ",";
    EXPECT_EQ(machine.answer(",edit 1, x"), "") << "the first comma divides nothing";
    EXPECT_EQ(machine.texts(), (Lines{"a", "b", ""}));
    machine.owner(",clrn");
    EXPECT_EQ(machine.answer(",edit x, "), "there arent any notes to edit, you dumbass");
}

TEST(Notes, AreLeftAloneInSilence) {
    NotesTest machine({"a", "b"});
    machine.chooseFromTray("silnt");
    const std::pair<const char*, const char*> refusals[] = {
        {"'scrn", "cant scroll notes in silent mode you dits"},
        {"'sn x", "use the add a note feature in the notes window to add notes in silent mode"},
        {"'note 1", "use the notes window to view notes in silent mode"},
        {"'notes?", "you have 2 notes"},
        {"'clrn", "use the clear notes label on the notes form to clear notes in silent mode"},
        {"'rn a", "use the notes form to view notes by subject in silent mode"},
        {"'del 1", "use the notes form to delete notes in silent mode"},
        {"'edit 1, x", "use the notes window to edit notes in silent mode"}};
    for (const auto& [line, refusal] : refusals)
        EXPECT_EQ(machine.answer(line), std::string("[box] ") + refusal);
    EXPECT_EQ(machine.texts(), (Lines{"a", "b"}));
}

TEST(Notes, AreToldInTurnWhateverComesBetween) {
    const struct {
        std::string line;
        Lines interruption, told;
    } cases[] = {
        {"'scrn", {}, {"1</b>.  Mum", "2</b>.  b", "3</b>.  mum's"}},
        {"'scrn", {"'del 1", "'sn new"}, {"1</b>.  Mum", "2</b>.  mum's", "3</b>.  new"}},
        {"'scrn", {"'clrn"}, {"1</b>.  Mum"}},
        {"'scrn", {"restart"}, {"1</b>.  Mum"}},
        {"'rn MUM", {"restart"}, {"1</b>.  Mum"}},
        {"'scrn", {"'clrn", "'sn ", "'sn ", "'sn x"}, {"1</b>.  Mum"}},
        {"'rn MUM", {}, {"1</b>.  Mum", "3</b>.  mum's"}},
        {"'rn MUM", {"'del 2"}, {"1</b>.  Mum", "2</b>.  mum's"}},
        {"'rn   ", {"'note 3"}, {"1</b>.  Mum", "3</b>.  mum's", "2</b>.  b", "3</b>.  mum's"}},
        {"'rn 03", {}, {"03</b> not found"}},
        {"'rn    Mx", {}, {"   mx</b> not found"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        NotesTest machine({"Mum", "b", "mum's"});
        machine.loop.once(c.line == "'scrn" ? 1299ms : 599ms, [&] { // ahead of the second note
            for (const std::string& line : c.interruption)
                line == "restart" ? void(machine.restart()) : machine.hear(line);
        });
        machine.owner(c.line, 5s);
        Lines told;
        for (const std::string& message : machine.allSaid())
            if (message.starts_with("<b>"))
                told.push_back(message.substr(3));
        EXPECT_EQ(told, c.told);
    }
    NotesTest machine({"Mum"});
    machine.inMessage("<b>zz", [&] { machine.hear("'sn new"); });
    EXPECT_EQ(machine.answer("'rn zz"), "<b>zz</b> not found\nnote number <b>2</b> added");
}

TEST(Notes, AreSavedAtExitALineEach) {
    VirtualMachine machine;
    const std::string stored = "01/02/03-11:59 am:     old\r\nno clock\r\n\r\nam\r\n";
    machine.writeDataFile("larkmain.lpb", stored);
    machine.start();
    EXPECT_EQ(machine.trayEntry("noted"), "view 3 notes");
    converse(machine, {Turn("'note 2", "<b>2</b>.  no clock"), Turn("'note 3", ""),
                       Turn("'rn zz", "<b>zz</b> not found"),
                       Turn("'sn two\r\nlines", "note number <b>4</b> added"),
                       Turn("'edit 1, New", "edited note <b>1</b> - New")});
    EXPECT_EQ(machine.dataFile("larkmain.lpb"), stored);
    machine.owner("'exit");
    EXPECT_EQ(machine.dataFile("larkmain.lpb"),
              moment + "New\r\nno clock\r\nam\r\n" + moment + "two  lines\r\n");
    machine.start();
    EXPECT_EQ(machine.answer("'note 4"), "<b>4</b>.  two  lines");
}

TEST(Notes, TakeNoMoreThanTheirListHolds) {
    VirtualMachine machine;
    std::string stored;
    for (int note = 1; note <= 32767; ++note)
        stored += moment + "n" + std::to_string(note) + "\r\n";
    machine.writeDataFile("larkmain.lpb", stored);
    machine.start();
    const std::string full = "you already have 32767 notes, no more fit";
    converse(machine, {Turn("'sn x", full), Turn("'rn n32766", "<b>32766</b>.  n32766"),
                       Turn("'edit 32767, last", "edited note <b>32767</b> - last"),
                       Turn("'del 1", "deleted note index <b>1"),
                       Turn("'sn x", "note number <b>32767</b> added")});
    machine.dialogs.answers = {"one too many"};
    machine.click("notez", "Label2");
    EXPECT_EQ(machine.lastBox(), full);
}

TEST(NotesWindow, ShowsTheTextOfTheNoteSelectedLast) {
    NotesTest machine({"a", "b", "c"});
    EXPECT_TRUE(machine.notez().onTop);
    machine.pressRow(1);
    EXPECT_EQ(machine.shown("Text1"), "b");
    machine.owner("'note 3");
    EXPECT_EQ(machine.shown("Text1"), "c");
    EXPECT_EQ(machine.state().notes.currentIndex(), 2);
    EXPECT_TRUE(machine.state().notes.isSelected(2));
    EXPECT_EQ(machine.state().notes.selectedCount(), 1);
    machine.owner("'edit 1, new");
    EXPECT_EQ(machine.shown("Text1"), "new");
    machine.owner("'del 1");
    EXPECT_EQ(machine.shown("Text1"), "");
    press(machine.notez(), "Label5");
    EXPECT_FALSE(machine.notez().visible);
    EXPECT_EQ(machine.answer("'nshow"), "notes form - <b>shown - 2</b> notes");
    EXPECT_TRUE(machine.notez().visible);
    machine.restart();
    EXPECT_FALSE(machine.notez().visible);
}

TEST(NotesWindow, AddsEditsAndDeletesAlsoInSilence) {
    NotesTest machine({"a", "b"});
    machine.chooseFromTray("silnt");
    machine.click("notez", "Label6");
    machine.pressDelete();
    EXPECT_EQ(machine.dialogs.boxes, Lines{}) << "nothing is selected";
    machine.dialogs.answers = {"", " New, one", "", "other", "no", "yes"};
    for (const char* label : {"Label2", "Label2", "Label6", "Label6"}) {
        machine.pressRow(1);
        machine.click("notez", label);
    }
    EXPECT_EQ(machine.shown("Text1"), "other");
    EXPECT_EQ(machine.texts(), (Lines{"a", "other", " New, one"}));
    EXPECT_EQ(machine.trayEntry("noted"), "view 3 notes");
    machine.pressDelete();
    machine.pressDelete();
    machine.click("notez", "Label3");
    EXPECT_EQ(machine.texts(), (Lines{"a", " New, one"}));
    EXPECT_EQ(machine.trayEntry("noted"), "view 2 notes");
    const std::string add = "what would you like to add to your notes?";
    const std::string edit = "what would you like to edit in note number 2";
    const std::string ask = "do you really wanna delete " + moment + "other?";
    EXPECT_EQ(machine.dialogs.boxes,
              (Lines{add, add, edit, edit, ask, ask, "cant scroll notes in silent mode you dits"}));
    machine.click("notez", "Label4");
    EXPECT_EQ(machine.trayEntry("noted"), "view 0 notes");
    EXPECT_EQ(machine.allSaid(), Lines{});
}

TEST(NotesWindow, RecitesByDoubleClickAlsoWhileItScrolls) {
    NotesTest machine({"a", "b", "c"});
    machine.loop.once(1s, [&] {
        pressTwice(machine.notez(), "List2", 2);
        press(machine.notez(), "Label5");
    });
    machine.click("notez", "Label3");
    EXPECT_EQ(machine.allSaid(), (Lines{"scrolling <b>3</b> notes", "<b>1</b>.  a", "<b>3</b>.  c",
                                        "<b>2</b>.  b", "<b>3</b>.  c"}));
}

// The list changes after a box about the third note, which reads like the first one.
TEST(NotesWindow, ChangesOnlyTheNoteThatItsBoxIsAbout) {
    const struct {
        Lines meanwhile; // lines, or a control that is worked
        Lines edited, deleted;
    } cases[] = {
        {{"'del 1"}, {"b", "x"}, {"b"}},
        {{"'del 3"}, {"a", "b"}, {"a", "b"}},
        {{"'del 3", "'sn a"}, {"a", "b", "a"}, {"a", "b", "a"}},
        {{"'clrn"}, {}, {}},
        {{"'edit 3, y"}, {"a", "b", "y"}, {"a", "b", "y"}},
        {{"'note 1", "Label5"}, {"a", "b", "x"}, {"a", "b"}},
        {{"Label6"}, {"a", "b", "inner"}, {"a", "b", "inner"}},
    };
    for (const auto& c : cases) {
        for (const bool isEdited : {true, false}) {
            SCOPED_TRACE(c.meanwhile.front());
            NotesTest machine({"a", "b", "a"});
            machine.pressRow(2);
            machine.dialogs.answers = {c.meanwhile.front() == "Label6" ? "inner" : "",
                                       isEdited ? "x" : "yes"};
            bool isOuter = true;
            machine.dialogs.whileOpen = [&] {
                if (!std::exchange(isOuter, false))
                    return;
                for (const std::string& line : c.meanwhile)
                    line.starts_with("'") ? machine.owner(line) : press(machine.notez(), line);
                if (machine.dialogs.answers.size() == 2)
                    machine.dialogs.answers.pop_front(); // nothing else has asked
            };
            isEdited ? void(machine.click("notez", "Label6")) : machine.pressDelete();
            EXPECT_EQ(machine.texts(), isEdited ? c.edited : c.deleted);
        }
    }
}

} // namespace larkspin
