// How everything looks: sizes, fonts, colours, and the style in which Qt's own parts are drawn, so
// that boxes and menus are of one piece with the windows.
#pragma once

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

// With stand-ins of about the same width where the family isn't installed.
QFont fontOf(const Font& font);

// A screen has that many of Qt's pixels per inch, of which Qt makes dots.
int pixelsOf(int twips, int dpi);
int twipsOf(int pixels, int dpi);
QRect pixelsOf(const Place& place, int dpi);

// Of a control: all that it draws is one of its two colours, or lies between them.
QPalette paletteOf(Color foreground, Color background);
QColor between(const QColor& first, const QColor& second, double share); // of the second
QColor dimmed(const QPalette& palette);                                  // for outlines

// The nearest colour to the first that is told from the second at a glance.
QColor legible(const QColor& front, const QColor& ground);

// One pixel wide, sharp at every size.
void drawOutline(QPainter& painter, const QRect& box, const QColor& color);

// Around a window, to be told from what lies behind it.
QColor outlineOf(Color background);

} // namespace larkspin
