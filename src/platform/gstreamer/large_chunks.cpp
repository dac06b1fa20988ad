#include "platform/gstreamer/large_chunks.h"

#include <cstdlib>

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
        chunks.kept_.reset();
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
    keep(GstItemRef<GstBuffer>(buffer));
    if (GST_BUFFER_DURATION(kept_.get()) < chunk)
        return GST_PAD_PROBE_HANDLED; // the buffer is ours
    // The full chunk goes on in place of its last buffer.
    GST_PAD_PROBE_INFO_DATA(info) = kept_.release();
    return GST_PAD_PROBE_OK;
}

void LargeChunks::keep(GstItemRef<GstBuffer> buffer) {
    const GstClockTime end = endOf(buffer.get());
    GstBuffer* const joined =
        kept_ ? gst_buffer_append(kept_.release(), buffer.release()) : buffer.release();
    kept_.reset(gst_buffer_make_writable(joined));
    GST_BUFFER_DURATION(kept_.get()) = end - GST_BUFFER_PTS(kept_.get());
}

bool LargeChunks::continues(GstBuffer* buffer) const {
    if (!hasTimes(buffer))
        return false;
    const GstClockTimeDiff apart = GST_CLOCK_DIFF(endOf(kept_.get()), GST_BUFFER_PTS(buffer));
    return std::abs(apart) < gap;
}

// Gives the sink what was kept, ahead of anything that comes after it. The buffer passes this very
// probe again, which lets it through.
void LargeChunks::letGo(GstPad* pad) {
    if (!kept_)
        return;
    lettingGo_ = true;
    gst_pad_chain(pad, kept_.release()); // a failure shows with the next buffer
    lettingGo_ = false;
}

} // namespace larkspin
