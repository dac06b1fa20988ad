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

    // Shows these. The current row is the marked one.
    void offer(const Completion& completion);

    int page() const; // rows

    // The tasks are called when the mouse takes the marked choice, and when it points at another.
    void onTake(std::function<void()> take) { take_ = std::move(take); }
    void onMark(std::function<void(int choice)> mark) { mark_ = std::move(mark); }

    QSize sizeHint() const override;

private:
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    int choiceAt(const QMouseEvent& event) const;

    std::function<void()> take_ = [] {};
    std::function<void(int)> mark_ = [](int) {};
};

} // namespace larkspin
