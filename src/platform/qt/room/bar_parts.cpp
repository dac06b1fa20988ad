#include "platform/qt/room/bar_parts.h"

#include "platform/qt/keys.h"
#include "platform/qt/looks.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionSlider>
#include <QToolTip>
#include <algorithm>

namespace larkspin {

namespace {

constexpr int wordMargin = 6; // in pixels, as the sizes below
constexpr int grooveHeight = 3;
constexpr QSize handleSize(6, 14);
constexpr int leastSlider = 36;

constexpr double faintShare = 0.55; // of the ground
constexpr double grooveShare = 0.7;

QColor groundOf(const QWidget& widget) {
    return widget.palette().color(QPalette::Window);
}

QColor frontOf(const QWidget& widget) {
    return widget.palette().color(QPalette::WindowText);
}

QColor dimOf(const QWidget& widget) {
    return between(frontOf(widget), groundOf(widget), faintShare);
}

// Blanks and lines stay as they are, and nothing in it is markup.
QString asTip(const QString& text) {
    return "<p style='white-space:pre-wrap'>" + text.toHtmlEscaped() + "</p>";
}

} // namespace

BarButton::BarButton(const char* name) {
    setObjectName(name);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

void BarButton::showMark(Glyph glyph, const QString& spoken) {
    glyph_ = glyph;
    setAccessibleName(spoken);
    setToolTip(spoken);
    updateGeometry();
    update();
}

void BarButton::showWord(const QString& word, const QStringList& words, const QString& spoken) {
    words_ = words;
    setText(word);
    setAccessibleName(spoken);
    setToolTip(spoken);
    updateGeometry();
}

QSize BarButton::sizeHint() const {
    const int height = fontMetrics().height() + 2 * (fontMetrics().height() / 4);
    int width = glyph_ ? height + wordMargin : 0;
    for (const QString& word : words_)
        width = std::max(width, fontMetrics().horizontalAdvance(word) + 2 * wordMargin);
    return {width, height};
}

void BarButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor ground = groundOf(*this), front = isEnabled() ? frontOf(*this) : dimOf(*this);
    if (isDown())
        painter.fillRect(rect(), front);
    else if (isEnabled() && underMouse())
        painter.fillRect(rect(), between(ground, front, 0.2));
    drawOutline(painter, rect(), hasFocus() ? front : dimOf(*this));
    painter.setPen(isDown() ? ground : front);
    if (!glyph_) {
        const QRect within = rect().adjusted(2, 0, -2, 0);
        painter.drawText(within, Qt::AlignCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(text(), Qt::ElideRight, within.width()));
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(glyphIn(rect(), *glyph_), painter.pen().color());
}

void BarButton::keyPressEvent(QKeyEvent* event) {
    if (isReturn(event->key()))
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

BarSlider::BarSlider(const char* name, const QString& spoken, int step, int page)
    : QSlider(Qt::Horizontal) {
    setObjectName(name);
    setAccessibleName(spoken);
    setFocusPolicy(Qt::TabFocus);
    setTracking(false);
    setSingleStep(step);
    setPageStep(page);
}

QSize BarSlider::sizeHint() const {
    return minimumSizeHint().expandedTo({usualWidth_, 0});
}

QSize BarSlider::minimumSizeHint() const {
    return {leastSlider, std::max(fontMetrics().height(), handleSize.height() + 2)};
}

void BarSlider::paintEvent(QPaintEvent*) {
    QStyleOptionSlider option;
    initStyleOption(&option);
    QRect handle(QPoint(), handleSize);
    handle.moveCenter(
        style()
            ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this)
            .center());
    const QColor front = frontOf(*this), ground = groundOf(*this);
    QPainter painter(this);
    QRect groove(0, 0, width() - 2, grooveHeight);
    groove.moveCenter(rect().center());
    painter.fillRect(groove, between(front, ground, grooveShare));
    if (isEnabled()) {
        groove.setRight(handle.left());
        painter.fillRect(groove, dimOf(*this));
        painter.fillRect(handle, front);
    }
    if (hasFocus())
        drawOutline(painter, rect(), dimOf(*this));
}

CutLabel::CutLabel(const char* name) {
    setObjectName(name);
    setTextFormat(Qt::PlainText);
}

void CutLabel::showText(const QString& text, bool isDim) {
    isDim_ = isDim;
    setText(text);
    update();
}

void CutLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(isDim_ ? dimOf(*this) : frontOf(*this));
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}

bool CutLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const bool isCut = fontMetrics().horizontalAdvance(text()) > width();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), isCut ? asTip(text()) : "",
                       this);
    return true;
}

} // namespace larkspin
