// What the player's owner and its thread share. Both hold it, so that a thread which hangs in
// a sound server can be left behind.
#pragma once

#include "platform/gstreamer/gst_player.h"

#include <condition_variable>
#include <gst/play/play.h>
#include <mutex>

namespace larkspin {

struct ObjectUnref {
    void operator()(gpointer object) const { gst_object_unref(object); }
};
template <typename Object> using GstRef = std::unique_ptr<Object, ObjectUnref>;

inline double seconds(GstClockTime time) {
    return GST_CLOCK_TIME_IS_VALID(time) ? static_cast<double>(time) / GST_SECOND : 0;
}

struct PlayerLink {
    std::mutex lock; // for all below
    PlayerWishes wishes;
    bool quit = false;

    SongReport report;
    unsigned seekDone = 0;
    bool moving = false; // a seek or a change of rate is on its way

    // Set once GStreamer is up. The bus wakes the thread.
    GstPlay* play = nullptr;
    GstBus* bus = nullptr;

    std::condition_variable ended;
    bool hasEnded = false;
};

} // namespace larkspin
