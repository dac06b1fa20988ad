#include "platform/irc/irc_link.h"

#include "platform/irc/glib_guest.h"
#include "platform/irc/glib_ref.h"
#include "platform/irc/link_failure.h"
#include "platform/irc/link_security.h"

#include <array>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <optional>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t readAtOnce = 65536;

// The library lets go of cancelled calls as soon as it is served. If it ever didn't, the session
// would live on, but nobody would hear of it.
constexpr Nanoseconds cancelWithin = 500ms;

} // namespace

// One connection, from the request for it to its end. Each call of the library that is under way
// keeps the session alive. Events are posted, and reach nobody once the session is cut.
class IrcLink::Session : public std::enable_shared_from_this<Session> {
public:
    Session(WatchingLoop& loop, GlibGuest& guest, Events events)
        : loop_(loop), guest_(guest), events_(std::move(events)) {}

    void connect(const IrcServer& server, const IrcLinkTerms& terms);
    void send(std::string_view bytes);
    std::size_t unsent() const { return ended_ ? 0 : sending_.size() - sent_ + waiting_.size(); }
    void finish(Nanoseconds atMost);
    void cut();

private:
    using Held = std::shared_ptr<Session>;
    using Event = void (Session::*)();

    gpointer hold() {
        ++calls_;
        return new Held(shared_from_this());
    }
    static Held taken(gpointer held) {
        const std::unique_ptr<Held> call(static_cast<Held*>(held));
        --(*call)->calls_;
        return *call;
    }

    void post(Event event);
    void end(const std::string& why);
    bool isClosedAtOnce() const;
    std::string why(const GlibRef<GError>& error) const;
    GSocket* socket() const { return g_socket_connection_get_socket(connection_.get()); }

    bool isDistrusted(const GError* error);
    void connected(GSocketClient* client, GAsyncResult* result);
    void read();
    void hasRead(GInputStream* stream, GAsyncResult* result);
    void write();
    void hasWritten(GOutputStream* stream, GAsyncResult* result);

    void opened();
    void received();
    void ended();

    WatchingLoop& loop_;
    GlibGuest& guest_;
    const Events events_;
    const GlibRef<GCancellable> cancellable_{g_cancellable_new()};
    LinkSecurity security_;
    std::optional<IrcCertificate> distrusted_;
    bool isPinned_ = false;
    GlibRef<GSocketConnection> connection_;
    TimerId patience_ = TimerId::none;

    std::array<char, readAtOnce> input_;
    std::size_t inputSize_ = 0;
    std::string sending_, waiting_; // what the library is sending, and what comes after it
    std::size_t sent_ = 0;          // of `sending_`
    std::string why_;

    int calls_ = 0;
    bool reading_ = false, writing_ = false, broken_ = false;
    bool open_ = false, ended_ = false, cut_ = false, finishing_ = false;
};

void IrcLink::Session::post(Event event) {
    loop_.post([weak = weak_from_this(), event] {
        if (const Held self = weak.lock(); self && !self->cut_)
            (self.get()->*event)();
    });
}

void IrcLink::Session::end(const std::string& why) {
    if (std::exchange(ended_, true))
        return;
    if (why_.empty())
        why_ = why;
    waiting_.clear();
    post(&Session::ended);
}

void IrcLink::Session::ended() {
    cut();
    if (distrusted_ && events_.distrusted)
        events_.distrusted(*distrusted_);
    events_.ended(why_);
}

// Whether the server has hung up in the handshake without a byte.
bool IrcLink::Session::isClosedAtOnce() const {
    GIOStream* base = nullptr;
    if (security_.connection())
        g_object_get(security_.connection(), "base-io-stream", &base, nullptr);
    const GlibRef<GIOStream> below(base);
    return base && G_IS_SOCKET_CONNECTION(base) &&
           hasClosedSilently(
               g_socket_get_fd(g_socket_connection_get_socket(G_SOCKET_CONNECTION(base))));
}

