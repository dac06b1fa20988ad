#include "platform/qt/lark_style.h"

#include "platform/qt/looks.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QIcon>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QStyleOption>
#include <QWidget>
#include <algorithm>

namespace larkspin {

namespace {

constexpr int scrollBarWidth = 12;
constexpr int shortestThumb = 18;
constexpr int besideText = 2; // of a field, beside what Qt leaves

void drawBox(QPainter& painter, const QRect& box, const QColor& line, const QColor& ground) {
    painter.fillRect(box, ground);
    drawOutline(painter, box, line);
}

// The sign that a box shows beside its text: a letter in a ring.
QIcon boxSign(const QString& letter, Color color) {
    const QColor seen = legible(paletteOf(color, black).color(QPalette::WindowText),
                                QApplication::palette().color(QPalette::Window));
    constexpr int size = 144; // pixels, of which as many are used as the screen has
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(seen, size / 16.0));
    painter.drawEllipse(picture.rect().adjusted(size / 8, size / 8, -size / 8, -size / 8));
    QFont font;
    font.setPixelSize(size / 2);
    font.setBold(true);
    painter.setFont(font);
    painter.drawText(picture.rect(), Qt::AlignCenter, letter);
    return QIcon(picture);
}

// The thumb of a scroll bar without arrows. Its share of the bar is the share of the list that is
// in view.
QRect thumbOf(const QStyleOptionSlider& bar) {
    const bool isLying = bar.orientation == Qt::Horizontal;
    const int length = isLying ? bar.rect.width() : bar.rect.height();
    const qint64 range = qint64{bar.maximum} - bar.minimum;
    if (range <= 0)
        return bar.rect;
    const auto part = static_cast<int>(length * qint64{bar.pageStep} / (range + bar.pageStep));
    const int thumb = std::min(length, std::max(part, shortestThumb));
    const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                      length - thumb, bar.upsideDown);
    return isLying ? QRect(start, bar.rect.top(), thumb, bar.rect.height())
                   : QRect(bar.rect.left(), start, bar.rect.width(), thumb);
}

void drawScrollBar(QPainter& painter, const QStyleOptionSlider& bar) {
    const QColor front = bar.palette.color(QPalette::Text);
    const QColor ground = bar.palette.color(QPalette::Base);
    painter.fillRect(bar.rect, between(ground, front, 0.12));
    if (bar.maximum <= bar.minimum)
        return;
    const bool isHeld = bar.state & (QStyle::State_Sunken | QStyle::State_MouseOver);
    painter.fillRect(thumbOf(bar).adjusted(2, 2, -2, -2), between(front, ground, isHeld ? 0 : 0.4));
}

// Its point is so many pixels below the middle of the place, or above if negative.
void drawArrow(QPainter& painter, const QRect& place, double point, const QColor& color) {
    const QPointF center = QRectF(place).center();
    const double width = std::abs(point) + 1, base = point * -2 / 3;
    QPainterPath path(center + QPointF(-width, base));
    path.lineTo(center + QPointF(width, base));
    path.lineTo(center + QPointF(0, point));
    path.closeSubpath();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, color);
    painter.restore();
}

void drawField(QPainter& painter, const QStyleOption& field) {
    const bool isLit = field.state & (QStyle::State_HasFocus | QStyle::State_MouseOver);
    drawBox(painter, field.rect,
            isLit ? field.palette.color(QPalette::ButtonText) : dimmed(field.palette),
            field.palette.color(QPalette::Base));
}

void drawCombo(QPainter& painter, const QStyleOptionComboBox& combo, const QRect& arrow) {
    drawField(painter, combo);
    drawArrow(painter, arrow, 3, combo.palette.color(QPalette::ButtonText));
}

// One that has come to its end on that side is dim.
void drawSpinBox(QPainter& painter, const QStyleOptionSpinBox& spin, const QRect& up,
                 const QRect& down) {
    drawField(painter, spin);
    const auto color = [&spin](QAbstractSpinBox::StepEnabledFlag step) {
        return spin.stepEnabled & step ? spin.palette.color(QPalette::ButtonText)
                                       : dimmed(spin.palette);
    };
    drawArrow(painter, up, -2, color(QAbstractSpinBox::StepUpEnabled));
    drawArrow(painter, down, 2, color(QAbstractSpinBox::StepDownEnabled));
}

void drawCheckBox(QPainter& painter, const QStyleOption& check) {
    const QColor front = check.palette.color(QPalette::WindowText);
    const bool isLit = check.state & (QStyle::State_HasFocus | QStyle::State_MouseOver);
    const QRect box = check.rect.adjusted(1, 1, -1, -1);
    drawBox(painter, box, isLit ? front : dimmed(check.palette),
            check.palette.color(QPalette::Base));
    if (!(check.state & QStyle::State_On))
        return;
    const QRectF mark = QRectF(box).adjusted(3, 3, -3, -3);
    QPainterPath path(QPointF(mark.left(), mark.center().y()));
    path.lineTo(QPointF(mark.left() + mark.width() * 0.4, mark.bottom()));
    path.lineTo(mark.topRight());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(path, QPen(front, 1.8));
    painter.restore();
}

// Within another field, which has an outline itself.
bool isPartOfField(const QWidget* line) {
    const QWidget* const around = line ? line->parentWidget() : nullptr;
    return qobject_cast<const QComboBox*>(around) || qobject_cast<const QAbstractSpinBox*>(around);
}

