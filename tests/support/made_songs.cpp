#include "support/made_songs.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <numbers>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {

namespace {

constexpr int rate = 44100;

const std::map<std::string, std::string> encoders{
    {".mp3", "lamemp3enc"},
    {".wma", "audioconvert ! avenc_wmav2 ! avmux_asf"},
    {".flac", "audioconvert ! flacenc"},
    {".ogg", "audioconvert ! vorbisenc ! oggmux"},
    {".opus", "audioconvert ! audioresample ! opusenc ! oggmux"},
    {".m4a", "audioconvert ! avenc_aac ! aacparse ! mp4mux"},
    {".aac", "audioconvert ! avenc_aac ! aacparse ! audio/mpeg,stream-format=adts"},
    {".wv", "audioconvert ! wavpackenc"},
    {".aiff", "audioconvert ! avmux_aiff"}};

std::string tone(int frequency, double seconds) {
    std::string samples;
    for (int at = 0; at < std::lround(seconds * rate); ++at)
        samples += littleEndian(
            std::lround(0.75 * 32767 * std::sin(2 * std::numbers::pi * frequency * at / rate)), 2);
    return samples;
}

bool writeWav(const std::filesystem::path& path, const std::string& samples) {
    const auto size = static_cast<long>(samples.size());
    std::ofstream file(path, std::ios::binary);
    file << "RIFF" << littleEndian(36 + size, 4) << "WAVEfmt " << littleEndian(16, 4)
         << littleEndian(1, 2) << littleEndian(1, 2) << littleEndian(rate, 4)
         << littleEndian(2 * rate, 4) << littleEndian(2, 2) << littleEndian(16, 2) << "data"
         << littleEndian(size, 4) << samples;
    return file.good();
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

bool encode(const std::filesystem::path& path, double seconds, const std::string& before) {
    const auto encoder = encoders.find(path.extension().native());
    if (encoder == encoders.end())
        return false;
    return makeFile("audiotestsrc freq=441 volume=0.75 samplesperbuffer=441 num-buffers=" +
                    std::to_string(std::lround(seconds * 100)) +
                    " ! audio/x-raw,rate=44100,channels=1 ! " + before + encoder->second +
                    intoFile(path));
}

} // namespace

std::string littleEndian(long number, int size) {
    std::string bytes;
    for (; size > 0; --size, number >>= 8)
        bytes += static_cast<char>(number & 0xFF);
    return bytes;
}

bool makeSong(const std::filesystem::path& path, double seconds) {
    if (path.extension() == ".wav")
        return writeWav(path, tone(441, seconds));
    if (path.extension() == ".mid")
        return makeMidi(path, seconds);
    return encode(path, seconds, "");
}

bool makeTaggedSong(const std::filesystem::path& path, double seconds, const std::string& tags) {
    return encode(path, seconds, "taginject tags=\"" + tags + "\" ! ");
}

std::string packedWav() {
    std::string bytes("RIFF\0\0\0\0WAVEfmt \x14\0\0\0\x11\0\1\0\x44\xAC\0\0\x44\xAC\0\0"
                      "\0\4\4\0\2\0\xF9\7"
                      "data\0\x50\0\0",
                      48);
    for (int block = 0; block < 20; ++block)
        bytes += std::string("\0\0\x40\0", 4) + std::string(1020, '\x80');
    return bytes;
}

bool makeTones(const std::filesystem::path& path, const std::string& encoder) {
    const std::filesystem::path wav = path.native() + ".wav";
    if (!writeWav(wav, tone(441, 2) + tone(882, 2)))
        return false;
    const bool isCommand = encoder.find("$in") != encoder.npos;
    const bool isMade =
        isCommand
            ? std::system(
                  ("in='" + wav.native() + "' out='" + path.native() + "'; " + encoder).c_str()) ==
                  0
            : makeFile("filesrc location=\"" + wav.native() +
                       "\" ! wavparse ! audioconvert ! audioresample ! " + encoder +
                       intoFile(path));
    std::filesystem::remove(wav);
    return isMade;
}

std::string intoFile(const std::filesystem::path& path) {
    std::string quoted;
    for (const char byte : path.native())
        quoted += byte == '"' || byte == '\\' ? std::string{'\\', byte} : std::string{byte};
    return " ! filesink location=\"" + quoted + '"';
}

bool makeFile(const std::string& line) {
    std::string program = LARKSPIN_SONG_MAKER, argument = line;
    char* const arguments[] = {program.data(), argument.data(), nullptr};
    pid_t maker = 0;
    int status = -1;
    return ::posix_spawn(&maker, program.c_str(), nullptr, nullptr, arguments, environ) == 0 &&
           ::waitpid(maker, &status, 0) == maker && status == 0;
}

} // namespace larkspin
