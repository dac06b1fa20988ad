#include "platform/qt/looks.h"

#include "platform/qt/lark_style.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QPainter>

namespace larkspin {

namespace {

constexpr int twipsPerInch = 1440;
constexpr double outlineShare = 0.55; // of the background, in an outline

// The families that the windows were designed with, and free ones of about the same widths.
QStringList familiesFor(std::string_view family) {
    if (family == "Trebuchet MS")
        return {"Trebuchet MS", "Liberation Sans", "Arimo", "Nimbus Sans"};
    return {"Arial", "Liberation Sans", "Arimo", "Nimbus Sans"};
}

bool isDark(const QColor& color) {
    return qGray(color.rgb()) < 128;
}

} // namespace

void applyLooks(QApplication& application) {
    application.setStyle(new LarkStyle);
    QPalette palette = paletteOf(aqua, black);
    palette.setColor(QPalette::ToolTipBase, Qt::black);
    palette.setColor(QPalette::ToolTipText, toQt(aqua));
    const QColor faint = between(toQt(aqua), Qt::black, 0.6);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    application.setPalette(palette);
    application.setFont(fontOf({.family = "Arial", .points = 9}));
    application.setCursorFlashTime(0); // blinking would wake the machine all the time
    application.setEffectEnabled(Qt::UI_AnimateCombo, false);
}

QFont fontOf(const Font& font) {
    QFont made;
    made.setFamilies(familiesFor(font.family));
    made.setPointSize(font.points);
    return made;
}

int pixelsOf(int twips, int dpi) {
    return qRound(twips * static_cast<double>(dpi) / twipsPerInch);
}

int twipsOf(int pixels, int dpi) {
    return qRound(pixels * static_cast<double>(twipsPerInch) / dpi);
}

// Computed from its edges, so that neighbours touch at every size.
QRect pixelsOf(const Place& place, int dpi) {
    const QPoint corner(pixelsOf(place.left, dpi), pixelsOf(place.top, dpi));
    const QPoint end(pixelsOf(place.left + place.width, dpi),
                     pixelsOf(place.top + place.height, dpi));
    return {corner, QSize(end.x() - corner.x(), end.y() - corner.y())};
}

QPalette paletteOf(Color foreground, Color background) {
    const QColor front = toQt(foreground), ground = toQt(background);
    QPalette palette;
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::BrightText, QPalette::Highlight, QPalette::Link})
        palette.setColor(role, front);
    // Selected text has the two colours exchanged.
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button,
                            QPalette::AlternateBase, QPalette::HighlightedText})
        palette.setColor(role, ground);
    const QColor dim = between(front, ground, outlineShare);
    for (const auto role : {QPalette::Mid, QPalette::Dark, QPalette::Light, QPalette::Midlight,
                            QPalette::Shadow, QPalette::PlaceholderText})
        palette.setColor(role, dim);
    return palette;
}

QColor between(const QColor& first, const QColor& second, double share) {
    const auto part = [share](int from, int to) { return qRound(from + (to - from) * share); };
    return {part(first.red(), second.red()), part(first.green(), second.green()),
            part(first.blue(), second.blue())};
}

QColor legible(const QColor& front, const QColor& ground) {
    constexpr int leastDifference = 70; // of grey; plain red on black has 87
    // Steps towards black or white, whichever differs more from the ground.
    const QColor far = isDark(ground) ? Qt::white : Qt::black;
    QColor seen = front;
    for (double share = 0.1; std::abs(qGray(seen.rgb()) - qGray(ground.rgb())) < leastDifference;
         share += 0.1)
        seen = between(front, far, std::min(share, 1.0));
    return seen;
}

QColor dimmed(const QPalette& palette) {
    return palette.color(QPalette::Mid);
}

void drawOutline(QPainter& painter, const QRect& box, const QColor& color) {
    painter.fillRect(box.left(), box.top(), box.width(), 1, color);
    painter.fillRect(box.left(), box.bottom(), box.width(), 1, color);
    painter.fillRect(box.left(), box.top(), 1, box.height(), color);
    painter.fillRect(box.right(), box.top(), 1, box.height(), color);
}

QColor outlineOf(Color background) {
    const QColor ground = toQt(background);
    return between(isDark(ground) ? toQt(aqua) : QColor(Qt::black), ground, outlineShare);
}

} // namespace larkspin
