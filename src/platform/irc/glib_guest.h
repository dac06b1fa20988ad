// A main context of GLib's that lives as a guest in an event loop, whichever it is: the loop
// watches its descriptors and keeps its time, so that nothing is done while nothing happens. It is
// a context of its own, which no other user of the library in the process serves.
//
// What the library calls back runs inside the library: it must neither wait nor do away with the
// guest, but post what does.
#pragma once

#include "platform/posix/watching_loop.h"

#include <map>
#include <set>

using GMainContext = struct _GMainContext;

namespace larkspin {

class GlibGuest {
public:
    explicit GlibGuest(WatchingLoop& loop); // which outlives it
    ~GlibGuest();
    GlibGuest(const GlibGuest&) = delete;
    GlibGuest& operator=(const GlibGuest&) = delete;

    // While one of these stands, what is started in the library belongs to this context. Code that
    // closes descriptors of the library's stands inside one as well, so that the loop forgets them.
    class Inside {
    public:
        explicit Inside(GlibGuest& guest);
        ~Inside();
        Inside(const Inside&) = delete;
        Inside& operator=(const Inside&) = delete;

    private:
        GlibGuest& guest_;
    };

    // Serves the library here and now, without the loop, until the condition holds or the time is
    // over. Returns whether the condition holds.
    bool serveUntil(const std::function<bool()>& condition, Nanoseconds atMost);

private:
    void serve();
    void settle();
    void watch(const std::map<int, int>& wanted);

    WatchingLoop& loop_;
    GMainContext* const context_;
    std::set<int> watched_, watchedWritable_;
    TimerId timer_ = TimerId::none;
};

} // namespace larkspin