std::string IrcLink::Session::why(const GlibRef<GError>& error) const {
    const auto doubts = security_.connection()
                            ? g_tls_connection_get_peer_certificate_errors(security_.connection())
                            : GTlsCertificateFlags();
    return whyFailed(*error, doubts);
}

void IrcLink::Session::cut() {
    if (std::exchange(cut_, true))
        return;
    loop_.cancel(patience_);
    const GlibGuest::Inside inside(guest_);
    g_cancellable_cancel(cancellable_.get());
    guest_.serveUntil([this] { return calls_ == 0; }, cancelWithin);
    // The connection is closed without TLS's goodbye, which would wait for as long as a server
    // takes nothing.
    if (connection_)
        g_socket_close(socket(), nullptr);
    security_.end();
    connection_.reset();
}

void IrcLink::Session::connect(const IrcServer& server, const IrcLinkTerms& terms) {
    const GlibGuest::Inside inside(guest_);
    const GlibRef<GSocketClient> client(g_socket_client_new());
    const GlibRef<GSocketConnectable> address(
        g_network_address_new(server.host.c_str(), server.port));
    g_socket_client_set_enable_proxy(client.get(), FALSE);
    g_socket_client_set_tls(client.get(), server.encrypted);
    isPinned_ = !server.pinned.empty();
    if (server.encrypted)
        if (const std::string why = security_.prepare(server, terms.trusted); !why.empty())
            return end(why);
    // The library begins the handshake itself, so what it is to trust is set in the event before
    // that. The connection is kept, since it tells later what was wrong with a certificate.
    const auto handshakes = +[](GSocketClient*, GSocketClientEvent event, GSocketConnectable*,
                                GIOStream* stream, Session* self) {
        if (event != G_SOCKET_CLIENT_TLS_HANDSHAKING)
            return;
        self->security_.begin(G_TLS_CONNECTION(stream));
    };
    g_signal_connect(client.get(), "event", G_CALLBACK(handshakes), this);
    const auto done = [](GObject* source, GAsyncResult* result, gpointer held) {
        taken(held)->connected(G_SOCKET_CLIENT(source), result);
    };
    patience_ = loop_.once(terms.openWithin, [this] {
        g_cancellable_cancel(cancellable_.get());
        end(serverDoesNotAnswer);
    });
    g_socket_client_connect_async(client.get(), address.get(), cancellable_.get(), done, hold());
}

bool IrcLink::Session::isDistrusted(const GError* error) {
    distrusted_ = security_.distrusted(error);
    if (distrusted_ && isPinned_)
        why_ = "the server's certificate is another one than the one that you trust";
    return distrusted_.has_value();
}

void IrcLink::Session::connected(GSocketClient* client, GAsyncResult* result) {
    g_signal_handlers_disconnect_by_data(client, this);
    loop_.cancel(patience_);
    GError* error = nullptr;
    connection_.reset(g_socket_client_connect_finish(client, result, &error));
    if (!connection_) {
        const GlibRef<GError> failed(error);
        isDistrusted(failed.get());
        return end(isClosedAtOnce() ? serverHasClosed : why(failed));
    }
    if (isDistrusted(nullptr))
        return end(why_);
    g_socket_set_option(socket(), IPPROTO_TCP, TCP_NODELAY, 1, nullptr); // lines are short
    post(&Session::opened);
}

void IrcLink::Session::opened() {
    open_ = true;
    events_.opened();
    read();
}

void IrcLink::Session::read() {
    if (cut_ || ended_ || std::exchange(reading_, true))
        return;
    const GlibGuest::Inside inside(guest_);
    const auto done = [](GObject* source, GAsyncResult* result, gpointer held) {
        taken(held)->hasRead(G_INPUT_STREAM(source), result);
    };
    g_input_stream_read_async(g_io_stream_get_input_stream(G_IO_STREAM(connection_.get())),
                              input_.data(), input_.size(), G_PRIORITY_DEFAULT, cancellable_.get(),
                              done, hold());
}

