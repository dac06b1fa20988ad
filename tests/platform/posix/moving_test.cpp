// Renaming files and putting them into the wastebasket, on the real disk.
#include "platform/posix/drive_paths.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/rename_file.h"
#include "support/temp_directory.h"
#include "text/stand_ins.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

struct PosixMoving : testing::Test {
    std::string drive(const std::string& below) {
        return drivePath((disk.path() / below).native());
    }
    FileChange throwAway(const std::string& below) { return files.moveToWastebasket(drive(below)); }
    // Thrown away under that name, with a note of its origin: the lines of the date aside.
    void expectKept(const std::string& basket, const std::string& name, const std::string& origin) {
        const std::string note = disk.read(basket + "/info/" + name + ".trashinfo");
        const auto date = note.find("\nDeletionDate=");
        EXPECT_EQ(disk.read(basket + "/files/" + name), "sound") << name;
        EXPECT_EQ(note.substr(0, date), "[Trash Info]\nPath=" + origin) << name;
        std::tm when{};
        EXPECT_STREQ(::strptime(note.c_str() + date + 1, "DeletionDate=%Y-%m-%dT%H:%M:%S", &when),
                     "\n");
    }

    TempDirectory disk;
    PosixFiles files{Wastebasket((disk.path() / "share").native())};
    std::string user = std::to_string(::geteuid());
    std::string home = fs::canonical(disk.path());
};

// Runs it in a process in which the directory is a disk of its own, empty at first; false when the
// machine doesn't allow that.
bool onDiskOfItsOwn(const fs::path& directory, const std::function<void()>& body) {
    constexpr int refused = 77;
    fs::create_directories(directory);
    const auto user = std::to_string(::geteuid()), group = std::to_string(::getegid());
    const pid_t child = ::fork();
    if (child == 0) {
        if (::unshare(CLONE_NEWNS | (user == "0" ? 0 : CLONE_NEWUSER)) != 0)
            ::_exit(refused);
        if (user != "0") {
            std::ofstream("/proc/self/setgroups") << "deny";
            std::ofstream("/proc/self/gid_map") << group + ' ' + group + " 1";
            std::ofstream("/proc/self/uid_map") << user + ' ' + user + " 1";
        }
        if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("none", directory.c_str(), "tmpfs", 0, nullptr) != 0)
            ::_exit(refused);
        [&]() noexcept { body(); }(); // what it throws must not run the other tests here
        std::fflush(nullptr);
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    const int result = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    if (result != refused) {
        EXPECT_EQ(result, 0);
    }
    return result != refused;
}

} // namespace

TEST_F(PosixMoving, RenamesNothingOverAnything) {
    fs::create_directories(disk.path() / "directory.mp3");
    fs::create_symlink("gone", disk.path() / "link.mp3");
    for (const char* name : {"a.mp3", "b.mp3"})
        disk.write(name, name);
    for (const std::string& name :
         Names{"b.mp3", "directory.mp3", "link.mp3", "", ".", "..", "x/y", "x\\y", "../x",
               "\uF000.\uF000.", "\uF000.", std::string("x\0", 2), std::string(256, 'x')})
        EXPECT_FALSE(files.rename(drive("a.mp3"), name)) << name;
    for (const std::string& path : Names{drive("directory.mp3"), drive("gone"), "", "d:\\a.mp3"})
        EXPECT_FALSE(files.rename(path, "new")) << path;
    EXPECT_EQ(files.rename(drive("a.mp3"), "b.mp3").reason, "the name is taken");
    EXPECT_EQ(files.rename(drive("a.mp3"), "..").reason, "no file can have that name");
    EXPECT_EQ(files.rename(drive("a.mp3"), std::string(256, 'x')).reason, "the name is too long");
    EXPECT_EQ(files.rename(drive("directory.mp3"), "new").reason, "it is a directory");
    EXPECT_EQ(disk.read("a.mp3"), "a.mp3");
    EXPECT_EQ(disk.read("b.mp3"), "b.mp3");
    EXPECT_TRUE(files.rename(drive("a.mp3"), "\uF03FA"));
    EXPECT_EQ(disk.read("?A"), "a.mp3");
    EXPECT_TRUE(files.rename(drive("link.mp3"), "link"));
    EXPECT_EQ(fs::read_symlink(disk.path() / "link"), "gone");
}

TEST_F(PosixMoving, RenamesWhereItTakesTwoSteps) {
    const auto at = [&](const char* name) { return (disk.path() / name).native(); };
    for (const auto& rename : {renameFile, claimAndRename}) {
        disk.write("a", "a");
        disk.write("b", "b");
        fs::create_hard_link(at("a"), at("other"));
        EXPECT_FALSE(rename(at("a"), at("b")));
        EXPECT_EQ(errno, EEXIST);
        EXPECT_FALSE(rename(at("a"), at("other"))) << "both names would stay";
        EXPECT_FALSE(rename(at("gone"), at("new")));
        EXPECT_EQ(errno, ENOENT);
        EXPECT_FALSE(fs::exists(at("new"))) << "no claim is left";
        EXPECT_TRUE(rename(at("b"), at("b"))) << "as if only the case differed";
        EXPECT_TRUE(rename(at("a"), at("new")));
        EXPECT_EQ(disk.read("new"), "a");
        EXPECT_EQ(disk.read("b"), "b");
        fs::remove(at("new"));
        fs::remove(at("other"));
    }
}

