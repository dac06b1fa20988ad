#include "support/irc_server.h"

#include "support/certificate.h"
#include "support/own_network.h"
#include "support/patience.h"

#include <arpa/inet.h>
#include <csignal>
#include <poll.h>
#include <sys/socket.h>
#include <utility>

namespace larkspin {

namespace {

// Where scripts/setup unpacks servers that can't be installed beside each other.
const std::filesystem::path unpacked = "/usr/local/lib/larkspin-tests";

std::string readFile(const std::filesystem::path& file) { // "" when missing
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string replaced(std::string text, std::string_view word, std::string_view value) {
    for (std::size_t at = 0; (at = text.find(word, at)) != text.npos; at += value.size())
        text.replace(at, word.size(), value);
    return text;
}

// One for all servers: the library remembers what the system trusts.
const Certificate& trustedCertificate() {
    static const Certificate made("DNS:" + std::string(LocalIrcServer::name) + ",IP:127.0.0.1");
    static const bool trusted = trustAlone(made.file());
    EXPECT_TRUE(trusted);
    return made;
}

std::unique_ptr<Child> startServer(IrcFamily family, const std::vector<std::string>& variables,
                                   const std::string& disk) {
    const std::string file = disk + "/configuration";
    if (family == IrcFamily::ngircd)
        return Child::start("/usr/sbin/ngircd", variables, {"-n", "-f", file});
    if (family == IrcFamily::inspircd)
        return Child::start("/usr/sbin/inspircd", variables,
                            {"--nofork", "--nolog", "--config", file});
    if (family == IrcFamily::irc2)
        return Child::start(unpacked / "usr/sbin/ircd", variables,
                            {"-t", "-b", "-s", "-q", "-p", "standalone", "-T", disk + "/tune"});
    std::vector<std::string> arguments{"-foreground", "-configfile", file};
    for (const char* const kept : {"log", "pid", "kline", "dline", "xline", "resv"}) {
        arguments.push_back('-' + std::string(kept) + "file");
        arguments.push_back(disk + '/' + kept);
    }
    return Child::start(unpacked / "usr/sbin/ircd-hybrid", variables, arguments);
}

// Nobody has a name.
void answerAll(const std::stop_token& end) {
    const Descriptor names = nameServer();
    pollfd asked{names.number(), POLLIN, 0};
    while (!end.stop_requested())
        if (::poll(&asked, 1, 50) > 0)
            answerNobody(names);
}

} // namespace

const char* nameOf(IrcFamily family) {
    static const char* const names[] = {"ngircd", "inspircd", "hybrid", "irc2"};
    return names[static_cast<int>(family)];
}

LocalIrcServer::LocalIrcServer(IrcFamily family, Limits limits, std::vector<std::string> variables)
    : family_(family), variables_(std::move(variables)) {
    const std::string called = nameOf(family);
    const std::string more = limits == Limits::none ? "-patient.conf" : "-usual.conf";
    disk_.write("configuration",
                serverFile(called + ".conf", disk_) + serverFile(called + more, disk_));
    if (family == IrcFamily::hybrid || family == IrcFamily::irc2)
        names_ = std::jthread(answerAll);
    if (family == IrcFamily::hybrid) {
        static const bool hasModules = showBeside(unpacked / "usr/lib", "/usr/lib");
        EXPECT_TRUE(hasModules);
    }
    if (family == IrcFamily::irc2) { // can't be told where its configuration is
        disk_.write("etc/ircd/ircd.conf", disk_.read("configuration"));
        disk_.write("etc/resolv.conf", "nameserver 127.0.0.1\n");
        EXPECT_TRUE(showBeside((disk_.path() / "etc:") += unpacked / "etc", "/etc"));
    }
    EXPECT_TRUE(start());
}

LocalIrcServer::~LocalIrcServer() {
    kill();
    if (family_ == IrcFamily::irc2)
        hideAgain("/etc");
}

bool LocalIrcServer::start() {
    kill();
    process_ = startServer(family_, variables_, disk_.path());
    return process_ && listensAt(family_ == IrcFamily::irc2 ? plainPort : encryptedPort, *process_);
}

void LocalIrcServer::kill() {
    if (process_)
        ::kill(process_->id(), SIGKILL);
    process_.reset();
}

std::string serverFile(const std::string& name, const TempDirectory& disk) {
    std::string text = readFile(std::filesystem::path(LARKSPIN_SERVERS) / name);
    for (const auto& [word, value] :
         {std::pair<std::string_view, std::string>{"@CERTIFICATE@", trustedCertificate().file()},
          {"@KEY@", trustedCertificate().key()},
          {"@SERVERS@", LARKSPIN_SERVERS},
          {"@DISK@", disk.path()},
          {"@USER@", std::to_string(::getuid())},
          {"@GROUP@", std::to_string(::getgid())}})
        text = replaced(std::move(text), word, value);
    return text;
}

Descriptor connectTo(std::uint16_t port) {
    Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const sockaddr_in address{AF_INET, htons(port), {htonl(INADDR_LOOPBACK)}, {}};
    if (::connect(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address))
        return {};
    return socket;
}

bool listensAt(std::uint16_t port, Child& process) {
    const auto until = std::chrono::steady_clock::now() + patience;
    while (!connectTo(port).isOpen())
        if (std::chrono::steady_clock::now() > until || process.ends(std::chrono::milliseconds(1)))
            return false;
    return true;
}

} // namespace larkspin
