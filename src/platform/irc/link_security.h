// TLS of one connection: what it is to trust and to show, and which certificate it didn't take.
#pragma once

#include "irc/connection/irc_connection.h"
#include "platform/irc/glib_ref.h"

#include <optional>
#include <string>

namespace larkspin {

class LinkSecurity {
public:
    // `trusted` is a file of certificates, blank for those that the system trusts. Returns why the
    // connection can't be made; blank if it can.
    std::string prepare(const IrcServer& server, const std::string& trusted);

    // In the event before the handshake.
    void begin(GTlsConnection* connection);

    // After the handshake; without an error it went well. The server's certificate, if that isn't
    // taken. Where one is pinned, no other one is, whoever vouches for it.
    std::optional<IrcCertificate> distrusted(const GError* error) const;

    // Null before the handshake.
    GTlsConnection* connection() const { return connection_.get(); }
    void end() { connection_.reset(); }

private:
    GlibRef<GTlsDatabase> trusted_; // null for what the system trusts
    GlibRef<GTlsCertificate> own_;  // null for none
    std::string pinned_;            // a fingerprint; blank for any
    GlibRef<GTlsConnection> connection_;
};

} // namespace larkspin
