// Runs a GStreamer launch line to its end. A process of its own does it, since GStreamer leaves
// threads behind, and a test that forks must have none.
#include <cstdlib>
#include <gst/gst.h>

int main(int, char** arguments) {
    gst_init(nullptr, nullptr);
    GstElement* const pipeline = gst_parse_launch(arguments[1], nullptr);
    if (!pipeline)
        std::_Exit(EXIT_FAILURE);
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    GstMessage* const last = gst_bus_timed_pop_filtered(
        gst_element_get_bus(pipeline), 30 * GST_SECOND,
        static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    const bool made = last && GST_MESSAGE_TYPE(last) == GST_MESSAGE_EOS;
    gst_element_set_state(pipeline, GST_STATE_NULL);
    std::_Exit(made ? EXIT_SUCCESS : EXIT_FAILURE); // without the libraries' own cleaning up
}
