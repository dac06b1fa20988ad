#include "platform/irc/link_security.h"

namespace larkspin {

namespace {

// SHA-256, in small hexadecimal digits; blank for null.
std::string fingerprintOf(GTlsCertificate* certificate) {
    GByteArray* bytes = nullptr;
    if (certificate)
        g_object_get(certificate, "certificate", &bytes, nullptr);
    if (!bytes)
        return {};
    gchar* const digits = g_compute_checksum_for_data(G_CHECKSUM_SHA256, bytes->data, bytes->len);
    std::string fingerprint(digits);
    g_free(digits);
    g_byte_array_unref(bytes);
    return fingerprint;
}

// Has the handshake take a certificate that nobody vouches for if it has that fingerprint. The
// library may ask in a thread of its own, so the answer has what it needs to itself.
void takePinned(GTlsConnection* connection, const std::string& fingerprint) {
    const auto isPinned = +[](GTlsConnection*, GTlsCertificate* shown, GTlsCertificateFlags,
                              gpointer pinned) -> gboolean {
        return fingerprintOf(shown) == *static_cast<const std::string*>(pinned);
    };
    const auto forget =
        +[](gpointer pinned, GClosure*) { delete static_cast<const std::string*>(pinned); };
    g_signal_connect_data(connection, "accept-certificate", G_CALLBACK(isPinned),
                          new std::string(fingerprint), forget, GConnectFlags());
}

} // namespace

std::string LinkSecurity::prepare(const IrcServer& server, const std::string& trusted) {
    pinned_ = server.pinned;
    const std::string& own = server.ownCertificate;
    GError* error = nullptr;
    if (!trusted.empty())
        trusted_.reset(g_tls_file_database_new(trusted.c_str(), &error));
    const std::string which = error ? "the trusted certificates" : "your certificate";
    if (!error && !own.empty())
        own_.reset(
            g_tls_certificate_new_from_pem(own.data(), static_cast<gssize>(own.size()), &error));
    if (!error)
        return {};
    const GlibRef<GError> failed(error);
    return which + " can't be read: " + failed->message;
}

void LinkSecurity::begin(GTlsConnection* connection) {
    connection_.reset(static_cast<GTlsConnection*>(g_object_ref(connection)));
    if (trusted_)
        g_tls_connection_set_database(connection, trusted_.get());
    if (own_)
        g_tls_connection_set_certificate(connection, own_.get());
    if (!pinned_.empty())
        takePinned(connection, pinned_);
}

std::optional<IrcCertificate> LinkSecurity::distrusted(const GError* error) const {
    const bool isRefused =
        error && g_error_matches(error, G_TLS_ERROR, G_TLS_ERROR_BAD_CERTIFICATE);
    if (!connection_ || (error && !isRefused))
        return std::nullopt;
    const std::string shown =
        fingerprintOf(g_tls_connection_get_peer_certificate(connection_.get()));
    if (!isRefused && (pinned_.empty() || shown == pinned_))
        return std::nullopt;
    return IrcCertificate{shown, !isRefused};
}

} // namespace larkspin