TEST_F(PosixMoving, ThrowsAwayWithANoteForTheWayBack) {
    const std::string longName = "\u00E4" + std::string(253, 'x'); // 255 bytes
    for (const auto& [name, origin] : std::map<std::string, std::string>{
             {"a b.mp3", "a%20b.mp3"},
             {"100%25\n\xFF\u00E4~_-.mp3", "100%2525%0A%FF%C3%A4~_-.mp3"},
             {longName, "%C3%A4" + longName.substr(2)}}) {
        disk.write("music/" + name, "sound");
        EXPECT_TRUE(files.moveToWastebasket(drive("music") + "\\" + nameFromDisk(name)));
        EXPECT_FALSE(fs::exists(disk.path() / "music" / name));
        expectKept("share/Trash", name.substr(0, 245), home + "/music/" + origin);
    }
    for (const char* made : {"share/Trash", "share/Trash/info", "share/Trash/files"})
        EXPECT_EQ(fs::status(disk.path() / made).permissions(), fs::perms::owner_all) << made;
}

TEST_F(PosixMoving, ThrowsNothingAwayOverWhatIsInTheBasket) {
    const std::string longName(255, 'x');
    disk.write("share/Trash/files/b", "nobody has a note for it");
    disk.write("share/Trash/info/c.trashinfo", "of a file that has gone");
    for (const std::string& name : Names{"a", "a", "b", "c", longName, longName}) {
        disk.write(name, "sound");
        EXPECT_TRUE(throwAway(name)) << name;
    }
    for (const char* kept : {"a", "a.2", "b.2", "c.2"})
        expectKept("share/Trash", kept, home + "/" + *kept);
    for (const std::string& kept : {longName.substr(0, 245), longName.substr(0, 243) + ".2"})
        expectKept("share/Trash", kept, home + "/" + longName);
    EXPECT_EQ(disk.read("share/Trash/files/b"), "nobody has a note for it");
    EXPECT_FALSE(fs::exists(disk.path() / "share/Trash/info/b.trashinfo"));
}

TEST_F(PosixMoving, ThrowsLinksAwayAndNoDirectories) {
    disk.write("real/a.mp3", "sound");
    fs::create_symlink("real/a.mp3", disk.path() / "link.mp3");
    EXPECT_FALSE(throwAway("real"));
    EXPECT_FALSE(throwAway("gone"));
    EXPECT_FALSE(files.moveToWastebasket(""));
    EXPECT_EQ(PosixFiles().moveToWastebasket(drive("real/a.mp3")).reason,
              "its disk has no wastebasket that can be written")
        << "without a home";
    EXPECT_TRUE(throwAway("link.mp3"));
    EXPECT_EQ(fs::read_symlink(disk.path() / "share/Trash/files/link.mp3"), "real/a.mp3");
}

TEST_F(PosixMoving, ThrowsAwayOnTheDiskThatTheFileLiesOn) {
    const bool ran = onDiskOfItsOwn(disk.path() / "stick", [&] {
        const auto stick = [&](const std::string& below) { return disk.path() / "stick" / below; };
        const auto throwNext = [&](const std::string& name) {
            disk.write("stick/a %/" + name, "sound");
            return throwAway("stick/a %/" + name);
        };
        const fs::path shared = stick(".Trash"), own = stick(".Trash-" + user);
        EXPECT_TRUE(throwNext("first"));
        fs::create_directory(shared);
        EXPECT_TRUE(throwNext("not sticky"));
        fs::permissions(shared, fs::perms::all | fs::perms::sticky_bit);
        EXPECT_TRUE(throwNext("sticky"));
        fs::rename(shared, stick("other"));
        fs::create_symlink("other", shared);
        EXPECT_TRUE(throwNext("a link"));
        expectKept("stick/.Trash-" + user, "first", "a%20%25/first");
        expectKept("stick/.Trash-" + user, "not sticky", "a%20%25/not%20sticky");
        expectKept("stick/.Trash-" + user, "a link", "a%20%25/a%20link");
        expectKept("stick/other/" + user, "sticky", "a%20%25/sticky");

        fs::rename(own, stick("mine"));
        fs::create_symlink("mine", own); // anybody's, for all we know
        EXPECT_FALSE(throwNext("stays"));
        EXPECT_EQ(disk.read("stick/a %/stays"), "sound");
        fs::create_directories(disk.path() / "share");
        fs::create_symlink(stick("mine"), disk.path() / "share/Trash"); // the owner's
        EXPECT_TRUE(throwNext("home"));
        expectKept("stick/mine", "home", home + "/stick/a%20%25/home");
        ::mount(nullptr, stick("").c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr);
        EXPECT_FALSE(throwAway("stick/a %/stays"));
    });
    if (!ran)
        GTEST_SKIP() << "no disk of its own can be mounted here";
}

} // namespace larkspin
