// Why a connection couldn't be made or is over, in the owner's words.
#pragma once

#include <gio/gio.h>
#include <string>

namespace larkspin {

// `doubts` are what the library has found about the server's certificate.
std::string whyFailed(const GError& error, GTlsCertificateFlags doubts);

inline constexpr const char* serverDoesNotAnswer = "the server doesn't answer";
inline constexpr const char* serverHasClosed = "the server has closed the connection";

// Whether the other end of a TCP connection has closed it without having sent a byte.
bool hasClosedSilently(int socket);

} // namespace larkspin
