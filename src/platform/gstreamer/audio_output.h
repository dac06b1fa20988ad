// Where the sound goes: a sound device, found once and used for all songs, or silence in real
// time where there is none. It is there for as long as its process.
#pragma once

#include "platform/gstreamer/gst_ref.h"

#include <atomic>
#include <string>

namespace larkspin {

class AudioOutput {
public:
    explicit AudioOutput(std::string description);
    AudioOutput(const AudioOutput&) = delete;
    AudioOutput& operator=(const AudioOutput&) = delete;

    // Gives the pipeline an output, unless it has one that hasn't broken. The song's title is what
    // a mixer shows: only larkspin's own, whatever stands in the file.
    void attach(GstElement* pipeline, const std::string& title);

    // Of all songs, by ourselves: the volume that a sound server keeps for us is the owner's.
    void setLoudness(double amplitude, bool mute);

    // The output broke. The next `attach` looks for a device anew, or takes silence at once. A
    // device that needs a new socket can't be found any more by then.
    void lose(bool takeSilence);

    bool isSilent() const { return silent_; }
    bool holds(GstObject* element) const;

    // Whether all of the song's sound has come, so that none can follow unless there is a seek.
    bool isAtEnd() const { return atEnd_; }

    // Whether any sound has come this far since it was asked for the last time.
    bool hasSounded() { return sounded_.exchange(false); }

private:
    GstElement* openOutput();
    GstElement* silence();
    GstElement* watched(GstElement* sink);
    static GstPadProbeReturn note(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    void tellTitle(GstPad* pad);

    std::string description_; // of a sink to use instead of a device
    GstRef<GstElement> device_, connection_;
    bool attached_ = false;
    bool takeSilence_ = false;
    bool silent_ = false;
    GstRef<GstElement> bin_, volume_; // those in use
    double amplitude_ = 1;
    bool mute_ = false;
    std::atomic<bool> sounded_ = false, atEnd_ = false;
    std::string title_; // changes only while no song is at work
    bool isTitleTold_ = false, tellsTitle_ = false;
};

} // namespace larkspin
