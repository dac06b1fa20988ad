// GLib's objects, held and let go.
#pragma once

#include <gio/gio.h>
#include <memory>

namespace larkspin {

struct GlibUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
    void operator()(GError* error) const { g_error_free(error); }
};
template <typename Object> using GlibRef = std::unique_ptr<Object, GlibUnref>;

} // namespace larkspin
