// The marks on buttons for playing. No free font has the ones that are meant, so they are drawn.
#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QString>

namespace larkspin {

// Centred in the rectangle. Empty for a caption that is a word.
QPainterPath glyphOf(const QString& caption, const QRectF& within);

} // namespace larkspin
