#include "platform/terminal/line_editor.h"

#include "platform/terminal/typed_keys.h"

#include "text/utf8.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto sequenceTimeout = 50ms;      // for the rest of what a key sends
constexpr std::size_t longestSecret = 1000; // bytes
constexpr std::string_view endKey = "\x04", interruptKey = "\x03", asItIsKey = "\x16",
                           completionKey = "\t", lineEndKey = "\x05", beep = "\a";
constexpr std::string_view backspaces = "\x08\x7F", eraseKey = "\x15", returns = "\n\r";
constexpr auto betweenLooks = 1s; // for the terminal, while it is another's

// The loop holds the signal back, to hear of it. The system lets nobody stop who has no shell that
// could wake him up.
void stopProcess() {
    sigset_t stop;
    sigemptyset(&stop);
    sigaddset(&stop, SIGTSTP);
    std::raise(SIGTSTP);
    ::pthread_sigmask(SIG_UNBLOCK, &stop, nullptr); // here it stops
    ::pthread_sigmask(SIG_BLOCK, &stop, nullptr);
}

} // namespace

std::unique_ptr<LineEditor> LineEditor::open(PollLoop& loop, TerminalInput& input,
                                             QueuedOutput& output, const std::string& prompt) {
    auto library =
        EditLibrary::open(prompt, [&output](std::string_view bytes) { output.putPassing(bytes); });
    if (!library)
        return nullptr;
    return std::unique_ptr<LineEditor>(
        new LineEditor(loop, input, output, std::move(library), prompt));
}

LineEditor::LineEditor(PollLoop& loop, TerminalInput& input, QueuedOutput& output,
                       std::unique_ptr<EditLibrary> library, std::string prompt)
    : loop_(loop), input_(input), output_(output), library_(std::move(library)),
      prompt_(std::move(prompt)) {
    library_->begin();
    hear();
}

LineEditor::~LineEditor() {
    close();
}

// A job that reads from the terminal while it is in the background is stopped by the system, so the
// input isn't watched then. No signal tells a running job that its shell has brought it to the
// front; hence the looks at intervals.
void LineEditor::hear() {
    loop_.cancel(std::exchange(look_, TimerId::none));
    const bool hasTerminal = library_->hasTerminal();
    if (hasTerminal && !isHeld_)
        loop_.watch(STDIN_FILENO, [this] { bytesCame(); });
    else
        loop_.unwatch(STDIN_FILENO);
    if (!hasTerminal)
        look_ = loop_.every(betweenLooks, [this] {
            if (library_->hasTerminal())
                drawAnew();
        });
}

// A terminal whose other end has gone reads as ended or fails.
void LineEditor::bytesCame() {
    char bytes[4096];
    const ssize_t count = ::read(STDIN_FILENO, bytes, sizeof bytes);
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count <= 0) {
        close();
        input_.end();
        return;
    }
    bytes_.append(bytes, static_cast<std::size_t>(count));
    takeTyped();
}

void LineEditor::takeTyped() {
    takeKeys();
    // What is left is the beginning of a longer key. If its rest doesn't come soon, it was a key by
    // itself, such as Escape.
    loop_.cancel(std::exchange(incomplete_, TimerId::none));
    if (isOpen_ && !isHeld_ && !bytes_.empty())
        incomplete_ = loop_.once(sequenceTimeout, [this] {
            incomplete_ = TimerId::none;
            take(std::exchange(bytes_, {}));
        });
}

// Characters that come together, as in a line that is pasted, are put in together, and the line is
// drawn once.
void LineEditor::takeKeys() {
    std::string_view left = bytes_;
    while (isOpen_ && !isHeld_ && !left.empty()) {
        std::size_t length = takesNextAsItIs_ ? 0 : plainLength(left);
        if (length > 0) {
            type(left.substr(0, length));
        } else {
            // Meant as a character, an escape doesn't begin a longer key.
            length = takesNextAsItIs_ && left[0] == '\x1b' ? 1 : keyLength(left);
            // The rest of the key is still to come.
            if (length == 0)
                break;
            take(left.substr(0, length));
        }
        left.remove_prefix(length);
        noteWhereBegun();
    }
    bytes_ = std::string(left);
}

void LineEditor::noteWhereBegun() {
    if (!isOpen_ || library_->line().empty())
        begun_.reset();
    else if (!begun_)
        begun_ = place_();
}

