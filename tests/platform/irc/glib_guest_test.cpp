// GLib's context in the event loops: its timers, its descriptors and its threads come through, and
// it keeps nobody awake.
#include "platform/irc/glib_guest.h"

#include "platform/irc/glib_ref.h"
#include "support/both_loops.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

struct GlibGuestTest : testing::TestWithParam<bool> {
    bool comes(const bool& flag) {
        loop.waitFor([&flag] { return flag; }, loop.now() + 5s);
        return flag;
    }
    static gboolean setTrue(gpointer flag) {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_REMOVE;
    }
    static void attach(GSource* source, bool& flag) {
        g_source_set_callback(source, setTrue, &flag, nullptr);
        g_source_attach(source, g_main_context_get_thread_default());
        g_source_unref(source);
    }

    const std::unique_ptr<WatchingLoop> made = makeLoop(GetParam());
    WatchingLoop& loop = *made;
    GlibGuest guest{loop};
};

INSTANTIATE_TEST_SUITE_P(OnPollAndOnQt, GlibGuestTest, testing::Bool());

TEST_P(GlibGuestTest, TimersAndThreadsOfTheLibraryComeThrough) {
    bool timer = false, thread = false;
    const auto begin = loop.now();
    const GlibRef<GTask> task([&] {
        const GlibGuest::Inside inside(guest);
        attach(g_timeout_source_new(30), timer);
        return g_task_new(
            nullptr, nullptr, [](GObject*, GAsyncResult*, gpointer flag) { setTrue(flag); },
            &thread);
    }());
    g_task_run_in_thread(task.get(), [](GTask* self, gpointer, gpointer, GCancellable*) {
        g_usleep(5000);
        g_task_return_boolean(self, TRUE);
    });
    EXPECT_TRUE(comes(thread));
    EXPECT_TRUE(comes(timer));
    EXPECT_GE(loop.now(), begin + 30ms);
}

TEST_P(GlibGuestTest, WithNothingToDoNobodyIsWokenUp) {
    bool done = false;
    {
        const GlibGuest::Inside inside(guest);
        attach(g_idle_source_new(), done);
    }
    EXPECT_TRUE(comes(done));
    EXPECT_LE(wakeUps(loop, 100ms), 2);
}

} // namespace
} // namespace larkspin
