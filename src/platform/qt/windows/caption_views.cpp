// Labels, buttons and swatches, which show a caption or a colour. What can be pressed is a button
// to a screen reader, even where it looks like a label, as in the strip at the window's top.
#include "platform/qt/glyphs.h"
#include "platform/qt/keys.h"
#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/windows/control_view.h"
#include "shell/controls.h"

#include <QAbstractButton>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

namespace larkspin {

namespace {

constexpr int captionMargin = 2; // in pixels, left and right of a caption

// A control at the window's top with the strip's height is a part of that strip. Buttons elsewhere
// have a box around them.
struct CaptionLook {
    explicit CaptionLook(const Control& control)
        : isCentred(control.kind == Control::Kind::button),
          isOnStrip(control.place.top == 0 && control.place.height == stripHeight),
          hasBox(isCentred && control.place.top > 0) {}

    bool isCentred, isOnStrip, hasBox;
};

QString captionOf(const Control& control) {
    return control.text ? toQt(control.text()) : QString();
}

// Blanks in front of a label's caption place it, so they are drawn. A button's caption stands in
// the middle without them.
void drawCaption(QPainter& painter, const QWidget& widget, const QString& caption, bool isCentred) {
    const QRect within = widget.rect().adjusted(captionMargin, 0, -captionMargin, 0);
    if (const QPainterPath glyph = isCentred ? glyphOf(caption, widget.rect()) : QPainterPath();
        !glyph.isEmpty()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(glyph, painter.pen().color());
        return;
    }
    const QString text = isCentred ? caption.trimmed() : caption;
    const auto flags =
        Qt::TextSingleLine | Qt::AlignVCenter | (isCentred ? Qt::AlignHCenter : Qt::AlignLeft);
    painter.drawText(within, flags,
                     widget.fontMetrics().elidedText(text, Qt::ElideRight, within.width()));
}

void drawStripLine(QPainter& painter, const QWidget& widget) {
    painter.fillRect(0, widget.height() - 1, widget.width(), 1, dimmed(widget.palette()));
}

class LabelWidget : public QLabel {
public:
    explicit LabelWidget(const Control& control) : look_(control) {
        setTextFormat(Qt::PlainText); // others' words are text
        setAutoFillBackground(true);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::WindowText));
        drawCaption(painter, *this, text(), false);
        if (look_.isOnStrip)
            drawStripLine(painter, *this);
    }

private:
    CaptionLook look_;
};

class ButtonWidget : public QAbstractButton {
public:
    explicit ButtonWidget(const Control& control) : look_(control) {
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover, look_.isCentred);
        setAutoFillBackground(true);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QColor ground = palette().color(QPalette::Button);
        const QColor wanted = palette().color(QPalette::ButtonText);
        const QColor front = look_.isOnStrip ? legible(wanted, ground) : wanted; // the X, too
        const bool isInverted = isDown() && look_.isCentred;
        const QRect box = look_.hasBox ? rect().adjusted(1, 1, -1, -1) : rect();
        if (isInverted)
            painter.fillRect(box, front);
        else if (look_.isCentred && underMouse())
            painter.fillRect(box, between(ground, front, 0.2));
        painter.setPen(isInverted ? ground : front);
        drawCaption(painter, *this, text(), look_.isCentred);
        if (look_.isOnStrip)
            drawStripLine(painter, *this);
        const bool isFocused = hasFocus() && showsFocus_;
        if (look_.hasBox || isFocused)
            drawOutline(painter, box, isFocused ? front : dimmed(palette()));
    }

    // The focus shows only when the keyboard has moved it. A press of the mouse brings the window
    // to the front and moves no focus that matters.
    void focusInEvent(QFocusEvent* event) override {
        const auto reason = event->reason();
        if (reason != Qt::ActiveWindowFocusReason)
            showsFocus_ = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
        QAbstractButton::focusInEvent(event);
    }

private:
    CaptionLook look_;
    bool showsFocus_ = false;
};

class LabelView : public ControlView {
public:
    LabelView(const ViewParts& parts, const Control& control)
        : ControlView(parts, control, std::make_unique<LabelWidget>(control)) {}

private:
    void show(const Control& control) override {
        const QString caption = captionOf(control);
        auto& label = static_cast<LabelWidget&>(widget());
        if (label.text() == caption)
            return;
        label.setText(caption);
        const QString words = label.text().simplified();
        label.setAccessibleName(control.spoken.empty() ? words
                                                       : toQt(control.spoken) + ": " + words);
    }
};

class ButtonView : public ControlView {
public:
    ButtonView(const ViewParts& parts, const Control& control)
        : ControlView(parts, control, std::make_unique<ButtonWidget>(control)) {
        connect(&button(), &QAbstractButton::clicked, this, [this] { pressIt(); });
    }

private:
    ButtonWidget& button() const { return static_cast<ButtonWidget&>(widget()); }

    void pressIt() const {
        hand().does([name = name()](Window& window) { pressWithoutMouse(window, name); });
    }

    void show(const Control& control) override {
        const QString caption = captionOf(control);
        if (button().text() == caption)
            return;
        button().setText(caption);
        button().setAccessibleName(control.spoken.empty() ? button().text().simplified()
                                                          : toQt(control.spoken));
    }

    // The program is told of press and release one by one, so Qt, which draws the press, makes no
    // click of them. One that Qt tells of comes from a keyboard or a screen reader.
    bool released(const QMouseEvent& event) override {
        button().setDown(false);
        ControlView::released(event);
        return true;
    }
    bool strike(const QKeyEvent& event) override {
        if (!isReturn(event.key()))
            return false;
        pressIt();
        return true;
    }
};

class SwatchWidget : public QLabel {
protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), palette().color(QPalette::Window));
        drawOutline(painter, rect(), dimmed(palette()));
    }
};

class SwatchView : public ControlView {
public:
    SwatchView(const ViewParts& parts, const Control& control)
        : ControlView(parts, control, std::make_unique<SwatchWidget>()) {}

private:
    void show(const Control&) override {}
    void dress(const Control& control) override {
        ControlView::dress(control);
        const QString color = toQt(control.background).name();
        widget().setAccessibleName(toQt(control.spoken) + ' ' + color);
    }
};

} // namespace

std::unique_ptr<ControlView> makeCaptionView(const ViewParts& parts, const Control& control) {
    const bool canBePressed =
        control.kind == Control::Kind::button || control.onClick || control.onDoubleClick;
    if (canBePressed)
        return std::make_unique<ButtonView>(parts, control);
    return std::make_unique<LabelView>(parts, control);
}

std::unique_ptr<ControlView> makeSwatchView(const ViewParts& parts, const Control& control) {
    return std::make_unique<SwatchView>(parts, control);
}

} // namespace larkspin
