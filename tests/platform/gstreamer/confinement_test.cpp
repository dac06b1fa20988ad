// What a decoder in the hands of a song's maker can reach, tried from inside: nothing of its
// owner's. That songs play there all the same is what all other tests of the player show.
#include "support/listener.h"
#include "support/real_player.h"

#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace larkspin {
namespace {

namespace fs = std::filesystem;
using Results = std::map<std::string, std::string>;

struct ConfinedPlayer : RealPlayer {
    ConfinedPlayer() {
        disk.write("secret", "password");
        sockaddr_un named{}, abstract{};
        named.sun_family = abstract.sun_family = AF_UNIX;
        bus().copy(named.sun_path, sizeof named.sun_path - 1);
        abstractName().copy(abstract.sun_path + 1, sizeof abstract.sun_path - 2);
        const std::size_t head = offsetof(sockaddr_un, sun_path) + 1;
        listenAt(named, head + bus().size());
        listenAt(abstract, head + abstractName().size());
    }

    std::string bus() const { return (disk.path() / "bus").native(); }
    static std::string abstractName() { return "larkspin-test-" + std::to_string(::getpid()); }

    void listenAt(const sockaddr_un& address, std::size_t size) {
        sockets.emplace_back(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        EXPECT_EQ(::bind(sockets.back().number(), reinterpret_cast<const sockaddr*>(&address),
                         static_cast<socklen_t>(size)),
                  0);
        EXPECT_EQ(::listen(sockets.back().number(), 5), 0);
    }

    Results probe(const std::string& mode) const {
        const std::string command = LARKSPIN_PROBE " " + mode + " " +
                                    (disk.path() / "secret").native() + " " + bus() + " " +
                                    std::to_string(local.port()) + " " + abstractName();
        Results results;
        std::FILE* const output = ::popen(command.c_str(), "r");
        char line[200];
        while (std::fgets(line, sizeof line, output)) {
            const std::string text(line);
            const auto colon = text.find(": ");
            results[text.substr(0, colon)] = text.substr(colon + 2, text.size() - colon - 3);
        }
        EXPECT_EQ(::pclose(output), 0);
        return results;
    }

    const Listener local;
    std::vector<Descriptor> sockets;
};

TEST_F(ConfinedPlayer, ReachesNothingOfItsOwners) {
    const Results results = probe("confined");
    EXPECT_GE(results.size(), 49u);
    for (const auto& [attempt, result] : results)
        EXPECT_EQ(std::set<std::string>({"refused", "can"}).count(result), 1u) << attempt << result;
    for (const char* need : {"read what it was given", "find its libraries", "all walls stand"})
        EXPECT_EQ(results.at(need), "can") << need;
    EXPECT_EQ(disk.read("secret"), "password");
}

// Otherwise the test above would show nothing.
TEST_F(ConfinedPlayer, WouldReachItWithoutItsWalls) {
    int done = 0;
    for (const auto& [attempt, result] : probe("free"))
        done += result == "done";
    EXPECT_GE(done, 36);
}

} // namespace
} // namespace larkspin
