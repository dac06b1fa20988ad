#include "platform/posix/crash_report.h"

#include "platform/posix/disk_worker.h"
#include "shell/trace.h"
#include "support/temp_directory.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace larkspin {

// In processes of their own. A sanitizer that catches some of these ends the process its own way.
TEST(CrashReport, IsWrittenForTheOwnerAlone) {
    Trace trace;
    trace.note("heard", "'next");
    for (const int signal : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL}) {
        SCOPED_TRACE(signal);
        TempDirectory disk;
        disk.write("elsewhere", "kept");
        const std::string file = (disk.path() / "crash.txt").native();
        std::filesystem::create_symlink("elsewhere", file);
        EXPECT_DEATH(
            {
                reportCrashes(trace, file);
                std::raise(signal);
            },
            "larkspin has crashed");
        const std::string report = disk.read("crash.txt");
        EXPECT_TRUE(report.starts_with("larkspin ")) << report;
        EXPECT_TRUE(report.ends_with(" heard 'next\n")) << report;
        EXPECT_EQ(disk.read("elsewhere"), "kept");
        struct stat status {};
        ::stat(file.c_str(), &status);
        EXPECT_EQ(status.st_mode & 0777u, 0600u);
    }
}

TEST(CrashReport, GoesToTheStandardErrorWhereNoFileCanBe) {
    Trace trace;
    trace.note("heard", "'next");
    EXPECT_DEATH(
        {
            reportCrashes(trace, "/nowhere/crash.txt");
            std::raise(SIGABRT);
        },
        "crashed by an assert or an abort\n.* heard 'next");
}

TEST(CrashReport, IsNotOfTheEndOfAWorker) {
    TempDirectory disk;
    const std::string file = (disk.path() / "crash.txt").native();
    const auto endAWorker = [&] {
        Trace trace;
        reportCrashes(trace, file);
        const auto worker = DiskWorker::start([](std::string_view) -> DiskAnswer { std::abort(); });
        worker->send("?");
        while (!worker->isGone())
            continue;
        std::_Exit(0);
    };
    EXPECT_EXIT(endAWorker(), testing::ExitedWithCode(0), "");
    EXPECT_FALSE(std::filesystem::exists(file));
}

} // namespace larkspin
