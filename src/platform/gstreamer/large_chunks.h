// Decoders give small buffers. Here they are joined to larger ones on their way into a sink, so
// that all threads sleep longer.
#pragma once

#include "platform/gstreamer/gst_ref.h"

namespace larkspin {

class LargeChunks {
public:
    explicit LargeChunks(GstPad* sinkPad); // belongs to the pad, and goes with it

    LargeChunks(const LargeChunks&) = delete;
    LargeChunks& operator=(const LargeChunks&) = delete;

private:
    ~LargeChunks() = default;
    static GstPadProbeReturn pass(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    GstPadProbeReturn take(GstPad* pad, GstPadProbeInfo* info);
    void keep(GstItemRef<GstBuffer> buffer);
    bool continues(GstBuffer* buffer) const;
    void letGo(GstPad* pad);

    GstItemRef<GstBuffer> kept_;
    bool lettingGo_ = false;
};

} // namespace larkspin
