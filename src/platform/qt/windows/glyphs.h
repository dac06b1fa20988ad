// The marks on the buttons for playing. No free font has them, so they are drawn.
#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QString>

namespace larkspin {

// The mark for a caption, centred in the rectangle. Empty for a caption that is a word.
QPainterPath glyphOf(const QString& caption, const QRectF& within);

} // namespace larkspin
