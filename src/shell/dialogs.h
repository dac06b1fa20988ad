// The port to what stops in front of the owner himself rather than in the room: boxes, questions
// and file dialogs. Each call returns when the owner has seen or answered it, and events run
// meanwhile; a front end that can't wait for a look returns at once. A question that nobody answers
// counts as dismissed. Paths are drive paths; a front end shows texts by
// `asSeen` (see `text/stand_ins.h`).
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// After this a question counts as dismissed.
inline constexpr std::chrono::minutes answerLimit{10};
inline constexpr std::string_view boxTitle = "larkspin"; // of a box without a title of its own

struct TextQuestion {
    std::string title;
    std::string prompt;
    std::string preset = {}; // what the answer reads at first
};

struct FileType {
    std::string description; // "wave files (*.wav)"
    std::string patterns;    // joined by semicolons: "*.mp3;*.wav"
};

struct FileQuestion {
    std::string title;
    std::vector<FileType> types = {};
    std::string directory = {}; // to start in; empty leaves it to the front end
    std::string preset = {};    // a file name
};

class Dialogs {
public:
    virtual ~Dialogs() = default;

    // Information icon, one OK button, the program's name as title.
    void box(const std::string& text) { titledBox(std::string(boxTitle), text); }
    virtual void titledBox(const std::string& title, const std::string& text) = 0;

    // The same with a stop icon.
    virtual void stopBox(const std::string& text) = 0;

    // Yes and No buttons, no icon; true for Yes. No answer at all counts as No. The preset is what
    // Return answers, where a box has keys: No for what one that was meant for another line mustn't
    // do.
    enum class Preset { yes, no };
    bool ask(const std::string& question, Preset preset = Preset::yes) {
        return askYesNo(question, preset);
    }

    // A line of text. Nothing when it is dismissed or left empty. What the owner leaves of the
    // preset keeps its bytes, however it was shown to him.
    std::optional<std::string> askText(const TextQuestion& question);

    // Files on disk, as full paths; none when the dialog is dismissed. A file to open usually
    // exists, but that isn't certain; one to save may exist already.
    virtual std::optional<std::string> openFile(const FileQuestion& question) = 0;
    virtual std::vector<std::string> openFiles(const FileQuestion& question) = 0;
    virtual std::optional<std::string> saveFile(const FileQuestion& question) = 0;

    // A directory on disk. The owner may name any file in it instead, and neither is certain to
    // exist.
    virtual std::optional<std::string> openDirectory(const FileQuestion& question) = 0;

    // Ends the dialogs of a run that is over: all that are open count as dismissed, even one that
    // has been answered and only waits for another one, opened inside it, to return.
    virtual void dismissAll() = 0;

protected:
    virtual bool askYesNo(const std::string& question, Preset preset) = 0;

    // The line as the owner leaves it.
    virtual std::optional<std::string> askLine(const TextQuestion& question) = 0;
};

} // namespace larkspin
