#include "platform/posix/disk_questions.h"

#include "platform/posix/disk_space.h"
#include "platform/posix/disk_wire.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace larkspin {

namespace {

constexpr std::size_t usualAnswer = 4096;
constexpr std::uint64_t mostReserved = 1024; // places for texts before they are there

// Each of these has its counterpart below, where the other side reads in the same order.
void write(WireWriter& wire, const std::vector<std::string>& texts) {
    wire.number(texts.size());
    for (const std::string& text : texts)
        wire.text(text);
}

std::vector<std::string> readTexts(WireReader& wire) {
    std::vector<std::string> texts;
    const std::uint64_t count = wire.number();
    texts.reserve(std::min<std::uint64_t>(count, mostReserved));
    for (std::uint64_t left = count; left > 0 && wire.isWhole(); --left)
        texts.push_back(wire.text());
    return texts;
}

void write(WireWriter& wire, const DirectoryRead& read) {
    wire.number(static_cast<std::uint64_t>(read.outcome));
    wire.text(read.listing.path);
    write(wire, read.listing.files);
    write(wire, read.listing.directories);
    write(wire, read.listing.links);
}

void write(WireWriter& wire, const FileRead& read) {
    wire.number(static_cast<std::uint64_t>(read.outcome));
    wire.text(read.contents);
    wire.text(read.reason);
}

void write(WireWriter& wire, const std::optional<DriveSpace>& space) {
    wire.number(space.has_value());
    wire.number(space ? space->total : 0);
    wire.number(space ? space->free : 0);
}

// The worker's side: takes a question apart and answers it by asking the system, for as long as
// that takes.
class Answering {
public:
    Answering(PosixFiles files, PosixDirectories directories)
        : files_(std::move(files)), directories_(std::move(directories)) {}

    DiskAnswer answer(std::string_view asked) {
        WireReader wire(asked);
        const auto question = static_cast<DiskQuestion>(wire.number());
        const std::string path = wire.text();
        const std::uint64_t number = wire.number();
        const std::string text = wire.text();
        WireWriter answer;
        answer.bytes.reserve(usualAnswer);
        OpenedFile opened;
        switch (question) {
        case DiskQuestion::list:
            write(answer, directories_.list(path));
            break;
        case DiskQuestion::presence:
            answer.number(static_cast<std::uint64_t>(files_.presence(path)));
            break;
        case DiskQuestion::size:
            answer.number(files_.size(path).value_or(0));
            break;
        case DiskQuestion::read:
            write(answer, files_.read(path, number));
            break;
        case DiskQuestion::replace:
            answer.text(files_.replace(path, text).reason);
            break;
        case DiskQuestion::append:
            answer.text(files_.append(path, text).reason);
            break;
        case DiskQuestion::rename:
            answer.text(files_.rename(path, text).reason);
            break;
        case DiskQuestion::moveToWastebasket:
            answer.text(files_.moveToWastebasket(path).reason);
            break;
        case DiskQuestion::drivePath:
            answer.text(directories_.drivePath(path));
            break;
        case DiskQuestion::space:
            write(answer, spaceOf(path));
            break;
        case DiskQuestion::open:
            opened = openToRead(path);
            answer.text(opened.reason);
            break;
        }
        return {std::move(answer.bytes), std::move(opened.file)};
    }

private:
    PosixFiles files_;
    PosixDirectories directories_;
};

} // namespace

std::string put(DiskQuestion question, std::string_view path, std::uint64_t number,
                std::string_view text) {
    WireWriter wire;
    wire.number(static_cast<std::uint64_t>(question));
    wire.text(path);
    wire.number(number);
    wire.text(text);
    return std::move(wire.bytes);
}

DiskWorker::Answer answersFrom(PosixFiles files, PosixDirectories directories) {
    return [answering = std::make_shared<Answering>(std::move(files), std::move(directories))](
               std::string_view question) { return answering->answer(question); };
}

DirectoryRead directoryIn(std::string_view answer) {
    WireReader wire(answer);
    DirectoryRead read(static_cast<DirectoryRead::Outcome>(wire.number()));
    read.listing.path = wire.text();
    read.listing.files = readTexts(wire);
    read.listing.directories = readTexts(wire);
    read.listing.links = readTexts(wire);
    return wire.isWhole() ? read : DirectoryRead();
}

FileRead fileIn(std::string_view answer) {
    WireReader wire(answer);
    FileRead read{static_cast<FileRead::Outcome>(wire.number())};
    read.contents = wire.text();
    read.reason = wire.text();
    return wire.isWhole() ? read : FileRead{FileRead::Outcome::failed, {}, noAnswer};
}

FileChange changeIn(std::string_view answer) {
    WireReader wire(answer);
    FileChange change{wire.text()};
    return wire.isWhole() ? change : FileChange{noAnswer, true};
}

Files::Presence presenceIn(std::string_view answer) {
    WireReader wire(answer);
    const auto presence = static_cast<Files::Presence>(wire.number());
    return wire.isWhole() ? presence : Files::Presence::unanswered;
}

std::uint64_t numberIn(std::string_view answer) {
    return WireReader(answer).number();
}

std::string textIn(std::string_view answer) {
    return WireReader(answer).text();
}

std::optional<DriveSpace> spaceIn(std::string_view answer) {
    WireReader wire(answer);
    const bool isKnown = wire.number() != 0;
    const std::uint64_t total = wire.number(), free = wire.number();
    return isKnown && wire.isWhole() ? std::optional(DriveSpace{total, free}) : std::nullopt;
}

OpenedFile openedFileIn(DiskAnswer answer) {
    WireReader wire(answer.text);
    OpenedFile opened{std::move(answer.file), wire.text()};
    return wire.isWhole() ? std::move(opened) : OpenedFile{{}, noAnswer};
}

} // namespace larkspin
