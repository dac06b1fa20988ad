#include "platform/terminal/terminal_dialogs.h"

#include "platform/terminal/terminal_input.h"
#include "platform/terminal/terminal_screen.h"
#include "text/blanks.h"
#include "text/parts.h"
#include "text/stand_ins.h"

namespace larkspin {

namespace {

// The text with its title, unless the title is only the program's name.
std::string titled(const std::string& title, const std::string& text) {
    return title.empty() || title == boxTitle ? text : title + ": " + text;
}

bool isDrivePath(std::string_view path) {
    return path.size() >= 2 && path[1] == ':';
}

} // namespace

void TerminalDialogs::titledBox(const std::string& title, const std::string& text) {
    screen_.show("box", titled(title, text));
}

void TerminalDialogs::stopBox(const std::string& text) {
    screen_.show("stop", text);
}

bool TerminalDialogs::askYesNo(const std::string& question, Preset) {
    screen_.show("ask", question);
    const auto line = answer();
    return line && (line->starts_with('y') || line->starts_with('Y'));
}

std::optional<std::string> TerminalDialogs::askLine(const TextQuestion& question) {
    screen_.show("input", titled(question.title, question.prompt) + " (" + question.preset + ')');
    return answer();
}

std::optional<std::string> TerminalDialogs::openFile(const FileQuestion& question) {
    return askPath("open", question);
}

std::optional<std::string> TerminalDialogs::saveFile(const FileQuestion& question) {
    return askPath("save", question);
}

std::optional<std::string> TerminalDialogs::openDirectory(const FileQuestion& question) {
    return askPath("open", question);
}

std::vector<std::string> TerminalDialogs::openFiles(const FileQuestion& question) {
    screen_.show("open", question.title);
    const std::string line = answer().value_or("");
    std::vector<std::string> paths;
    // Several paths are typed with "|" between them.
    for (std::string_view rest = line; !rest.empty();) {
        const std::string_view path = takePart(rest, '|');
        if (!withoutBlanks(path).empty())
            paths.push_back(pathOf(path, question));
    }
    return paths;
}

void TerminalDialogs::dismissAll() {
    input_.dropQuestions();
}

std::optional<std::string> TerminalDialogs::answer() {
    auto line = input_.answer(answerLimit);
    return line && !line->empty() ? line : std::nullopt;
}

std::optional<std::string> TerminalDialogs::askPath(std::string_view head,
                                                    const FileQuestion& question) {
    screen_.show(head, question.title);
    const auto line = answer();
    if (!line || withoutBlanks(*line).empty())
        return std::nullopt;
    return pathOf(*line, question);
}

std::string TerminalDialogs::pathOf(std::string_view typed, const FileQuestion& question) const {
    std::string path = readPath_(withoutBlanks(typed));
    if (isDrivePath(path) || question.directory.empty())
        return path;
    // A bare name is one in the directory that the question is about.
    return question.directory + (question.directory.ends_with('\\') ? "" : "\\") +
           asStoredPath(path);
}

} // namespace larkspin
