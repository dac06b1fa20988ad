// What a line that has been begun can become: a list above it, one choice a row with what it does.
// The keyboard stays in the line; the mouse points at a row and takes it.
#pragma once

#include "library/completion.h"

#include <QListWidget>
#include <functional>

namespace larkspin {

class ChoiceList : public QListWidget {
public:
    ChoiceList();

    // Shows these and marks the first one.
    void offer(const Completion& completion);

    // Marks the choice so many rows further down, and goes around at the ends.
    void move(int rows);

    // There must be one.
    const Completion::Choice& marked() const;
    int page() const; // rows

    // The task is called when the mouse takes the marked choice, or when another one is marked.
    void onTake(std::function<void()> take) { take_ = std::move(take); }
    void onMark(std::function<void()> mark) { mark_ = std::move(mark); }

    QSize sizeHint() const override;

private:
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    int choiceAt(const QMouseEvent& event) const;

    std::vector<Completion::Choice> choices_;
    std::function<void()> take_ = [] {}, mark_ = [] {};
};

} // namespace larkspin
