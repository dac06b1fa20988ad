#include "support/own_network.h"

#include "support/temp_directory.h"

#include <arpa/inet.h>
#include <cstring>
#include <fstream>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/prctl.h>

namespace larkspin {

namespace {

bool alone = false;

// Nobody in particular: some servers don't run as root.
void becomeSomebody(unsigned user, unsigned group) {
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << "1000 " << user << " 1\n";
    std::ofstream("/proc/self/gid_map") << "1000 " << group << " 1\n";
}

// With an address besides: where there is none but 127.0.0.1, no name is looked up.
bool bringUpLoopback() {
    const Descriptor any(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP | IFF_RUNNING;
    if (::ioctl(any.number(), SIOCSIFFLAGS, &request) != 0)
        return false;
    const sockaddr_in example{AF_INET, 0, {::inet_addr("192.0.2.1")}, {}};
    std::strcpy(request.ifr_name, "lo:1");
    std::memcpy(&request.ifr_addr, &example, sizeof example);
    return ::ioctl(any.number(), SIOCSIFADDR, &request) == 0;
}

bool showInstead(const std::filesystem::path& file, const char* place) {
    return ::mount(file.c_str(), place, nullptr, MS_BIND, nullptr) == 0;
}

bool answerForNames() {
    static const TempDirectory disk;
    disk.write("hosts", "127.0.0.1 localhost irc.test\n");
    disk.write("nsswitch.conf", "passwd: files\ngroup: files\nhosts: files dns\n");
    disk.write("resolv.conf", "nameserver 127.0.0.1\n");
    for (const char* const name : {"hosts", "nsswitch.conf", "resolv.conf"})
        if (!showInstead(disk.path() / name, (std::string("/etc/") + name).c_str()))
            return false;
    return true;
}

} // namespace

void enterOwnNetwork() {
    const unsigned user = ::getuid(), group = ::getgid();
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNET | CLONE_NEWNS) != 0)
        return;
    becomeSomebody(user, group);
    ::prctl(PR_SET_DUMPABLE, 1); // or else the sanitizer finds no leaks, and says nothing of it
    alone = bringUpLoopback() &&
            ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 && answerForNames();
}

bool isAlone() {
    return alone;
}

Descriptor nameServer() {
    Descriptor server(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const sockaddr_in address{AF_INET, htons(53), {htonl(INADDR_LOOPBACK)}, {}};
    if (::bind(server.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return {};
    return server;
}

void answerNobody(const Descriptor& nameServer) {
    char question[512];
    sockaddr_in from{};
    socklen_t size = sizeof from;
    auto* const sender = reinterpret_cast<sockaddr*>(&from);
    const ssize_t count =
        ::recvfrom(nameServer.number(), question, sizeof question, 0, sender, &size);
    if (count < 4)
        return;
    question[2] = static_cast<char>(0x81);
    question[3] = static_cast<char>(0x83);
    ::sendto(nameServer.number(), question, static_cast<std::size_t>(count), 0, sender, size);
}

bool trustAlone(const std::filesystem::path& certificate) {
    return alone && showInstead(certificate, "/etc/ssl/certs/ca-certificates.crt");
}

bool showBeside(const std::filesystem::path& directory, const std::string& place) {
    const std::string both = "lowerdir=" + directory.native() + ':' + place;
    return alone && ::mount("overlay", place.c_str(), "overlay", 0, both.c_str()) == 0;
}

void hideAgain(const std::string& place) {
    ::umount2(place.c_str(), MNT_DETACH);
}

} // namespace larkspin
