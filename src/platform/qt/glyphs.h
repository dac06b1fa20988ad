// The marks on the buttons for playing. No free font has them, so they are drawn.
#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QString>

namespace larkspin {

enum class Glyph { play, stop, pause, next, previous, folder, cross, speaker };

// The mark, centred in the rectangle.
QPainterPath glyphIn(const QRectF& within, Glyph glyph);

// The mark for a caption. Empty for a caption that is a word.
QPainterPath glyphOf(const QString& caption, const QRectF& within);

} // namespace larkspin
