// Lists whose files couldn't be loaded: neither their lines nor the rows that come are lost.
#include "library/line_files.h"

#include "support/talk.h"

namespace larkspin {
namespace {

struct LineFilesTest : testing::Test {
    int load() {
        list.clear();
        lineFiles.loadlines(path, list);
        return list.count();
    }
    void save(const char* row) {
        list.add(row);
        lineFiles.savelines(path, list);
    }
    VirtualMachine machine;
    LineFiles lineFiles{machine.files};
    const std::string path = machine.drive("data/notes");
    RowList list;
};

TEST_F(LineFilesTest, RowsGoAfterTheLinesThatCouldNotBeLoaded) {
    for (const std::string before : {"one\r\ntwo\r\n", "one\r\ntwo"}) { // as some editors leave it
        machine.writeDataFile("notes", before);
        machine.files.unreadable = true;
        EXPECT_EQ(load(), 0);
        machine.files.unreadable = false;
        lineFiles.savelines(path, list);
        EXPECT_EQ(machine.dataFile("notes"), before);
        save("three");
        EXPECT_EQ(machine.dataFile("notes"), "one\r\ntwo\r\nthree\r\n");
    }
    save("four");
    EXPECT_EQ(machine.dataFile("notes"), "one\r\ntwo\r\nthree\r\nfour\r\n");
    EXPECT_EQ(load(), 4);
    list.clear();
    lineFiles.savelines(path, list);
    EXPECT_EQ(machine.dataFile("notes"), "");
}

TEST_F(LineFilesTest, RowsGoBesideAFileThatStaysUnreadable) {
    machine.writeDataFile("notes", "");
    machine.writeDataFile("notes.rescued", "of another day\r\n");
    const auto file = machine.disk.path() / "data/notes";
    std::filesystem::resize_file(file, Files::largestFile + 1);
    EXPECT_EQ(load(), 1);
    save("three");
    save("four");
    EXPECT_EQ(machine.dataFile("notes.rescued"), "of another day\r\nthree\r\nfour\r\n");
    EXPECT_EQ(std::filesystem::file_size(file), Files::largestFile + 1);
    machine.files.unreadable = true; // this one too
    LineFiles another{machine.kept};
    another.loadlines(path, list);
    another.savelines(path, list);
    EXPECT_EQ(machine.dataFile("notes.rescued"), "of another day\r\nthree\r\nfour\r\n");
    machine.files.unreadable = false;
    machine.writeDataFile("notes", "one");
    EXPECT_EQ(load(), 4);
    lineFiles.savelines(path, list);
    EXPECT_EQ(machine.dataFile("notes"), "one\r\nof another day\r\nthree\r\nfour\r\n");
    EXPECT_FALSE(machine.files.exists(machine.drive("data/notes.rescued")));
    machine.writeDataFile("notes", "by hand\r\n" + machine.dataFile("notes"));
    save("five");
    EXPECT_TRUE(machine.dataFile("notes").ends_with("\r\nfive\r\nby hand\r\n"));
}

TEST_F(LineFilesTest, AMissingFileIsAnEmptyOne) {
    EXPECT_EQ(load(), 0);
    save("one");
    EXPECT_EQ(machine.dataFile("notes"), "");
    machine.writeDataFile("other", "");
    save("two");
    EXPECT_EQ(machine.dataFile("notes"), "one\r\ntwo\r\n");
}

} // namespace
} // namespace larkspin
