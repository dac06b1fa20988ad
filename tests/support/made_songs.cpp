#include "support/made_songs.h"

#include <cmath>
#include <fstream>
#include <gst/gst.h>
#include <string>

namespace larkspin {

namespace {

constexpr int rate = 44100, chunk = 441;

std::string encoder(const std::string& extension) {
    if (extension == ".mp3")
        return "lamemp3enc";
    return extension == ".wma" ? "audioconvert ! avenc_wmav2 ! avmux_asf" : "wavenc";
}

// One note in a track of 96 ticks a quarter, at 120 quarters a minute.
bool makeMidi(const std::filesystem::path& path, double seconds) {
    const auto ticks = static_cast<int>(std::lround(seconds * 192));
    const std::string length{static_cast<char>(0x80 | (ticks >> 7)),
                             static_cast<char>(ticks & 0x7F)};
    std::string track("\x00\x90\x45\x7F", 4);
    track += length + std::string("\x80\x45\x40\x00\xFF\x2F\x00", 7);
    std::ofstream file(path, std::ios::binary);
    file << std::string("MThd\0\0\0\x06\0\0\0\x01\0\x60MTrk\0\0\0", 21)
         << static_cast<char>(track.size()) << track;
    return file.good();
}

} // namespace

bool makeSong(const std::filesystem::path& path, double seconds) {
    if (path.extension() == ".mid")
        return makeMidi(path, seconds);
    const auto chunks = std::to_string(std::lround(seconds * rate / chunk));
    return makeFile("audiotestsrc freq=441 volume=0.75 samplesperbuffer=" + std::to_string(chunk) +
                    " num-buffers=" + chunks + " ! audio/x-raw,rate=" + std::to_string(rate) +
                    ",channels=1 ! " + encoder(path.extension()) + intoFile(path));
}

std::string intoFile(const std::filesystem::path& path) {
    std::string quoted;
    for (const char byte : path.native())
        quoted += byte == '"' || byte == '\\' ? std::string{'\\', byte} : std::string{byte};
    return " ! filesink location=\"" + quoted + '"';
}

bool makeFile(const std::string& line) {
    gst_init(nullptr, nullptr);
    GstElement* const pipeline = gst_parse_launch(line.c_str(), nullptr);
    if (!pipeline)
        return false;
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    GstBus* const bus = gst_element_get_bus(pipeline);
    GstMessage* const last = gst_bus_timed_pop_filtered(
        bus, 10 * GST_SECOND, static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    const bool made = last && GST_MESSAGE_TYPE(last) == GST_MESSAGE_EOS;
    if (last)
        gst_message_unref(last);
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(bus);
    gst_object_unref(pipeline);
    return made;
}

} // namespace larkspin
