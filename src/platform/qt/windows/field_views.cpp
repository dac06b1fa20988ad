// The views of controls that hold a value: text fields, sliders and combos.
#include "platform/qt/keys.h"
#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/windows/control_view.h"
#include "platform/qt/windows/rows_model.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyleOptionSlider>

namespace larkspin {

namespace {

constexpr int severalLines = 600; // twips: a field of this height has more than one

// One line, or several that wrap.
template <typename Widget> class TextView : public ControlView {
protected:
    TextView(const ViewParts& parts, const Control& control)
        : ControlView(parts, control, std::make_unique<Widget>()) {}

    Widget& field() const { return static_cast<Widget&>(widget()); }
    // The state reads like the field then, and nothing is put into it, which would move the cursor.
    void isTyped(const QString& text) { shown_ = text.toStdString(); }

    virtual void put(const QString& text) = 0;

private:
    void show(const Control& control) override {
        const std::string text = control.text ? control.text() : std::string();
        if (text == shown_)
            return;
        shown_ = text;
        put(toQt(text));
    }

    std::string shown_;
};

class LineView : public TextView<QLineEdit> {
public:
    LineView(const ViewParts& parts, const Control& control) : TextView(parts, control) {
        field().setReadOnly(!control.onEdit);
        field().setContentsMargins(1, 0, 1, 0); // its outline stands beside the window's
        connect(&field(), &QLineEdit::textEdited, this,
                [this](const QString& text) { tell(text); });
    }

private:
    void tell(const QString& text) {
        isTyped(text);
        hand().passes([name = name(), words = text.toStdString()](Window& window) {
            editText(window, name, words);
        });
    }

    void put(const QString& text) override {
        field().setText(text);
        // A long text shows its beginning.
        field().setCursorPosition(0);
    }
};

// Lines that the owner can read but not change.
class LinesView : public TextView<QPlainTextEdit> {
public:
    LinesView(const ViewParts& parts, const Control& control) : TextView(parts, control) {
        field().setReadOnly(true);
        field().setFrameStyle(int{QFrame::Box} | int{QFrame::Sunken});
        field().setLineWidth(2); // it draws the inner one, beside the window's outline
        listenTo(*field().viewport());
    }

private:
    void put(const QString& text) override { field().setPlainText(text); }
};

// Drawn in the grey of other programs, whatever colours the window has.
class SliderWidget : public QSlider {
public:
    SliderWidget() : QSlider(Qt::Horizontal) { setPageStep(10); }

protected:
    void paintEvent(QPaintEvent*) override {
        constexpr int grooveHeight = 4;
        const QColor light(0xD4, 0xD4, 0xD4), middle(0x8C, 0x8C, 0x8C), dark(0x4A, 0x4A, 0x4A);
        QPainter painter(this);
        const int thumb = std::min(height() - 4, 14);
        const int left = 1 + QStyle::sliderPositionFromValue(minimum(), maximum(), sliderPosition(),
                                                             width() - 12);
        painter.fillRect(QRect(2, (height() - grooveHeight) / 2, width() - 4, grooveHeight), dark);
        const QRect handle(left, (height() - thumb) / 2, 10, thumb);
        painter.fillRect(handle, isSliderDown() ? QColor(Qt::white) : light);
        painter.fillRect(handle.adjusted(4, 3, -4, -3), middle);
        if (hasFocus())
            drawOutline(painter, rect(), light);
    }
};

class SliderView : public ControlView {
public:
    SliderView(const ViewParts& parts, const Control& control)
        : ControlView(parts, control, std::make_unique<SliderWidget>()) {
        slider().setRange(control.least, control.most);
        connect(&slider(), &QSlider::valueChanged, this, [this](int value) {
            hand().does(
                [name = name(), value](Window& window) { moveSlider(window, name, value); });
        });
    }

private:
    QSlider& slider() const { return static_cast<QSlider&>(widget()); }

    void show(const Control& control) override {
        const int value = control.value ? control.value() : control.least;
        // While the owner holds the handle it stays where his hand is.
        if (slider().isSliderDown())
            return;
        const QSignalBlocker quiet(slider());
        slider().setValue(value);
    }
};

class ComboView : public ControlView {
public:
    ComboView(const ViewParts& parts, const Control& control)
        : ControlView(parts, control, std::make_unique<QComboBox>()),
          model_(*new RowsModel(*control.rows, widget())) {
        combo().setModel(&model_);
        connect(&combo(), &QComboBox::activated, this, [this](int row) {
            hand().does([name = name(), row](Window& window) { chooseRow(window, name, row); });
        });
    }

private:
    QComboBox& combo() const { return static_cast<QComboBox&>(widget()); }

    void show(const Control&) override {
        const RowList& rows = model_.rows();
        if (model_.refresh() || combo().currentIndex() != rows.currentIndex())
            combo().setCurrentIndex(rows.currentIndex());
    }

    bool strike(const QKeyEvent& event) override {
        if (!isReturn(event.key()))
            return false;
        combo().showPopup();
        return true;
    }

    RowsModel& model_; // the widget's
};

} // namespace

std::unique_ptr<ControlView> makeTextView(const ViewParts& parts, const Control& control) {
    if (control.place.height >= severalLines)
        return std::make_unique<LinesView>(parts, control);
    return std::make_unique<LineView>(parts, control);
}

std::unique_ptr<ControlView> makeSliderView(const ViewParts& parts, const Control& control) {
    return std::make_unique<SliderView>(parts, control);
}

std::unique_ptr<ControlView> makeComboView(const ViewParts& parts, const Control& control) {
    return std::make_unique<ComboView>(parts, control);
}

} // namespace larkspin