void drawButtonPanel(QPainter& painter, const QStyleOption& button) {
    const QColor front = button.palette.color(QPalette::ButtonText);
    const QColor ground = button.palette.color(QPalette::Button);
    const bool isLit = button.state & (QStyle::State_HasFocus | QStyle::State_MouseOver);
    const bool isDown = button.state & (QStyle::State_Sunken | QStyle::State_On);
    drawBox(painter, button.rect, isLit ? front : dimmed(button.palette),
            isDown ? between(ground, front, 0.3) : ground);
}

// A field that holds a value always has an outline. A list, in which one only chooses, has one when
// it has the focus.
void drawFrame(QPainter& painter, const QStyleOptionFrame& frame, bool isWindow) {
    const QRect box = frame.lineWidth > 1 ? frame.rect.adjusted(1, 0, -1, -1) : frame.rect;
    if (frame.state & QStyle::State_HasFocus)
        drawOutline(painter, box, frame.palette.color(QPalette::Text));
    else if (isWindow || frame.state & QStyle::State_Sunken)
        drawOutline(painter, box, dimmed(frame.palette));
}

} // namespace

int LarkStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const {
    if (metric == PM_ScrollBarExtent)
        return scrollBarWidth;
    if (metric == PM_MenuPanelWidth || metric == PM_DefaultFrameWidth)
        return 1;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

QIcon LarkStyle::standardIcon(StandardPixmap sign, const QStyleOption* option,
                              const QWidget* widget) const {
    if (sign == SP_MessageBoxInformation)
        return boxSign("i", aqua);
    if (sign == SP_MessageBoxCritical)
        return boxSign("!", red);
    return QProxyStyle::standardIcon(sign, option, widget);
}

int LarkStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    // A click beside a slider's handle moves it there at once.
    if (hint == SH_Slider_AbsoluteSetButtons)
        return Qt::LeftButton;
    switch (hint) {
    case SH_ScrollBar_Transient:
    case SH_Widget_Animation_Duration:
    case SH_EtchDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ComboBox_Popup: // a list below it, not a menu over it
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

QRect LarkStyle::subElementRect(SubElement part, const QStyleOption* option,
                                const QWidget* widget) const {
    const QRect rect = QProxyStyle::subElementRect(part, option, widget);
    const bool isOwnField = part == SE_LineEditContents && !isPartOfField(widget);
    return isOwnField ? rect.adjusted(besideText, 0, -besideText, 0) : rect;
}

QRect LarkStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                SubControl part, const QWidget* widget) const {
    const auto* const bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || !bar) {
        const QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
        const auto* const combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        const bool isTypedIn = combo && combo->editable && part == SC_ComboBoxEditField;
        return isTypedIn ? rect.adjusted(1, 0, 0, 0) : rect; // its text stands like a field's
    }
    const QRect thumb = thumbOf(*bar);
    const QRect whole = bar->rect;
    switch (part) {
    case SC_ScrollBarSlider:
        return thumb;
    case SC_ScrollBarGroove:
        return whole;
    case SC_ScrollBarSubPage:
        return bar->orientation == Qt::Horizontal
                   ? whole.adjusted(0, 0, thumb.left() - whole.right(), 0)
                   : whole.adjusted(0, 0, 0, thumb.top() - whole.bottom());
    case SC_ScrollBarAddPage:
        return bar->orientation == Qt::Horizontal ? whole.adjusted(thumb.right(), 0, 0, 0)
                                                  : whole.adjusted(0, thumb.bottom(), 0, 0);
    default: // no arrows
        return {};
    }
}

void LarkStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    const auto* const bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    const auto* const combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    const auto* const spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
    if (control == CC_ScrollBar && bar)
        drawScrollBar(*painter, *bar);
    else if (control == CC_ComboBox && combo)
        drawCombo(*painter, *combo, subControlRect(control, option, SC_ComboBoxArrow, widget));
    else if (control == CC_SpinBox && spin)
        drawSpinBox(*painter, *spin, subControlRect(control, option, SC_SpinBoxUp, widget),
                    subControlRect(control, option, SC_SpinBoxDown, widget));
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void LarkStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    const auto* const entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_ShapedFrame && frame)
        drawFrame(*painter, *frame, widget && widget->isWindow());
    else if (entry && entry->menuItemType == QStyleOptionMenuItem::Separator)
        painter->fillRect(entry->rect.left() + 4, entry->rect.center().y(), entry->rect.width() - 8,
                          1, dimmed(entry->palette));
    else
        QProxyStyle::drawControl(element, option, painter, widget);
}

void LarkStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
    switch (element) {
    case PE_PanelButtonCommand:
    case PE_PanelButtonTool:
        drawButtonPanel(*painter, *option);
        return;
    case PE_IndicatorCheckBox:
        drawCheckBox(*painter, *option);
        return;
    case PE_PanelLineEdit:
        if (isPartOfField(widget)) {
            painter->fillRect(option->rect, option->palette.color(QPalette::Base));
            return;
        }
        drawBox(*painter, option->rect,
                option->state & State_HasFocus ? option->palette.color(QPalette::Text)
                                               : dimmed(option->palette),
                option->palette.color(QPalette::Base));
        return;
    case PE_FrameLineEdit:
        return; // drawn with the panel
    case PE_PanelMenu:
    case PE_FrameMenu:
        drawBox(*painter, option->rect, dimmed(option->palette),
                element == PE_PanelMenu ? option->palette.color(QPalette::Window)
                                        : QColor(Qt::transparent));
        return;
    case PE_FrameFocusRect:
        drawBox(*painter, option->rect, dimmed(option->palette), Qt::transparent);
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

} // namespace larkspin
