// How everything looks: sizes, fonts, colours, and the style in which Qt's own parts are drawn, so
// that boxes and menus are of one piece with the windows.
#pragma once

#include "host/preferences.h"
#include "host/readable_color.h"
#include "shell/window.h"

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRect>

class QApplication;
class QPainter;

namespace larkspin {

// Once, before the first window.
void applyLooks(QApplication& application);

// What Qt draws by itself (the room, boxes, menus) from now on, where a window has no colours or
// fonts of its own. The desktop's colours are those that it gives to programs, if these are light,
// or dark, as they are wanted.
void showInColors(RoomColors colors);
void showTextAt(int percent);

// With families of about the same width for one that isn't installed.
QFont fontOf(const Font& font, int percent = Preferences::usualText);

// `dpi` is how many of Qt's pixels a screen has per inch; each of these may be several dots.
int pixelsOf(int twips, int dpi);
int twipsOf(int pixels, int dpi);
QRect pixelsOf(const Place& place, int dpi);

// The palette of a control: everything that it draws is in one of its two colours, or lies between
// them.
QPalette paletteOf(Color foreground, Color background);
QColor between(const QColor& first, const QColor& second, double share); // of the second
QColor dimmed(const QPalette& palette);                                  // for outlines
QColor dimText(const QColor& front, const QColor& ground); // of what is told beside the rest

// The colour nearest to `front` that can be told from `ground` at a glance.
QColor legible(const QColor& front, const QColor& ground);

// Of what calls the owner.
inline const QColor callColor(QRgb{calling});

// An outline of one pixel, sharp at every size.
void drawOutline(QPainter& painter, const QRect& box, const QColor& color);

// The colour of a window's outline, by which it stands out from what lies behind it.
QColor outlineOf(Color background);

} // namespace larkspin
