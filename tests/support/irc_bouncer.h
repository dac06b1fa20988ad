// A bouncer (ZNC) that is jo on a server of this machine (irc_server.h), sits in #den, and keeps
// what is said there for whoever comes to it by its password.
#pragma once

#include "support/irc_person.h"

namespace larkspin {

class IrcBouncer {
public:
    static constexpr std::uint16_t encryptedPort = 6800, plainPort = 6801;
    static constexpr const char* password = "jo/tests:sesame"; // of the bouncer, as a server's

    IrcBouncer() { // connects at once
        disk_.write("configs/znc.conf", serverFile("znc.conf", disk_));
        process_ = Child::start("znc", {"HOME=" + disk_.path().native()},
                                {"--foreground", "--datadir", disk_.path()});
        EXPECT_TRUE(listensAt(plainPort, *process_));
    }
    ~IrcBouncer() { ::kill(process_->id(), SIGKILL); }

private:
    const TempDirectory disk_;
    std::unique_ptr<Child> process_;
};

} // namespace larkspin
