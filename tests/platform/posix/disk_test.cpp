// The real disk behind drive paths: names, files, directories.
#include "platform/posix/drive_paths.h"
#include "platform/posix/posix_directories.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/posix_process.h"
#include "platform/posix/standard_streams.h"
#include "support/temp_directory.h"
#include "text/stand_ins.h"

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {
namespace {

namespace fs = std::filesystem;
using Pairs = std::vector<std::pair<std::string, std::string>>;
using Names = std::vector<std::string>;

struct PosixDisk : testing::Test {
    std::string drive(const std::string& below) { return drivePath(native(below).native()); }
    fs::path native(const std::string& below) { return disk.path() / below; }
    // What the act returns while the process is under that limit.
    static bool withLimit(__rlimit_resource kind, rlim_t limit, const std::function<bool()>& act) {
        rlimit old{};
        ::getrlimit(kind, &old);
        const rlimit small{limit, old.rlim_max};
        ::setrlimit(kind, &small);
        const bool result = act();
        ::setrlimit(kind, &old);
        return result;
    }
    std::ptrdiff_t entries() {
        return std::distance(fs::recursive_directory_iterator(disk.path()), {});
    }
    TempDirectory disk;
    PosixFiles files;
    PosixDirectories directories{"/home/jo"};
};

// clang-format off
TEST_F(PosixDisk, NamesAndPathsAreMappedBySyntaxAlone) {
    for (const auto& [path, native] : Pairs{
             {"c:\\", "/"}, {"c:", "/"}, {"C:\\Music", "/Music"}, {"c:\\\\a/\\b\\", "/a/b"},
             {"", ""}, {"d:\\a", ""}, {"c", ""}, {"music", ""}, {"c:\\\uF000", "/\uF000"}})
        EXPECT_EQ(nativePath(path), native) << path;
    for (const auto& [typed, path] : Pairs{
             {"/", "c:\\"}, {"/a/./b/../c//", "c:\\a\\c"}, {"/../..", "c:\\"}, {"a/b", "a/b"},
             {"~", "c:\\home\\jo"}, {"~/../x", "c:\\home\\x"}, {"c:\\A", "c:\\A"}, {"~jo", "~jo"}})
        EXPECT_EQ(directories.drivePath(typed), path) << typed;
    std::string down, up;
    for (int i = 0; i < 100000; ++i)
        down += "/a", up += "/..";
    EXPECT_EQ(directories.drivePath(down + up), "c:\\") << "at once";
    for (const auto& [name, form] : Pairs{
             {"AC|DC?.mp3", "AC\uF07CDC\uF03F.mp3"}, {" a b ", "\uF020a b\uF020"}, {" ", "\uF020"},
             {"\xFF\\\n\x7F", "\xFF\uF05C\uF00A\uF07F"}, {"\uF03F", "\uF000\uF03F"}, {"Ä{", "Ä{"}})
        EXPECT_EQ(nameFromDisk(name), form);
    const Names pieces = {" ", "|", "\\", ":", "\n", "\xEF", "\x80", "\xBF", "\uF000", "\uF03F",
                          "\uF020", "\uF00A", "ä", "{", ".", "\"", "<", ">", "*", "?", "\x7F"};
    std::mt19937 random(2);
    for (int round = 0; round < 50000; ++round) {
        std::string name;
        for (auto count = random() % 7 + 1; count > 0; --count)
            name += pieces[random() % pieces.size()];
        const std::string form = nameFromDisk(name);
        ASSERT_EQ(nativePath("c:\\" + form + "\\y"), "/" + name + "/y");
        ASSERT_FALSE(form.starts_with(' ')) << form;
        ASSERT_FALSE(form.ends_with(' ')) << form;
        ASSERT_EQ(form.find_first_of("|\\:*?\"<>\n\x7F"), form.npos) << form;
    }
}

// clang-format on

TEST_F(PosixDisk, ReplacingKeepsLinksAndIsForTheOwnerAlone) {
    disk.write("a", "old");
    disk.write("b", "old");
    fs::create_directories(native("real"));
    fs::create_symlink("b", native("link"));
    fs::create_symlink("real/later", native("early"));
    for (const auto& [name, before] : std::map<std::string, mode_t>{{"a", 0464}, {"b", 0644}})
        EXPECT_EQ(::chmod(native(name).c_str(), before), 0);
    for (const char* name : {"a", "link", "early", "made"}) {
        EXPECT_TRUE(files.replace(drive(name), std::string("new\0", 4))) << name;
        EXPECT_EQ(files.read(drive("") + "\\\\" + name).contents, std::string("new\0", 4)) << name;
        EXPECT_EQ(fs::status(native(name)).permissions(), fs::perms{0600}) << name;
    }
    EXPECT_TRUE(fs::is_symlink(native("link")));
    EXPECT_TRUE(fs::is_symlink(native("early")));
    EXPECT_EQ(entries(), 7);
}

TEST_F(PosixDisk, WhatHasTheNameOfANewFileKeepsNobodyFromWriting) {
    // All names that this process would try are taken, by things that can't or mustn't be removed.
    for (int number = 1; number < 400; ++number) {
        const std::string name =
            ".larkspin-" + std::to_string(::getpid()) + "-" + std::to_string(number) + ".new";
        if (number % 2 == 0)
            fs::create_directories(native(name + "/below"));
        else
            fs::create_symlink("victim", native(name));
    }
    fs::create_directories(native(".larkspin.new/below"));
    disk.write("victim", "old");
    const auto before = entries();
    for (const char* contents : {"one", "two"}) {
        EXPECT_TRUE(files.replace(drive("file"), contents));
        EXPECT_EQ(disk.read("file"), contents);
    }
    EXPECT_EQ(disk.read("victim"), "old");
    EXPECT_EQ(entries(), before + 1);
}

TEST_F(PosixDisk, WhatCantBeReplacedStays) {
    disk.write("file", "old");
    fs::create_directories(native("directory/below"));
    fs::create_symlink("gone/x", native("dangling"));
    fs::create_symlink("loop", native("loop"));
    EXPECT_EQ(::mkfifo(native("pipe").c_str(), 0600), 0);
    const std::string gone = "there is no such file or directory";
    for (const auto& [path, reason] : Pairs{{drive("directory"), "something else has that name"},
                                            {drive("dangling"), gone},
                                            {drive("loop"), "it is a link without an end"},
                                            {"d:\\x", gone},
                                            {drive("pipe"), "something else has that name"},
                                            {drive("file/x"), "there is no such directory"},
                                            {drive("gone/x"), gone},
                                            {drive(std::string(300, 'x')), "the name is too long"},
                                            {"", gone}}) {
        EXPECT_EQ(files.replace(path, "new").reason, reason) << path;
        EXPECT_FALSE(files.exists(path)) << path;
        EXPECT_EQ(files.read(path).contents, "") << path;
    }
    EXPECT_TRUE(files.read(drive("dangling")).failed()); // it is for a disk that is away
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    EXPECT_FALSE(withLimit(RLIMIT_FSIZE, 4096, [&] { // the disk fills up in the middle of the write
        return bool(files.replace(drive("file"), std::string(10000, 'x')));
    }));
    std::signal(SIGXFSZ, before);
    EXPECT_EQ(disk.read("file"), "old");
    EXPECT_EQ(entries(), 6);
    EXPECT_FALSE(files.makeDirectory(drive("file")));
    EXPECT_FALSE(files.makeDirectory(drive("file/x")));
}

TEST_F(PosixDisk, AppendsToFilesOfItsOwnAndNothingElse) {
    const auto rights = [&](const char* of) { return fs::status(native(of)).permissions(); };
    EXPECT_TRUE(files.append(drive("logs/net/room"), "one\n"));
    fs::create_symlink("net/room", native("logs/link"));
    fs::permissions(native("logs/net/room"), fs::perms{0644});
    fs::create_hard_link(native("logs/net/room"), native("same"));
    EXPECT_TRUE(files.append(drive("logs/link"), "two\n"));
    EXPECT_EQ(disk.read("same"), "one\ntwo\n") << "it is still the same file";
    EXPECT_EQ(rights("logs"), fs::perms{0700});
    EXPECT_EQ(rights("logs/net"), fs::perms{0700});
    EXPECT_EQ(rights("logs/net/room"), fs::perms{0600});

    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    EXPECT_FALSE(withLimit(RLIMIT_FSIZE, 4096, [&] { // the disk fills up in the middle of the text
        return bool(files.append(drive("same"), std::string(10000, 'x')));
    }));
    std::signal(SIGXFSZ, before);
    EXPECT_EQ(disk.read("same"), "one\ntwo\n");

    EXPECT_EQ(::mkfifo(native("pipe").c_str(), 0600), 0);
    fs::create_symlink("gone/x", native("dangling"));
    for (const auto& [path, reason] :
         Pairs{{drive("logs"), "it is a directory"},
               {drive("pipe"), "something else has that name"},
               {drive("dangling"), "there is no such file or directory"},
               {drive("same/x"), "there is no such directory"},
               {"", "there is no such file or directory"}})
        EXPECT_EQ(files.append(path, "x").reason, reason) << path;
    if (::geteuid() == 0 && ::chown(native("same").c_str(), 65534, 65534) == 0)
        EXPECT_EQ(files.append(drive("same"), "x").reason, "the file is somebody else's");
}

TEST_F(PosixDisk, RemovesFilesAndLinksAndNothingElse) {
    disk.write("a", "");
    fs::create_symlink(native("a"), native("link"));
    fs::create_directory(native("directory"));
    EXPECT_TRUE(files.remove(drive("link")));
    EXPECT_TRUE(files.remove(drive("a")));
    EXPECT_FALSE(files.remove(drive("directory")));
    EXPECT_EQ(entries(), 1);
}

TEST_F(PosixDisk, TellsAMissingFileFromOneThatCantBeRead) {
    using Outcome = FileRead::Outcome;
    disk.write("file", "abc");
    fs::create_symlink("loop", native("loop"));
    EXPECT_EQ(::mkfifo(native("pipe").c_str(), 0600), 0);
    for (const auto& [path, outcome] : std::map<std::string, Outcome>{
             {drive("file"), Outcome::contents},
             {drive("gone"), Outcome::missing},
             {drive("gone/x"), Outcome::missing},
             {drive("file/x"), Outcome::missing},
             {"d:\\x", Outcome::missing},
             {drive(""), Outcome::failed},
             {drive("pipe"), Outcome::failed},
             {drive("loop"), Outcome::failed},
             {drivePath("/proc/self/mem"), Outcome::failed}}) // opens, but fails to be read
        EXPECT_EQ(files.read(path).outcome, outcome) << path;
    EXPECT_EQ(files.read(drive("file"), 3).contents, "abc");
    EXPECT_TRUE(files.read(drive("file"), 2).failed());

    EXPECT_TRUE(withLimit(RLIMIT_NOFILE, 0, [&] { return files.read(drive("file")).failed(); }))
        << "no descriptor is left";
}

TEST_F(PosixDisk, OneCopyHoldsADataDirectoryByWhateverWayItIsReached) {
    disk.write("real/.larkspin-1-1.new", "unfinished");
    disk.write("real/.larkspin-2-1.new/below", "");
    disk.write("real/.larkspin.ini", "the owner's");
    fs::create_symlink("real", native("link"));
    {
        PosixProcess first(drive("link")), second(drive("real")), other(drive("made/later"));
        EXPECT_TRUE(first.claimOnlyCopy());
        EXPECT_TRUE(first.claimOnlyCopy());
        EXPECT_FALSE(fs::exists(native("real/.larkspin-1-1.new")));
        EXPECT_TRUE(fs::exists(native("real/.larkspin.ini")));
        disk.write("real/.larkspin-3-1.new", "being written");
        const auto before = fs::last_write_time(native("real"));
        EXPECT_FALSE(second.claimOnlyCopy());
        EXPECT_TRUE(fs::exists(native("real/.larkspin-3-1.new")));
        EXPECT_EQ(fs::last_write_time(native("real")), before);
        EXPECT_TRUE(other.claimOnlyCopy());
    }
    EXPECT_TRUE(PosixProcess(drive("real")).claimOnlyCopy()) << "the first has ended";
    for (const auto& [name, rights] : std::map<std::string, unsigned>{
             {"real", 0700}, {"made", 0700}, {"made/later", 0700}, {"real/larkspin.lock", 0600}})
        EXPECT_EQ(fs::status(native(name)).permissions(), fs::perms{rights}) << name;
}

TEST_F(PosixDisk, WhereNoLockCanBeMadeEveryCopyMayRun) {
    fs::create_directories(native("locked/larkspin.lock"));
    disk.write("file", "");
    fs::create_directories(native("readonly"));
    fs::permissions(native("readonly"), fs::perms{0555});
    fs::permissions(disk.path(), fs::perms{0755});
    const bool root = ::geteuid() == 0 && ::seteuid(65534) == 0; // root may write anywhere
    for (const char* name : {"locked", "file", "readonly", "readonly/below"}) {
        PosixProcess first(drive(name)), second(drive(name));
        EXPECT_TRUE(first.claimOnlyCopy()) << name;
        EXPECT_TRUE(second.claimOnlyCopy()) << name;
    }
    EXPECT_EQ(root ? ::seteuid(0) : 0, 0);
    PosixProcess owner(drive("readonly"));
    EXPECT_TRUE(owner.claimOnlyCopy());
    EXPECT_EQ(fs::status(native("readonly")).permissions(), fs::perms{0500});
}

TEST_F(PosixDisk, ListsADirectoryUnderItsOneSpelling) {
    for (const char* name : {".hidden", "a|b", "sub/x", ".dot/x"})
        disk.write(name, "");
    for (const auto& [target, link] : Pairs{{"sub", "link"}, {"sub/x", "file"}, {"gone", "none"}})
        fs::create_symlink(target, native(link));
    EXPECT_EQ(::mkfifo(native("pipe").c_str(), 0600), 0);
    DirectoryRead read = directories.list(drive("sub") + "\\..\\\\");
    DirectoryListing* listing = &read.listing;
    EXPECT_EQ(listing->path, drive(""));
    std::ranges::sort(listing->files);
    EXPECT_EQ(listing->files, (Names{".hidden", "a\uF07Cb", "file"}));
    std::ranges::sort(listing->directories);
    EXPECT_EQ(listing->directories, (Names{".dot", "sub"}));
    EXPECT_EQ(listing->links, Names{"link"});
    EXPECT_EQ(directories.list(drive("file")).outcome, DirectoryRead::Outcome::noDirectory);
    for (const std::string& path : Names{drive("gone"), drive("file/x"), "", "d:\\"})
        EXPECT_EQ(directories.list(path).outcome, DirectoryRead::Outcome::missing) << path;
    read = directories.list("C:\\\\");
    EXPECT_EQ(listing->path, "c:\\");
    for (const char* name : {"proc", "sys", "dev", "run"})
        EXPECT_EQ(std::ranges::count(listing->directories, name), 0) << name;
}

TEST_F(PosixDisk, UpwardsBehindALinkLeadsWhereTheSystemGoes) {
    disk.write("far/away/below/x", "");
    disk.write("far/y", "");
    fs::create_directories(native("near"));
    fs::create_symlink("../far/away", native("near/link"));
    for (const auto& [path, place] : Pairs{{"near/link/..", "far"},
                                           {"near/link/../away/./below", "far/away/below"},
                                           {"near/../near/link", "near/link"},
                                           {"near/link/below/..", "far/away"}}) {
        EXPECT_EQ(directories.list(drive("") + "\\" + path).listing.path, drive(place)) << path;
        EXPECT_EQ(directories.drivePath(native(path).native()), drive(place)) << path;
    }
    EXPECT_EQ(directories.drivePath(native("gone/../x").native()), drive("x"));
}

TEST(StandardStreams, AreOpenedWhereTheyAreClosed) {
    const pid_t child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        ::close(STDIN_FILENO);
        ::close(STDERR_FILENO);
        openStandardStreams();
        char byte;
        const bool atEnd = ::read(STDIN_FILENO, &byte, 1) == 0;
        const bool takes = ::write(STDERR_FILENO, "x", 1) == 1;
        const bool isFree = ::dup(STDIN_FILENO) > STDERR_FILENO;
        std::_Exit((atEnd ? 0 : 1) + (takes ? 0 : 2) + (isFree ? 0 : 4));
    }
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

} // namespace
} // namespace larkspin