void IrcLink::Session::hasRead(GInputStream* stream, GAsyncResult* result) {
    reading_ = false;
    GError* error = nullptr;
    const gssize count = g_input_stream_read_finish(stream, result, &error);
    if (count < 0)
        return end(why(GlibRef<GError>(error)));
    if (count == 0)
        return end(serverHasClosed);
    // Nobody hears this any more. It is read so that the connection can end in order.
    if (finishing_)
        return read();
    inputSize_ = static_cast<std::size_t>(count);
    post(&Session::received);
}

void IrcLink::Session::received() {
    const std::string bytes(input_.data(), inputSize_); // the handler may call `finish`
    events_.received(bytes);
    // The next bytes are read only when these have been handled, so a flood waits at the server.
    read();
}

void IrcLink::Session::send(std::string_view bytes) {
    if (!open_ || ended_ || broken_)
        return;
    waiting_ += bytes;
    const GlibGuest::Inside inside(guest_);
    write();
}

void IrcLink::Session::write() {
    // The library sends one piece at a time. What comes meanwhile makes the next one.
    if (sent_ == sending_.size()) {
        sending_ = std::exchange(waiting_, {});
        sent_ = 0;
    }
    if (broken_ || sending_.empty() || std::exchange(writing_, true))
        return;
    const auto done = [](GObject* source, GAsyncResult* result, gpointer held) {
        taken(held)->hasWritten(G_OUTPUT_STREAM(source), result);
    };
    g_output_stream_write_async(g_io_stream_get_output_stream(G_IO_STREAM(connection_.get())),
                                sending_.data() + sent_, sending_.size() - sent_,
                                G_PRIORITY_DEFAULT, cancellable_.get(), done, hold());
}

// The end isn't told here: what the server has said before it went is still to be read.
void IrcLink::Session::hasWritten(GOutputStream* stream, GAsyncResult* result) {
    writing_ = false;
    GError* error = nullptr;
    const gssize count = g_output_stream_write_finish(stream, result, &error);
    if (!error) {
        sent_ += static_cast<std::size_t>(count);
        return write();
    }
    why_ = why(GlibRef<GError>(error));
    sending_.clear();
    waiting_.clear();
    sent_ = 0;
    broken_ = true;
}

// A socket that is closed with something unread cuts the server off from what it hasn't read yet.
// So only the sending half is closed first, and the rest is read until the server closes too.
void IrcLink::Session::finish(Nanoseconds atMost) {
    const Nanoseconds latest = loop_.now() + atMost;
    finishing_ = true;
    if (open_ && !ended_ && guest_.serveUntil([this] { return ended_ || unsent() == 0; }, atMost) &&
        !ended_) {
        g_socket_shutdown(socket(), FALSE, TRUE, nullptr);
        read();
        guest_.serveUntil([this] { return ended_; }, latest - loop_.now());
    }
    cut();
}

IrcLink::IrcLink(WatchingLoop& loop, IrcLinkTerms terms) : loop_(loop), terms_(std::move(terms)) {}

IrcLink::~IrcLink() {
    close();
}

void IrcLink::open(const IrcServer& server, Events events) {
    close();
    if (!guest_)
        guest_ = std::make_unique<GlibGuest>(loop_);
    session_ = std::make_shared<Session>(loop_, *guest_, std::move(events));
    session_->connect(server, terms_);
}

void IrcLink::send(std::string_view bytes) {
    if (session_)
        session_->send(bytes);
}

std::size_t IrcLink::unsent() const {
    return session_ ? session_->unsent() : 0;
}

void IrcLink::close() {
    if (const auto session = std::exchange(session_, nullptr))
        session->cut();
}

void IrcLink::finish(Nanoseconds atMost) {
    if (const auto session = std::exchange(session_, nullptr))
        session->finish(atMost);
}

} // namespace larkspin
