// What a decoder in the hands of a song's maker can reach, tried from inside: nothing of its
// owner's. That songs play there all the same is what all other tests of the player show.
#include "support/real_player.h"

#include <arpa/inet.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
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

class ConfinedPlayer : public RealPlayer {
protected:
    ConfinedPlayer() {
        disk.write("secret", "password");
        sockaddr_un named{}, abstract{};
        named.sun_family = abstract.sun_family = AF_UNIX;
        bus().copy(named.sun_path, sizeof named.sun_path - 1);
        abstractName().copy(abstract.sun_path + 1, sizeof abstract.sun_path - 2);
        const std::size_t head = offsetof(sockaddr_un, sun_path) + 1;
        listenAt(AF_UNIX, named, head + bus().size());
        listenAt(AF_UNIX, abstract, head + abstractName().size());
        sockaddr_in local{};
        local.sin_family = AF_INET;
        local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const int socket = listenAt(AF_INET, local, sizeof local);
        socklen_t size = sizeof local;
        ::getsockname(socket, reinterpret_cast<sockaddr*>(&local), &size);
        port = ntohs(local.sin_port);
    }
    ~ConfinedPlayer() override {
        for (const int socket : sockets)
            ::close(socket);
    }

    std::string bus() const { return (disk.path() / "bus").native(); }
    static std::string abstractName() { return "larkspin-test-" + std::to_string(::getpid()); }

    template <typename Address> int listenAt(int family, const Address& address, std::size_t size) {
        const int socket = ::socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0);
        EXPECT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address),
                         static_cast<socklen_t>(size)),
                  0);
        EXPECT_EQ(::listen(socket, 5), 0);
        sockets.push_back(socket);
        return socket;
    }

    Results probe(const std::string& mode) const {
        const std::string command = LARKSPIN_PROBE " " + mode + " " +
                                    (disk.path() / "secret").native() + " " + bus() + " " +
                                    std::to_string(port) + " " + abstractName();
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

    std::vector<int> sockets;
    int port = 0;
};

TEST_F(ConfinedPlayer, ReachesNothingOfItsOwners) {
    const Results results = probe("confined");
    EXPECT_GE(results.size(), 43u);
    for (const auto& [attempt, result] : results)
        EXPECT_EQ(std::set<std::string>({"refused", "can"}).count(result), 1u) << attempt << result;
    for (const char* need : {"read what it was given", "find its libraries", "all walls stand"})
        EXPECT_EQ(results.at(need), "can") << need;
    EXPECT_EQ(disk.read("secret"), "password");
}

// Or the test above would show nothing.
TEST_F(ConfinedPlayer, WouldReachItWithoutItsWalls) {
    int done = 0;
    for (const auto& [attempt, result] : probe("free"))
        done += result == "done";
    EXPECT_GE(done, 36);
}

TEST_F(ConfinedPlayer, PlaysInsideItsWalls) {
    PlayerControl player(loop, playing(clockedSink), tell);
    player.Open(song("a.wav", 5));
    ASSERT_TRUE(reaches(player, PlayState::playing));
    std::string line;
    std::map<std::string, std::string> status;
    std::ifstream file("/proc/" + std::to_string(childProcesses().back()) + "/status");
    while (std::getline(file, line))
        status[line.substr(0, line.find(':'))] = line.substr(line.find('\t') + 1);
    EXPECT_EQ(status["Seccomp"], "2");
    EXPECT_EQ(status["NoNewPrivs"], "1");
    EXPECT_EQ(told, ""); // that it isn't confined
}

} // namespace
} // namespace larkspin
