// What has been said in a room, the latest at the bottom, where it stays in view unless the owner
// has scrolled up. Only so much is kept, so that nobody can fill the memory by talking.
#pragma once

#include <QTextCharFormat>
#include <QTextEdit>
#include <deque>
#include <string>

namespace larkspin {

class Transcript : public QTextEdit {
public:
    Transcript();

    static constexpr int mostLines = 2000;
    static constexpr std::size_t mostCharacters = 4000; // of a line; the rest of it isn't shown

    // Add a line that somebody says, and something that the program tells beside it, dimmed, with a
    // stamp in front. Both show with the next `showNew`.
    void say(const std::string& speaker, const std::string& line, const std::string& stamp = {});
    void tell(const std::string& text, const std::string& stamp = {});

    // What follows takes the place of all that stands there.
    void begin();

    // Shows what has been added since the last time. False when there is nothing.
    bool showNew();

    void scrollPage(int pages); // upwards if negative

private:
    struct Entry {
        std::string speaker; // empty when the program tells something
        std::string text, stamp;
    };

    void resizeEvent(QResizeEvent* event) override;
    bool isAtEnd() const;
    void keep(Entry entry);
    void append(const Entry& entry);
    int dropOldest(); // gives the height of what it drops

    std::deque<Entry> waiting_;
    bool beginsAnew_ = false;
    QTextCharFormat plain_, name_, dim_;
};

} // namespace larkspin
