#include "platform/qt/room/first_steps_view.h"

#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace larkspin {

namespace {

constexpr int besideLine = 4; // in pixels

// As wide as its text, which begins where those of the others do.
class LineButton : public QPushButton {
public:
    QSize sizeHint() const override {
        return fontMetrics().size(Qt::TextShowMnemonic, text()) + QSize(2 * besideLine, 6);
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    void paintEvent(QPaintEvent*) override {
        QStylePainter painter(this);
        QStyleOptionButton button;
        initStyleOption(&button);
        painter.drawControl(QStyle::CE_PushButtonBevel, button);
        if (hasFocus())
            painter.drawPrimitive(QStyle::PE_FrameFocusRect, button);
        painter.drawItemText(rect().adjusted(besideLine, 0, 0, 0),
                             Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, palette(),
                             isEnabled(), text(), QPalette::ButtonText);
    }
};

QLabel& plainLabel() {
    auto& label = *new QLabel;
    label.setTextFormat(Qt::PlainText);
    return label;
}

void setDim(QWidget& widget, const QPalette& from) {
    QPalette palette = from;
    const QColor dim = dimText(from.color(QPalette::WindowText), from.color(QPalette::Window));
    palette.setColor(QPalette::WindowText, dim);
    palette.setColor(QPalette::ButtonText, dim);
    widget.setPalette(palette);
}

// Qt draws in a later turn whatever is set, also where it is the same.
void setTextOf(QLabel& label, const std::string& text) {
    const QString shown = toQt(text);
    if (label.text() != shown)
        label.setText(shown);
}

} // namespace

FirstStepsView::FirstStepsView(EventLoop& loop, FirstSteps& steps, const TakeLine& run,
                               const TakeLine& click)
    : steps_(steps), click_(click), title_(plainLabel()),
      add_(*new QPushButton("add my music folder")), hide_(*new QPushButton("hide")),
      progress_(plainLabel()) {
    setAccessibleName("first steps");
    layOut();
    connect(&add_, &QPushButton::clicked,
            [&loop, run] { loop.post([run] { run(FirstSteps::addingWord); }); });
    connect(&hide_, &QPushButton::clicked, [this] { steps_.askFor(false); });
    setVisible(false);
    const QPointer<FirstStepsView> view(this); // which may have gone when an event comes
    loop.beforeSleep([view, &loop] {
        if (!view || (!view->steps_.areShown() && view->isHidden()))
            return;
        const bool wasHidden = view->isHidden();
        const QString progress = view->progress_.text();
        view->refresh();
        if (wasHidden != view->isHidden() || progress != view->progress_.text())
            loop.post([] {}); // brings the turn in which Qt draws it
    });
}

void FirstStepsView::layOut() {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(&title_);
    auto* const grid = new QGridLayout;
    grid->setContentsMargins(12, 0, 0, 0);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(0);
    grid->setColumnStretch(1, 1);
    for (int row = 0; row < 4; ++row) { // the first one is for all types of songs
        rows_.push_back(addRow());
        grid->addWidget(&rows_.back().line, row, 0, Qt::AlignLeft);
        grid->addWidget(&rows_.back().does, row, 1);
    }
    column->addLayout(grid);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(&add_);
    buttons->addWidget(&hide_);
    buttons->addWidget(&progress_, 1);
    column->addLayout(buttons);
    takeColors();
}

FirstStepsView::Row FirstStepsView::addRow() {
    auto& line = *new LineButton;
    line.setFlat(true);
    line.setCursor(Qt::PointingHandCursor);
    connect(&line, &QPushButton::clicked, [this, row = rows_.size()] {
        click_(row == 0 ? steps_.allTypes().line : steps_.steps()[row - 1].line);
    });
    return {line, plainLabel()};
}

void FirstStepsView::refresh() {
    const bool isShown = steps_.areShown();
    if (isShown) {
        const auto steps = steps_.steps();
        setTextOf(title_, steps_.title());
        show(rows_.front(), steps_.allTypes());
        for (std::size_t step = 0; step < steps.size(); ++step)
            show(rows_[step + 1], steps[step]);
        setTextOf(progress_, steps_.progress());
        add_.setEnabled(steps_.progress().empty());
        hide_.setVisible(steps_.areAskedFor());
    }
    setVisible(isShown);
}

void FirstStepsView::show(const Row& row, const FirstSteps::Step& step) {
    const QString line = toQt(step.line).replace('&', "&&"); // which would mark a key
    if (row.line.text() != line)
        row.line.setText(line);
    setTextOf(row.does, step.does);
    row.line.setAccessibleName(toQt(step.line + ", " + step.does));
    row.line.setVisible(!step.line.empty());
    row.does.setVisible(!step.line.empty());
}

void FirstStepsView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange)
        takeColors();
    QWidget::changeEvent(event);
}

void FirstStepsView::takeColors() {
    for (QWidget* const dim : {static_cast<QWidget*>(&title_), static_cast<QWidget*>(&progress_)})
        setDim(*dim, palette());
    for (const Row& row : rows_)
        setDim(row.does, palette());
}

} // namespace larkspin
