// GStreamer's objects, held and let go.
#pragma once

#include <gst/gst.h>
#include <memory>

namespace larkspin {

struct ObjectUnref {
    void operator()(gpointer object) const { gst_object_unref(object); }
};
template <typename Object> using GstRef = std::unique_ptr<Object, ObjectUnref>;

// Buffers, messages and the like, which GStreamer counts apart from its objects.
struct ItemUnref {
    template <typename Item> void operator()(Item* item) const {
        gst_mini_object_unref(GST_MINI_OBJECT_CAST(item));
    }
};
template <typename Item> using GstItemRef = std::unique_ptr<Item, ItemUnref>;

inline double seconds(gint64 time) {
    return time > 0 ? static_cast<double>(time) / GST_SECOND : 0;
}

inline gint64 clockTime(double seconds) {
    return static_cast<gint64>(seconds * GST_SECOND);
}

} // namespace larkspin
