// A bouncer (ZNC) that is jo on a server of this machine (irc_server.h), sits in #den, and keeps
// what is said there for whoever comes to it by its password. By its clock all of that was long
// ago.
#pragma once

#include "support/irc_person.h"
#include "support/own_time.h"

#include <ctime>

namespace larkspin {

class IrcBouncer {
public:
    static constexpr std::uint16_t encryptedPort = 6800, plainPort = 6801;
    static constexpr const char* password = "jo/tests:sesame"; // of the bouncer, as a server's

    IrcBouncer() { // connects at once
        disk_.write("configs/znc.conf", serverFile("znc.conf", disk_));
        auto variables = ownTime(1, ago);
        variables.push_back("HOME=" + disk_.path().native());
        process_ = Child::start("znc", variables, {"--foreground", "--datadir", disk_.path()});
        EXPECT_TRUE(listensAt(plainPort, *process_));
    }
    ~IrcBouncer() { ::kill(process_->id(), SIGKILL); }

    static std::string year() { // by its clock
        const std::time_t then = std::time(nullptr) - ago;
        return std::to_string(1900 + std::localtime(&then)->tm_year);
    }

private:
    static constexpr long ago = 400L * 24 * 60 * 60;

    const TempDirectory disk_;
    std::unique_ptr<Child> process_;
};

} // namespace larkspin
