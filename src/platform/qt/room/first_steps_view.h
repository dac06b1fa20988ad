// The first steps as they stand in the room's window while there are no songs: three lines to click
// on, and a button. A click says the line at home, and puts it into the line to type in elsewhere,
// where others would read it. Brought up to date once per turn, and only while there is something
// to see.
#pragma once

#include "app/first_steps.h"
#include "shell/event_loop.h"

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

class QLabel;
class QPushButton;

namespace larkspin {

class FirstStepsView : public QWidget {
public:
    // Both must outlive it. `run` does what a line says, and `click` what a click on one means.
    using TakeLine = std::function<void(const std::string& line)>;
    FirstStepsView(EventLoop& loop, FirstSteps& steps, const TakeLine& run, const TakeLine& click);

private:
    struct Row { // a line, and what it does
        QPushButton& line;
        QLabel& does;
    };
    void layOut();
    Row addRow();
    void refresh();
    static void show(const Row& row, const FirstSteps::Step& step);
    void changeEvent(QEvent* event) override;
    void takeColors();

    FirstSteps& steps_;
    TakeLine click_;
    QLabel& title_; // these belong to the layout
    std::vector<Row> rows_;
    QPushButton& add_;
    QPushButton& hide_;
    QLabel& progress_;
};

} // namespace larkspin
