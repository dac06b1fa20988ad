#include "platform/qt/glyphs.h"

#include <QPainterPathStroker>
#include <QTransform>
#include <algorithm>
#include <initializer_list>

namespace larkspin {

namespace {

// All shapes lie in a square from -5 to 5.
void addShape(QPainterPath& path, std::initializer_list<QPointF> corners) {
    path.moveTo(*corners.begin());
    for (const QPointF& corner : corners)
        path.lineTo(corner);
}

QPainterPath play() {
    QPainterPath path;
    addShape(path, {{-3.5, -4.5}, {4.5, 0}, {-3.5, 4.5}});
    return path;
}

QPainterPath stop() {
    QPainterPath path;
    path.addRect(-4, -4, 8, 8);
    return path;
}

QPainterPath pause() {
    QPainterPath path;
    path.addRect(-4, -4.5, 3, 9);
    path.addRect(1, -4.5, 3, 9);
    return path;
}

QPainterPath next() {
    QPainterPath path;
    addShape(path, {{-4.5, -4.5}, {2.5, 0}, {-4.5, 4.5}});
    path.addRect(2.5, -4.5, 2, 9);
    return path;
}

QPainterPath previous() {
    return QTransform::fromScale(-1, 1).map(next());
}

QPainterPath folder() {
    QPainterPath path; // its back with the tab, and its open front
    addShape(path,
             {{-5, 3.5}, {-5, -4}, {-1.5, -4}, {-0.5, -2.7}, {3.5, -2.7}, {3.5, -1.3}, {-3, -1.3}});
    addShape(path, {{-4.4, 4}, {-2.3, -0.3}, {5.4, -0.3}, {3.3, 4}});
    return path;
}

QPainterPath cross() {
    QPainterPath path;
    addShape(path, {{-4, -3},
                    {-3, -4},
                    {0, -1},
                    {3, -4},
                    {4, -3},
                    {1, 0},
                    {4, 3},
                    {3, 4},
                    {0, 1},
                    {-3, 4},
                    {-4, 3},
                    {-1, 0}});
    return path;
}

QPainterPath speaker() {
    QPainterPath waves;
    for (const double radius : {2.5, 5.0}) {
        const QRectF circle(-radius, -radius, 2 * radius, 2 * radius);
        waves.arcMoveTo(circle, -45);
        waves.arcTo(circle, -45, 90);
    }
    QPainterPathStroker pen;
    pen.setWidth(1.2);
    QPainterPath path = pen.createStroke(waves);
    addShape(path, {{-5, -1.7}, {-3.2, -1.7}, {0, -4.5}, {0, 4.5}, {-3.2, 1.7}, {-5, 1.7}});
    return path;
}

QPainterPath shapeOf(Glyph glyph) {
    switch (glyph) {
    case Glyph::play:
        return play();
    case Glyph::stop:
        return stop();
    case Glyph::pause:
        return pause();
    case Glyph::next:
        return next();
    case Glyph::previous:
        return previous();
    case Glyph::folder:
        return folder();
    case Glyph::cross:
        return cross();
    case Glyph::speaker:
        return speaker();
    }
    return {};
}

struct Captioned {
    QStringView caption;
    Glyph glyph;
};

// The captions are signs, and characters of the symbol fonts that the windows were designed with.
constexpr Captioned captioned[] = {
    {u"l>", Glyph::play},       {u"\u00B3", Glyph::play}, {u"\u0090", Glyph::stop},
    {u"II", Glyph::pause},      {u"<", Glyph::previous},  {u">", Glyph::next},
    {u"\u00EA", Glyph::folder}, {u"X", Glyph::cross},
};

} // namespace

// A mark takes half of the smaller side.
QPainterPath glyphIn(const QRectF& within, Glyph glyph) {
    const double scale = std::min(within.width(), within.height()) * 0.05;
    return QTransform::fromTranslate(within.center().x(), within.center().y())
        .scale(scale, scale)
        .map(shapeOf(glyph));
}

QPainterPath glyphOf(const QString& caption, const QRectF& within) {
    const auto* const found =
        std::ranges::find(captioned, QStringView(caption).trimmed(), &Captioned::caption);
    return found == std::end(captioned) ? QPainterPath() : glyphIn(within, found->glyph);
}

} // namespace larkspin
