#include "platform/qt/looks.h"

#include "platform/qt/lark_style.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QPainter>
#include <QVariant>

namespace larkspin {

namespace {

constexpr int twipsPerInch = 1440;
// Shares of the background: in an outline, and in what can't be used now.
constexpr double outlineShare = 0.55, faintShare = 0.6;

// The families that the windows were designed with, and free ones of about the same widths.
QStringList familiesFor(std::string_view family) {
    if (family == "Trebuchet MS")
        return {"Trebuchet MS", "Liberation Sans", "Arimo", "Nimbus Sans"};
    return {"Arial", "Liberation Sans", "Arimo", "Nimbus Sans"};
}

bool isDark(const QColor& color) {
    return qGray(color.rgb()) < 128;
}

constexpr const char* desktopsPalette = "larkspin.desktopsPalette"; // of the application

// Outlines and what can't be used now lie between the text and its ground.
QPalette withOutlines(QPalette palette) {
    const QColor front = palette.color(QPalette::WindowText),
                 ground = palette.color(QPalette::Window);
    for (const auto role : {QPalette::Mid, QPalette::Dark, QPalette::Light, QPalette::Midlight,
                            QPalette::Shadow, QPalette::PlaceholderText})
        palette.setColor(role, between(front, ground, outlineShare));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, between(front, ground, faintShare));
    return palette;
}

// For a desktop whose own colours are the other way round, or not known.
QPalette plainPalette(RoomColors colors) {
    const bool isLight = colors == RoomColors::light;
    const QColor front(isLight ? "#1b1b1b" : "#e6e6e6"), window(isLight ? "#f1f1f1" : "#242424"),
        base(isLight ? "#ffffff" : "#1b1b1b"), chosen(isLight ? "#2a6db0" : "#3a6ea5");
    QPalette palette;
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::BrightText, QPalette::ToolTipText})
        palette.setColor(role, front);
    for (const auto role : {QPalette::Window, QPalette::Button, QPalette::AlternateBase})
        palette.setColor(role, window);
    for (const auto role : {QPalette::Base, QPalette::ToolTipBase})
        palette.setColor(role, base);
    palette.setColor(QPalette::Highlight, chosen);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, isLight ? chosen : QColor("#7fb4ea"));
    return palette;
}

QPalette larkspinsPalette() {
    QPalette palette = paletteOf(aqua, black);
    palette.setColor(QPalette::ToolTipBase, Qt::black);
    palette.setColor(QPalette::ToolTipText, toQt(aqua));
    return palette;
}

QPalette roomPalette(RoomColors colors) {
    if (colors == RoomColors::larkspin)
        return withOutlines(larkspinsPalette());
    const auto desktops = qApp->property(desktopsPalette).value<QPalette>();
    const bool fits = isDark(desktops.color(QPalette::Window)) == (colors == RoomColors::dark);
    return withOutlines(fits ? desktops : plainPalette(colors));
}

} // namespace

void applyLooks(QApplication& application) {
    application.setProperty(desktopsPalette, application.palette());
    application.setStyle(new LarkStyle);
    showInColors(RoomColors::larkspin);
    showTextAt(Preferences::usualText);
    application.setCursorFlashTime(0); // blinking would wake the machine all the time
    application.setEffectEnabled(Qt::UI_AnimateCombo, false);
}

void showInColors(RoomColors colors) {
    const QPalette palette = roomPalette(colors);
    if (palette != QApplication::palette())
        QApplication::setPalette(palette);
}

void showTextAt(int percent) {
    const QFont font = fontOf({.family = "Arial", .points = 9}, percent);
    if (font != QApplication::font())
        QApplication::setFont(font);
}

QFont fontOf(const Font& font, int percent) {
    QFont made;
    made.setFamilies(familiesFor(font.family));
    made.setPointSizeF(font.points * percent / 100.0);
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

QColor dimText(const QColor& front, const QColor& ground) {
    return between(front, ground, dimTextShare);
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
