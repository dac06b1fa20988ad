// Disks that hang, die or take their time, as those who ask them for the program see it.
#include "platform/posix/asked_directories.h"
#include "platform/posix/asked_files.h"
#include "platform/posix/disk_questions.h"
#include "platform/posix/drive_paths.h"
#include "platform/posix/far_disks.h"
#include "platform/posix/poll_loop.h"
#include "support/temp_directory.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace larkspin {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Names = std::vector<std::string>;
using Outcome = DirectoryRead::Outcome;

struct OwnersDiskTest : testing::Test {
    OwnersDiskTest() {
        EXPECT_EQ(::mkfifo(gate.c_str(), 0600), 0);
        loop.every(1ms, [this] {
            if (++events > 1 && isHanging)
                asked->allow(0ms);
        });
    }
    OwnersDisk& open(DiskWorker::Answer answer) {
        asked.emplace(std::move(answer));
        asked->serve(loop);
        return *asked;
    }
    // What hangs is waited for until events have been served. All else has its time, however busy
    // the machine is.
    template <typename Asking> auto hanging(Asking&& ask) {
        events = 0;
        isHanging = true;
        auto answer = ask();
        isHanging = false;
        asked->allow(OwnersDisk::longestAnswer);
        EXPECT_GT(events, 1);
        return answer;
    }
    std::string drive(const std::string& below) {
        return drivePath((disk.path() / below).native());
    }
    // What names something dead hangs until the gate is opened; what names something mortal kills.
    DiskWorker::Answer withFaults(DiskWorker::Answer answer) {
        return [gate = gate, answer = std::move(answer)](std::string_view question) {
            if (question.find("dead") != question.npos)
                ::close(::open(gate.c_str(), O_RDONLY));
            if (question.find("mortal") != question.npos)
                ::_exit(1);
            return answer(question);
        };
    }
    DiskWorker::Answer faultySystem() {
        return withFaults(answersFrom(PosixFiles(Wastebasket{disk.path() / "share"}),
                                      PosixDirectories("/home/jo")));
    }
    // So that nobody hangs on.
    ~OwnersDiskTest() override {
        const Descriptor opened(::open(gate.c_str(), O_RDWR | O_CLOEXEC));
    }

    TempDirectory disk;
    const fs::path gate = disk.path() / "gate";
    PollLoop loop;
    std::optional<OwnersDisk> asked;
    bool isHanging = false;
    int events = 0;
};

TEST_F(OwnersDiskTest, AnswersForWhatHangsWithinABoundAndServesEventsMeanwhile) {
    OwnersDisk& asked =
        open(withFaults([](std::string_view question) { return std::string(question); }));
    EXPECT_EQ(asked.ask("quick", "/a"), "quick");
    EXPECT_EQ(hanging([&] { return asked.ask("dead", "/nas/music"); }), std::nullopt);
    events = 0;
    for (const char* path : {"/nas/music", "/nas/music/below"})
        EXPECT_EQ(asked.ask("quick", path), std::nullopt) << "at once";
    EXPECT_EQ(events, 0);
    EXPECT_EQ(asked.ask("quick", "/nas/music too"), "quick");
    EXPECT_EQ(hanging([&] { return asked.ask("dead", "/nas/pop"); }), std::nullopt);
    EXPECT_TRUE(asked.isHung("/nas/third")) << "two of a kind stand for what holds them";
    EXPECT_FALSE(asked.isHung("/home"));
    const Descriptor opened(::open(gate.c_str(), O_RDWR | O_CLOEXEC));
    while (asked.isHung("/nas/music")) // it answers after all
        loop.waitUntil(loop.now() + 5ms);
    EXPECT_EQ(asked.ask("quick", "/nas/music"), "quick");
}

// A question that comes in while another one waits has a worker of its own.
TEST_F(OwnersDiskTest, OneThatHangsHoldsNoOtherUp) {
    OwnersDisk& asked =
        open(withFaults([](std::string_view question) { return std::string(question); }));
    std::optional<std::string> inside;
    Descriptor opened;
    loop.once(5ms, [&] {
        inside = asked.ask("quick", "/a");
        opened = Descriptor(::open(gate.c_str(), O_RDWR | O_CLOEXEC));
    });
    EXPECT_EQ(asked.ask("dead", "/nas"), "dead") << "as soon as it does";
    EXPECT_EQ(inside, "quick");
}

TEST_F(OwnersDiskTest, ReplacesWorkersThatDieAndKeepsNothingOpenInThem) {
    OwnersDisk& asked = open(withFaults([](std::string_view) {
        int open = 0;
        for (int number = 3; number < 1024; ++number)
            open += ::fcntl(number, F_GETFD) >= 0;
        return std::to_string(open);
    }));
    EXPECT_EQ(asked.ask("mortal", "/a"), std::nullopt);
    EXPECT_EQ(asked.ask("quick", "/a"), "0") << "nor what was open before";
    EXPECT_EQ(asked.ask(std::string(3'000'000, 'x'), "/a"), "0");
}