void LineEditor::type(std::string_view characters) {
    const bool hasPlace = !secret_ || typedSecret_.size() + characters.size() <= longestSecret;
    if (secret_ && hasPlace)
        typedSecret_ += characters;
    else if (!hasPlace || !library_->insert(characters))
        output_.putPassing(beep);
}

void LineEditor::take(std::string_view key) {
    if (secret_) {
        takeSecretKey(key);
    } else if (std::exchange(takesNextAsItIs_, false)) {
        library_->insert(key);
    } else if (key == asItIsKey) {
        takesNextAsItIs_ = true;
    } else if (key == endKey && library_->line().empty()) {
        close();
        input_.end();
    } else if (key == "\n" || key == "\r") {
        endLine();
    } else if (key == completionKey) {
        complete();
    } else {
        library_->strike(key);
    }
}

void LineEditor::endLine() {
    const std::string line = library_->line();
    const Conversations::Begun begun = begun_ ? *begun_ : place_();
    if (!line.empty()) {
        const std::string shown = masked_(line, begun);
        if (shown != line) {
            library_->strike(lineEndKey);
            library_->replaceBeforeCursor(line.size(), shown);
        }
        library_->remember(shown);
        onLine_(shown);
    }
    // The library ends its line only now, since until then it still has the text.
    library_->strike("\n");
    library_->begin();
    if (holdsAfter_(line)) {
        isHeld_ = true;
        loop_.unwatch(STDIN_FILENO);
    }
    input_.bring(line, begun);
}

void LineEditor::takeSecretKey(std::string_view key) {
    const bool isGivenUp = key == interruptKey;
    if (isGivenUp || returns.find(key) != returns.npos || key == endKey) {
        const Secret secret = secret_;
        std::string line = isGivenUp ? std::string() : std::move(typedSecret_);
        dropSecret();
        // Posted, so that the editor is done with the key before anybody acts on the secret.
        loop_.post([secret, line = std::move(line)] { secret(line); });
    } else if (backspaces.find(key) != backspaces.npos) {
        typedSecret_.resize(withoutLast(typedSecret_, 1).size());
    } else if (key == eraseKey) {
        typedSecret_.clear();
    }
}

void LineEditor::takeSecret(const std::string& prompt, Secret secret) {
    secret_ = std::move(secret);
    typedSecret_.clear();
    if (isOpen_)
        library_->takeSignalKeys(true);
    showPrompt(prompt);
}

void LineEditor::dropSecret() {
    secret_ = nullptr;
    typedSecret_.clear();
    if (isOpen_)
        library_->takeSignalKeys(false);
    showPrompt(prompt_);
}

void LineEditor::setPrompt(const std::string& prompt) {
    if (std::exchange(prompt_, prompt) != prompt && !secret_)
        showPrompt(prompt);
}

void LineEditor::showPrompt(const std::string& prompt) {
    if (isOpen_)
        library_->setPrompt(prompt);
}

void LineEditor::goOn() {
    if (!std::exchange(isHeld_, false) || !isOpen_)
        return;
    hear();
    takeTyped();
}

void LineEditor::complete() {
    const Completion completion = complete_(library_->beforeCursor());
    if (completion.text.empty() ||
        !library_->replaceBeforeCursor(completion.replaced, completion.text))
        output_.putPassing(beep);
}

void LineEditor::hide() {
    if (isOpen_)
        library_->erase();
}

void LineEditor::show() {
    if (isOpen_)
        library_->draw();
}

void LineEditor::drawAnew() {
    if (!isOpen_)
        return;
    // A stopped program may find the terminal in another mode and of another size: `begin` sets the
    // one and reads the other.
    const std::string typed = library_->line();
    library_->erase();
    beginWith(typed);
}

void LineEditor::beginWith(const std::string& typed) {
    library_->begin();
    library_->insert(typed);
    hear();
}

void LineEditor::stop() {
    if (!isOpen_)
        return stopProcess();
    const std::string typed = library_->line();
    library_->erase();
    library_->end();
    stopProcess();
    beginWith(typed);
}

void LineEditor::close() {
    if (!isOpen_)
        return;
    library_->erase();
    isOpen_ = false;
    loop_.unwatch(STDIN_FILENO);
    loop_.cancel(std::exchange(incomplete_, TimerId::none));
    loop_.cancel(std::exchange(look_, TimerId::none));
    library_->end();
}

} // namespace larkspin
