// Short songs made on the spot: a tone of 441 Hz at three quarters of full amplitude.
#pragma once

#include <filesystem>
#include <string>

namespace larkspin {

// The format is told by the extension: .wav, .mid, or one that there is an encoder for. The length
// is in seconds; packed ones come out up to a tenth longer. False when GStreamer can't make it.
bool makeSong(const std::filesystem::path& path, double seconds);

// The same, of a type that there is an encoder for, with tags as GStreamer spells them.
bool makeTaggedSong(const std::filesystem::path& path, double seconds, const std::string& tags);

// The same tone for two seconds, and one of 882 Hz for two more, through such an encoder: a part of
// a GStreamer launch line, or a command that makes $out from $in, which is a WAV file.
bool makeTones(const std::filesystem::path& path, const std::string& encoder);

std::string littleEndian(long number, int size); // in so many bytes, the lowest first

// A WAV file of IMA ADPCM, in 20 blocks of 1024 bytes, which are 2041 samples each.
std::string packedWav();

// Runs a GStreamer launch line, which writes files, to its end.
std::string intoFile(const std::filesystem::path& path); // the end of such a line
bool makeFile(const std::string& line);

} // namespace larkspin
