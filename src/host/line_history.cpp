#include "host/line_history.h"

#include "host/typed_secrets.h"
#include "shell/files.h"
#include "text/parts.h"
#include "text/utf8.h"

#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t largestHistory = 4'000'000; // bytes; far more than the lines can take

// Whether the owner can have typed the line. Any other one was put into the file by somebody else.
bool canBeTyped(std::string_view line) {
    std::size_t count = 0;
    for (; !line.empty(); ++count) {
        const Character character = firstCharacter(line);
        if (!character.valid || character.code == 0 || character.code == '\n' ||
            character.code == '\r')
            return false;
        line.remove_prefix(character.length);
    }
    return count > 0 && count <= LineHistory::mostCharacters;
}

bool isMasked(std::string_view line) {
    return line.find(secretMask) != line.npos;
}

} // namespace

LineHistory::LineHistory(Files& files, std::string path) : files_(files), path_(std::move(path)) {
    const FileRead file = files_.read(path_, largestHistory);
    isReadable_ = !file.failed();
    bool hasSecrets = false; // of former versions, which knew fewer of them
    for (std::string_view rest = file.contents; !rest.empty();) {
        const std::string_view line = takePart(rest, '\n');
        if (typedWithoutSecrets(line) == line)
            add(line);
        else
            hasSecrets = true;
    }
    // The history that was just read needn't be written.
    isChanged_ = hasSecrets;
}

void LineHistory::add(std::string_view line) {
    std::string shown = typedWithoutSecrets(line);
    if (!canBeTyped(line) || (!lines_.empty() && lines_.back() == shown))
        return;
    lines_.push_back(std::move(shown));
    if (lines_.size() > mostLines)
        lines_.pop_front();
    isChanged_ = true;
}

void LineHistory::save() {
    if (!isChanged_ || !isReadable_)
        return;
    std::string contents;
    for (const std::string& line : lines_)
        if (!isMasked(line))
            contents += line + '\n';
    files_.replace(path_, contents);
    isChanged_ = false;
}

} // namespace larkspin
