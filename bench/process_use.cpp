#include "process_use.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace larkspin {

namespace {

constexpr std::chrono::seconds wakeupsWatched(3);

std::filesystem::path processDirectory(pid_t process) {
    return "/proc/" + std::to_string(process);
}

std::vector<pid_t> processTree(pid_t root) {
    std::vector<pid_t> tree{root};
    std::error_code gone;
    for (const auto& task :
         std::filesystem::directory_iterator(processDirectory(root) / "task", gone)) {
        std::ifstream children(task.path() / "children");
        for (pid_t child = 0; children >> child;)
            std::ranges::copy(processTree(child), std::back_inserter(tree));
    }
    return tree;
}

// A number of a file such as /proc/<pid>/status, which stands after its name and a colon.
double numberIn(const std::filesystem::path& file, const std::string& name) {
    std::ifstream lines(file);
    for (std::string word; lines >> word;) {
        double value = 0;
        if (word == name + ':' && lines >> value)
            return value;
    }
    return 0;
}

double sleeps(pid_t root) {
    double count = 0;
    std::error_code gone;
    for (const pid_t process : processTree(root))
        for (const auto& task :
             std::filesystem::directory_iterator(processDirectory(process) / "task", gone))
            count += numberIn(task.path() / "status", "voluntary_ctxt_switches");
    return count;
}

} // namespace

double megabytes(pid_t root) {
    double kilobytes = 0;
    for (const pid_t process : processTree(root))
        kilobytes += numberIn(processDirectory(process) / "smaps_rollup", "Pss");
    return kilobytes / 1024;
}

double wakeupsPerSecond(pid_t root) {
    const double before = sleeps(root);
    std::this_thread::sleep_for(wakeupsWatched);
    return (sleeps(root) - before) / std::chrono::duration<double>(wakeupsWatched).count();
}

} // namespace larkspin
