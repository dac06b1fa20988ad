#include "platform/terminal/terminal_dialogs.h"

#include "platform/terminal/terminal_input.h"
#include "platform/terminal/terminal_screen.h"

namespace larkspin {

namespace {

constexpr std::chrono::minutes answerLimit{10};

} // namespace

void TerminalDialogs::box(const std::string& text) {
    screen_.showBox(text);
}

void TerminalDialogs::stopBox(const std::string& text) {
    screen_.showStopBox(text);
}

bool TerminalDialogs::ask(const std::string& question) {
    screen_.showQuestion(question);
    const auto answer = input_.answer(answerLimit);
    return answer && (answer->starts_with('y') || answer->starts_with('Y'));
}

} // namespace larkspin