TEST_F(OwnersDiskTest, DirectoriesAreListedAsTheyAre) {
    for (int number = 100; number < 160; ++number)
        disk.write("d" + std::to_string(number) + "/" + std::to_string(number) + ".mp3", "");
    disk.write("data/x", "");
    fs::create_directory_symlink("d100", disk.path() / "link");
    OwnersDisk& asked = open(faultySystem());
    AskedDirectories directories(asked, PosixDirectories("/home/jo"), drive("data"));
    Names paths{drive("gone")};
    for (int number = 100; number < 160; ++number)
        paths.push_back(drive("d" + std::to_string(number)));
    std::unique_ptr<DiskWorker> dead = asked.borrow(); // as one that was idle may be
    dead->kill();
    asked.giveBack(std::move(dead));
    const auto reader = directories.reader();
    reader->expect(paths);
    EXPECT_EQ(reader->read(paths[0]).outcome, Outcome::missing);
    std::ranges::reverse(paths); // in any order
    paths.pop_back();
    for (const std::string& path : paths)
        EXPECT_EQ(reader->read(path).listing.files, Names{path.substr(path.size() - 3) + ".mp3"});
    EXPECT_EQ(directories.list(drive("")).listing.directories.size(), 61u);
    EXPECT_EQ(directories.list(drive("data")).listing.files, Names{"x"});
    EXPECT_EQ(directories.drivePath((disk.path() / "link/../d101").native()), drive("d101"));
}

TEST_F(OwnersDiskTest, ADirectoryThatHangsIsOnlyOneOfMany) {
    for (const char* name : {"a/1.mp3", "dead/2.mp3", "dead/b/3.mp3", "mortal/4.mp3", "z/5.mp3"})
        disk.write(name, "");
    OwnersDisk& asked = open(faultySystem());
    AskedDirectories directories(asked, PosixDirectories("/home/jo"), drive("data"));
    const auto reader = directories.reader();
    reader->expect({drive("a"), drive("dead"), drive("dead/b"), drive("mortal"), drive("z")});
    EXPECT_EQ(reader->read(drive("a")).outcome, Outcome::listed);
    EXPECT_EQ(hanging([&] { return reader->read(drive("dead")).outcome; }), Outcome::unanswered);
    EXPECT_EQ(reader->read(drive("dead/b")).outcome, Outcome::unanswered);
    EXPECT_EQ(reader->read(drive("mortal")).outcome, Outcome::failed);
    EXPECT_EQ(reader->read(drive("z")).listing.files, Names{"5.mp3"});
}

TEST_F(OwnersDiskTest, FilesAreWorkedOnAsByTheProgramItself) {
    OwnersDisk& asked = open(faultySystem());
    AskedFiles files(asked, PosixFiles(), drive("data"));
    const std::string large(2'000'000, 'x');
    for (const char* place : {"data", "stick"}) {
        fs::create_directories(disk.path() / place);
        const std::string path = drive(place) + "\\a.lkl";
        EXPECT_FALSE(files.exists(path));
        EXPECT_EQ(files.replace(path, large).reason, "");
        EXPECT_TRUE(files.exists(path));
        EXPECT_EQ(files.size(path), large.size());
        EXPECT_EQ(files.read(path).contents, large);
        EXPECT_EQ(files.read(path, 10).outcome, FileRead::Outcome::failed);
        EXPECT_EQ(files.append(path, large).reason, "");
        EXPECT_EQ(files.size(path), 2 * large.size());
        EXPECT_EQ(files.rename(path, "b.lkl").reason, "");
        EXPECT_EQ(files.read(path).outcome, FileRead::Outcome::missing);
    }
    EXPECT_EQ(files.moveToWastebasket(drive("stick/b.lkl")).reason, "");
    EXPECT_FALSE(files.exists(drive("stick/b.lkl")));
    const std::string dead = drive("dead/a.mp3");
    EXPECT_EQ(hanging([&] { return files.presence(dead); }), Files::Presence::unanswered);
    EXPECT_EQ(files.size(dead), std::nullopt);
    EXPECT_EQ(files.read(dead).reason, "the disk doesn't answer");
    EXPECT_EQ(files.replace(dead, "").reason, "the disk doesn't answer");
    EXPECT_EQ(files.rename(dead, "x").reason, "the disk doesn't answer");
    EXPECT_EQ(files.append(dead, "x").reason, "the disk doesn't answer");
    EXPECT_EQ(files.moveToWastebasket(dead).reason, "the disk doesn't answer");
    EXPECT_FALSE(files.rename(dead, "x").mayHappen) << "it isn't asked";
    EXPECT_TRUE(hanging([&] { return files.rename(drive("x/dead/a.mp3"), "x").mayHappen; }));
    EXPECT_TRUE(hanging([&] { return files.append(drive("data/dead/a"), "x").mayHappen; }))
        << "one of the program's own, which may lie elsewhere";
}

TEST(FarDisks, AreKnownByHowTheyAreMounted) {
    constexpr std::string_view mounts =
        "22 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
        "23 22 0:40 / /mnt/my\\040nas rw,relatime shared:1 master:2 - nfs4 nas:/music rw\n"
        "24 22 8:2 / /home rw - ext4 /dev/sda2 rw\n"
        "25 24 0:41 / /home/jo/far rw - fuse.sshfs jo@far: rw\n"
        "26 25 8:3 / /home/jo/far/near rw - ext4 /dev/sda3 rw\nrubbish\n";
    const std::pair<const char*, const char*> cases[] = {
        {"/mnt/my nas", "/mnt/my nas"}, {"/mnt/my nas/queen", "/mnt/my nas"},
        {"/mnt/my nas too", ""},        {"/home/jo/far/a", "/home/jo/far"},
        {"/home/jo/far/near/a", ""},    {"/home/jo", ""}};
    for (const auto& [path, disk] : cases)
        EXPECT_EQ(farDiskIn(mounts, path), disk) << path;
}

} // namespace
} // namespace larkspin
