#include "irc/client/irc_known_servers.h"

#include "text/number.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <ctime>

namespace larkspin {

namespace {

constexpr std::size_t largestCertificate = 100'000;

std::time_t timeNow(const EventLoop& loop) {
    std::tm local = loop.localTime();
    return std::mktime(&local);
}

} // namespace

IrcServer IrcKnownServers::safe(const IrcServer& server) const {
    const std::string kept = file_.account().facts.get(IrcFact::tls, server.host);
    std::string_view rest = kept;
    const auto port = plainNumber(takeWord(rest), 1, 65535);
    const auto until = number(takeWord(rest));
    if (server.encrypted || !port || !until || *until <= static_cast<double>(timeNow(loop_)))
        return server;
    tell_(visibleName(server.host) + " is reached by TLS alone, as it has asked for");
    return {.host = server.host, .port = static_cast<std::uint16_t>(*port)};
}

void IrcKnownServers::secured(const IrcServer& server, std::chrono::seconds span) {
    IrcAccount account = file_.account();
    const auto until = timeNow(loop_) + span.count();
    account.facts.set(IrcFact::tls, server.host,
                      span.count() > 0 ? std::to_string(server.port) + ' ' + std::to_string(until)
                                       : "");
    file_.keep(std::move(account));
}

void IrcKnownServers::loadCertificate(const IrcServer& server) {
    const std::string path = file_.account().facts.get(IrcFact::certificate, server.host);
    certificate_.clear();
    if (!path.empty())
        certificate_ = readCertificate(path);
}

std::string IrcKnownServers::readCertificate(const std::string& path) const {
    const FileRead file = disk_.read(path, largestCertificate);
    const auto holds = [&file](const char* text) {
        return file.contents.find(text) != std::string::npos;
    };
    const bool isWhole = holds("-----BEGIN CERTIFICATE-----") && holds("PRIVATE KEY-----");
    if (isWhole)
        return file.contents;
    const std::string why = !file.reason.empty()    ? file.reason
                            : file.contents.empty() ? "there is no such file"
                                                    : "it holds no certificate with its key";
    tell_("your certificate can't be used: " + why);
    return {};
}

IrcServer IrcKnownServers::completed(IrcServer server) const {
    if (!server.encrypted)
        return server;
    server.ownCertificate = certificate_;
    server.pinned = file_.account().facts.get(
        IrcFact::fingerprint, IrcServerFacts::placeOf(IrcFact::fingerprint, server));
    return server;
}

} // namespace larkspin
