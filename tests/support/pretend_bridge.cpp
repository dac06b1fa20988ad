// In place of the bridge, without any windows: what a question asks about decides how it is
// answered, and the contents of the file that it is started with how it begins.
#include "platform/bridge/bridge_wire.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <poll.h>
#include <string>
#include <unistd.h>

using namespace larkspin;
using namespace larkspin::bridge;

namespace {

std::filesystem::path directory;

void write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t put = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (put <= 0)
            ::_exit(1);
        bytes.remove_prefix(static_cast<std::size_t>(put));
    }
}

void answer(const Frame& question, const std::string& body) {
    write(encoded({question.kind, question.number, body}));
}

void waitUntilTold() {
    while (!std::filesystem::exists(directory / "go")) {
        pollfd input{STDIN_FILENO, 0, 0};
        ::poll(&input, 1, 5);
        if (input.revents & POLLHUP)
            ::_exit(1); // nobody will ever tell
    }
    std::filesystem::remove(directory / "go");
}

std::string seen(const std::string& caption, std::uint32_t length) {
    const WatchedText text{
        .state = WatchedText::State::there, .window = 4, .caption = caption, .length = length};
    return encoded({Kind::seen, 0, Writer().add(text).take()});
}

void sayCaption(const Frame& question) {
    const HostHandle window = Reader(question.body).handle();
    const std::string name = Writer().add("the name").take();
    switch (window) {
    case 1:
        return answer(question, name);
    case 2:
        waitUntilTold();
        write(seen("while it hung", 1));
        return answer(question, name);
    case 3: // in the middle of a frame
        write(encoded({question.kind, question.number, name}).substr(0, 7));
        ::_exit(0);
    case 4:
        return write("\xFF\xFF\xFF\x7F far too long");
    case 5:
        return write(encoded({question.kind, question.number + 7, name}));
    case 6:
        return answer(question, "\xFF\xFF\xFF\x7F");
    case 7:
        return answer(question, Writer().add(std::string(65536, 'x')).take());
    case 8:
        answer(question, name);
        return answer(question, name);
    case 9: // never answers
        for (std::uint32_t length = 0;; ++length)
            write(seen("flood", length));
    case 10:
        for (std::uint32_t length = 1; length <= 1000; ++length)
            write(seen("in between", length));
        return answer(question, name);
    case 11: // and reads nothing more
        ::close(STDIN_FILENO);
        answer(question, name);
        return waitUntilTold();
    default:
        return answer(question, Writer().add("").take());
    }
}

void sayFound(const Frame& question) {
    const WindowWalk walk = Reader(question.body).walk();
    const FoundWindow found{7, walk.path.front(), {0, 9}};
    std::map<std::string, FoundWindows> answers{
        {"two", {found, {8, "", {3, 4}}}},
        {"too many", FoundWindows(WindowWalk::most + 1, found)},
        {"too few of what they hold", {found, {8, "", {3}}}},
        {"too long", {{7, std::string(65536, 'x'), {0, 9}}}},
    };
    answer(question, Writer().add(answers[walk.className]).take());
}

void sayRows(const Frame& question) {
    Reader reader(question.body);
    const HostHandle list = reader.handle();
    const RowRecord record = reader.record();
    std::vector<std::string> rows(list == 1 ? 3 : reader.number() + 1);
    rows[0] = std::to_string(record.pointerAt * 100 + record.nameAt);
    rows[2] = std::string(40, 'x');
    answer(question, Writer().add(rows).take());
}

void sayMessage(const Frame& question) {
    Reader reader(question.body);
    std::uint32_t sum = 0;
    for (int each = 0; each < 4; ++each)
        sum += reader.number();
    answer(question, Writer().add(sum).take());
}

void sayRegistry(const Frame& question) {
    Reader reader(question.body);
    const std::string key = reader.text();
    answer(question, key == "none" ? "" : Writer().add(RegistryValue{3, key}).take());
}

void sayWatched(const Frame& question) {
    if (!question.body.empty())
        write(seen("of a watch before", 3));
    answer(question, "");
    if (!question.body.empty())
        write(seen(Reader(question.body).watch().windows.className, 5));
}

void say(const Frame& question) {
    switch (question.kind) {
    case Kind::caption:
        return sayCaption(question);
    case Kind::walk:
        return sayFound(question);
    case Kind::rows:
        return sayRows(question);
    case Kind::send:
    case Kind::post:
        return sayMessage(question);
    case Kind::registry:
        return sayRegistry(question);
    case Kind::watch:
        return sayWatched(question);
    default:
        return answer(question, "");
    }
}

void greet(const std::string& how) {
    if (how == "ends")
        ::_exit(1);
    const std::string fault = how == "no display" ? "wine has no display" : "";
    const std::uint32_t said = how == "another version" ? version + 1 : version;
    if (how == "garbage")
        write("wine: cannot find anything");
    else if (how != "silent" && how != "stubborn")
        write(encoded({Kind::greeting, 0, Writer().add(greetingText).add(said).add(fault).take()}));
    if (how == "deaf")
        waitUntilTold();
}

} // namespace

int main(int, char** arguments) {
    std::signal(SIGPIPE, SIG_DFL);
    directory = std::filesystem::path(arguments[1]).parent_path();
    std::ifstream file(arguments[1]);
    const std::string how{std::istreambuf_iterator<char>(file), {}};
    greet(how);
    FrameReader reader;
    char bytes[65536];
    for (ssize_t got = 0; (got = ::read(STDIN_FILENO, bytes, sizeof bytes)) > 0;) {
        reader.add({bytes, static_cast<std::size_t>(got)});
        while (const auto question = reader.next())
            say(*question);
    }
    while (how == "stubborn")
        ::pause();
}
