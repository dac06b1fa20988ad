// What has been said in a room, the latest at the bottom, where it stays in view unless the owner
// has scrolled up. It holds a part of what is kept, and asks for more when its top is reached.
#pragma once

#include "host/reading.h"
#include "host/shown_line.h"

#include <QTextCharFormat>
#include <QTextEdit>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class QTextCursor;

namespace larkspin {

class Transcript : public QTextEdit {
public:
    Transcript();

    // While the end is in view no more lines are held than the first; else than the second.
    static constexpr int mostLines = 2000, mostReadBack = 10'000;

    using Line = ShownLine;

    // Adds a line, which shows with the next `showNew`.
    void add(Line line);

    // Where its reader is, in pixels.
    using Spot = Reading::Spot;
    Spot reading() const;

    // What is added from now on takes the place of all that stands there, and is read there.
    void begin(const Spot& spot);

    // Shows what has been added since the last time. False when there is nothing.
    bool showNew();

    // Lines before all others, at once. What is in view stays where it is.
    void addAbove(const std::vector<Line>& lines);
    std::uint64_t firstLine() const; // its number; 0 for none

    // Who gets the address of a link that is clicked, inside a callback of Qt's.
    void onLink(std::function<void(const std::string& address)> opens) {
        opens_ = std::move(opens);
    }

    bool isAtEnd() const;
    void toEnd();
    void scrollPage(int pages); // upwards if negative

private:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    void takeColors();
    void append(QTextCursor& cursor, const Line& line, bool isFirst);
    void insert(QTextCursor& cursor, const Line& line);
    QTextBlockFormat blockOf(const Line& line) const;
    void read(const Spot& spot);
    void keepingPlace(const std::function<void()>& change);
    int topOf(const QTextBlock& block) const;
    int dropOldest(int most); // gives the height of what it drops

    std::deque<Line> waiting_;
    QString pressed_; // the address of the link on which the mouse is down
    std::function<void(const std::string&)> opens_ = [](const std::string&) {};
    bool beginsAnew_ = false;
    Spot beginsAt_;
    QTextCharFormat plain_, name_, dim_, call_, mark_;
};

} // namespace larkspin
