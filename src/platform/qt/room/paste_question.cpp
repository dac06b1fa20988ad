#include "platform/qt/room/paste_question.h"

#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"
#include "text/visible.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr int mostRows = 10;  // in sight
constexpr int margin = 6;     // in pixels, as is the next one
constexpr int textIndent = 3; // of the lines in their list

} // namespace

PasteQuestion::PasteQuestion(std::function<void(bool says)> answered)
    : question_(*new QLabel), lines_(*new QListWidget) {
    setFrameStyle(int{StyledPanel} | int{Sunken});
    setAutoFillBackground(true);
    question_.setTextFormat(Qt::PlainText);
    question_.setIndent(textIndent);
    lines_.setFocusPolicy(Qt::NoFocus);
    lines_.setSelectionMode(QListWidget::NoSelection);
    lines_.setUniformItemSizes(true);
    lines_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lines_.setFrameStyle(NoFrame);
    lines_.setMinimumHeight(1); // of a small window the question takes what there is
    lines_.setSizeAdjustPolicy(QListWidget::AdjustToContents);
    lines_.setAccessibleName("lines to say");

    auto* const answers = new QHBoxLayout;
    auto* const keys = new QLabel("Return says them, Escape doesn't");
    keys->setIndent(textIndent);
    QPalette dim = keys->palette();
    dim.setColor(QPalette::WindowText,
                 dimText(dim.color(QPalette::WindowText), dim.color(QPalette::Window)));
    keys->setPalette(dim);
    answers->addWidget(keys, 1);
    for (const auto& [caption, says] : {std::pair("say them", true), {"leave them", false}}) {
        auto* const button = new QPushButton(caption);
        button->setFocusPolicy(Qt::NoFocus);
        connect(button, &QPushButton::clicked, this, [answered, does = says] { answered(does); });
        answers->addWidget(button);
    }
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(margin, margin, margin, margin);
    rows->setSpacing(margin);
    rows->addWidget(&question_);
    rows->addWidget(&lines_);
    rows->addLayout(answers);
}

void PasteQuestion::ask(const PastedLines& pasted) {
    question_.setText(toQt(questionOf(pasted)));
    setAccessibleName(question_.text());
    lines_.clear();
    for (const std::string& line : pasted.lines)
        lines_.addItem(toQt(visibleText(line, " ")));
    const int rows = std::min(lines_.count(), mostRows);
    lines_.setMaximumHeight(rows * lines_.sizeHintForRow(0));
    layout()->activate();
    QAccessibleEvent asked(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&asked);
}

void PasteQuestion::scroll(int rows) {
    auto& bar = *lines_.verticalScrollBar();
    bar.setValue(bar.value() + rows * bar.singleStep());
}

int PasteQuestion::page() const {
    return mostRows - 1;
}

} // namespace larkspin
