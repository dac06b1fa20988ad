#include "platform/irc/link_failure.h"

#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace larkspin {

namespace {

struct Words {
    int code;
    const char* text;
};

constexpr Words ofNames[] = {
    {G_RESOLVER_ERROR_NOT_FOUND, "the server's name isn't known, or there is no network"},
    {G_RESOLVER_ERROR_TEMPORARY_FAILURE, "the server's name can't be looked up now"},
};

constexpr Words ofSockets[] = {
    {G_IO_ERROR_CONNECTION_REFUSED, "the server takes no connections at that port"},
    {G_IO_ERROR_HOST_UNREACHABLE, "there is no way to the server"},
    {G_IO_ERROR_NETWORK_UNREACHABLE, "there is no way to the server"},
    {G_IO_ERROR_TIMED_OUT, serverDoesNotAnswer},
    {G_IO_ERROR_CONNECTION_CLOSED, serverHasClosed}, // also a broken pipe
};

constexpr Words ofEncryption[] = {
    {G_TLS_ERROR_UNAVAILABLE, "there is no encryption on this machine: glib-networking is missing"},
    {G_TLS_ERROR_EOF, serverHasClosed},
    {G_TLS_ERROR_CERTIFICATE_REQUIRED, "the server wants a certificate of yours"},
};

// If there are several, the first one of these is told.
constexpr Words ofCertificates[] = {
    {G_TLS_CERTIFICATE_BAD_IDENTITY, "it is that of another server"},
    {G_TLS_CERTIFICATE_REVOKED, "it has been withdrawn"},
    {G_TLS_CERTIFICATE_EXPIRED, "it has expired"},
    {G_TLS_CERTIFICATE_NOT_ACTIVATED, "its time hasn't come yet"},
    {G_TLS_CERTIFICATE_UNKNOWN_CA, "nobody who is trusted vouches for it"},
    {G_TLS_CERTIFICATE_INSECURE, "it is too weak"},
};

std::string whyNotValid(int doubts) {
    for (const Words& words : ofCertificates)
        if ((doubts & words.code) != 0)
            return words.text;
    return "it can't be made out";
}

template <std::size_t count>
std::string found(const Words (&all)[count], const GError& error, const char* otherwise = "") {
    for (const Words& words : all)
        if (words.code == error.code)
            return words.text;
    return std::string(otherwise) + error.message;
}

} // namespace

// The kernel counts the end of the stream as a byte.
bool hasClosedSilently(int socket) {
    constexpr int established = 1;
    tcp_info facts{};
    socklen_t size = sizeof facts;
    return ::getsockopt(socket, IPPROTO_TCP, TCP_INFO, &facts, &size) == 0 &&
           facts.tcpi_state != established && facts.tcpi_bytes_received <= 1;
}

std::string whyFailed(const GError& error, GTlsCertificateFlags doubts) {
    if (error.domain == G_TLS_ERROR && error.code == G_TLS_ERROR_BAD_CERTIFICATE)
        return "the server's certificate isn't valid: " + whyNotValid(doubts);
    if (error.domain == G_TLS_ERROR)
        return found(ofEncryption, error, "no encryption can be agreed on with the server: ");
    if (error.domain == G_RESOLVER_ERROR)
        return found(ofNames, error);
    if (error.domain == G_IO_ERROR)
        return found(ofSockets, error);
    return error.message;
}

} // namespace larkspin
