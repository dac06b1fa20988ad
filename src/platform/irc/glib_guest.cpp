#include "platform/irc/glib_guest.h"

#include <glib.h>
#include <vector>

namespace larkspin {

namespace {

constexpr int lastRounds = 1000; // what is left over needs only a few

gboolean setTrue(gpointer flag) {
    *static_cast<bool*>(flag) = true;
    return G_SOURCE_REMOVE;
}

} // namespace

// The context stays acquired, so that threads of the library wake it up when they are done.
GlibGuest::GlibGuest(WatchingLoop& loop) : loop_(loop), context_(g_main_context_new()) {
    g_main_context_acquire(context_);
    settle();
}

// Operations that were cancelled come to their end here. They would keep the context otherwise, and
// the context them.
GlibGuest::~GlibGuest() {
    {
        const Inside inside(*this);
        for (int round = 0; round < lastRounds && g_main_context_iteration(context_, FALSE);
             ++round)
            continue;
    }
    watch({});
    loop_.cancel(timer_);
    g_main_context_release(context_);
    g_main_context_unref(context_);
}

GlibGuest::Inside::Inside(GlibGuest& guest) : guest_(guest) {
    g_main_context_push_thread_default(guest.context_);
}

GlibGuest::Inside::~Inside() {
    g_main_context_pop_thread_default(guest_.context_);
    guest_.settle();
}

// Serves one round. The loop gets to its other events before the next one.
void GlibGuest::serve() {
    const Inside inside(*this);
    g_main_context_iteration(context_, FALSE);
}

bool GlibGuest::serveUntil(const std::function<bool()>& condition, Nanoseconds atMost) {
    const Inside inside(*this);
    const auto span = std::chrono::ceil<std::chrono::milliseconds>(atMost).count();
    bool over = span <= 0;
    // The alarm ends the last iteration, which would otherwise wait for the next event.
    GSource* const alarm = g_timeout_source_new(over ? 0 : static_cast<guint>(span));
    g_source_set_callback(alarm, setTrue, &over, nullptr);
    g_source_attach(alarm, context_);
    while (!condition() && !over)
        g_main_context_iteration(context_, TRUE);
    g_source_destroy(alarm);
    g_source_unref(alarm);
    return condition();
}

// Has the loop wait for what the library waits for.
void GlibGuest::settle() {
    gint priority = 0, span = -1, count = 0;
    g_main_context_prepare(context_, &priority);
    std::vector<GPollFD> polled(16);
    for (;;) {
        // If the room is too small, this only tells how much there must be.
        count = g_main_context_query(context_, priority, &span, polled.data(),
                                     static_cast<gint>(polled.size()));
        if (count <= static_cast<gint>(polled.size()))
            break;
        polled.resize(static_cast<std::size_t>(count));
    }
    polled.resize(static_cast<std::size_t>(count));
    std::map<int, int> wanted;
    for (const GPollFD& descriptor : polled)
        wanted[descriptor.fd] |= descriptor.events;
    watch(wanted);
    loop_.cancel(timer_);
    timer_ =
        span < 0 ? TimerId::none : loop_.once(std::chrono::milliseconds(span), [this] { serve(); });
}

void GlibGuest::watch(const std::map<int, int>& wanted) {
    const auto drop = [&](std::set<int>& watched, int event, auto unwatch) {
        std::erase_if(watched, [&](int descriptor) {
            const auto found = wanted.find(descriptor);
            const bool drops = found == wanted.end() || (found->second & event) == 0;
            if (drops)
                (loop_.*unwatch)(descriptor);
            return drops;
        });
    };
    drop(watched_, G_IO_IN, &WatchingLoop::unwatch);
    drop(watchedWritable_, G_IO_OUT, &WatchingLoop::unwatchWritable);
    for (const auto& [descriptor, events] : wanted) {
        if ((events & G_IO_IN) != 0 && watched_.insert(descriptor).second)
            loop_.watch(descriptor, [this] { serve(); });
        if ((events & G_IO_OUT) != 0 && watchedWritable_.insert(descriptor).second)
            loop_.watchWritable(descriptor, [this] { serve(); });
    }
}

} // namespace larkspin
