#include "platform/gstreamer/large_chunks.h"

#include <cstdlib>
#include <utility>

namespace larkspin {

namespace {

constexpr GstClockTime chunk = GST_SECOND / 5; // the process wakes up once for each
constexpr GstClockTimeDiff gap = GST_MSECOND;  // what two buffers may be apart

GstClockTime endOf(GstBuffer* buffer) {
    return GST_BUFFER_PTS(buffer) + GST_BUFFER_DURATION(buffer);
}

bool hasTimes(GstBuffer* buffer) {
    return GST_BUFFER_PTS_IS_VALID(buffer) && GST_BUFFER_DURATION_IS_VALID(buffer);
}

} // namespace

LargeChunks::LargeChunks(GstPad* sinkPad) {
    const int kinds = GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM |
                      GST_PAD_PROBE_TYPE_EVENT_FLUSH;
    gst_pad_add_probe(sinkPad, static_cast<GstPadProbeType>(kinds), pass, this,
                      [](gpointer self) { delete static_cast<LargeChunks*>(self); });
}

LargeChunks::~LargeChunks() {
    drop();
}

GstPadProbeReturn LargeChunks::pass(GstPad* pad, GstPadProbeInfo* info, gpointer self) {
    auto& chunks = *static_cast<LargeChunks*>(self);
    if (chunks.lettingGo_)
        return GST_PAD_PROBE_OK;
    if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER)
        return chunks.take(pad, info);
    GstEvent* const event = GST_PAD_PROBE_INFO_EVENT(info);
    // After a seek the kept samples are of no use. Other events that have a place in the stream
    // must not overtake them.
    if (GST_EVENT_TYPE(event) == GST_EVENT_FLUSH_STOP)
        chunks.drop();
    else if (static_cast<unsigned>(GST_EVENT_TYPE(event)) & unsigned{GST_EVENT_TYPE_SERIALIZED})
        chunks.letGo(pad);
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn LargeChunks::take(GstPad* pad, GstPadProbeInfo* info) {
    GstBuffer* const buffer = GST_PAD_PROBE_INFO_BUFFER(info);
    if (kept_ && !continues(buffer))
        letGo(pad);
    if (!hasTimes(buffer))
        return GST_PAD_PROBE_OK;
    keep(buffer);
    if (GST_BUFFER_DURATION(kept_) < chunk)
        return GST_PAD_PROBE_DROP;
    // The full chunk goes on in place of its last buffer.
    gst_buffer_unref(buffer);
    GST_PAD_PROBE_INFO_DATA(info) = std::exchange(kept_, nullptr);
    return GST_PAD_PROBE_OK;
}

void LargeChunks::keep(GstBuffer* buffer) {
    if (!kept_) {
        kept_ = gst_buffer_make_writable(gst_buffer_ref(buffer));
        return;
    }
    const GstClockTime end = endOf(buffer);
    kept_ = gst_buffer_append(kept_, gst_buffer_ref(buffer));
    GST_BUFFER_DURATION(kept_) = end - GST_BUFFER_PTS(kept_);
}

bool LargeChunks::continues(GstBuffer* buffer) const {
    if (!hasTimes(buffer))
        return false;
    const GstClockTimeDiff apart = GST_CLOCK_DIFF(endOf(kept_), GST_BUFFER_PTS(buffer));
    return std::abs(apart) < gap;
}

// Gives the sink what was kept, ahead of anything that comes after it. The buffer passes this very
// probe again, which lets it through.
void LargeChunks::letGo(GstPad* pad) {
    if (!kept_)
        return;
    lettingGo_ = true;
    gst_pad_chain(pad, std::exchange(kept_, nullptr)); // a failure shows with the next buffer
    lettingGo_ = false;
}

void LargeChunks::drop() {
    if (kept_)
        gst_buffer_unref(std::exchange(kept_, nullptr));
}

} // namespace larkspin
