#include "platform/qt/windows/glyphs.h"

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

struct Glyph {
    QStringView caption;
    QPainterPath (*shape)();
};

// The captions are signs, and characters of the symbol fonts that the windows were designed with.
constexpr Glyph glyphs[] = {
    {u"l>", play},    {u"\u00B3", play}, {u"\u0090", stop},   {u"II", pause},
    {u"<", previous}, {u">", next},      {u"\u00EA", folder}, {u"X", cross},
};

} // namespace

QPainterPath glyphOf(const QString& caption, const QRectF& within) {
    const auto* const glyph = std::find_if(std::begin(glyphs), std::end(glyphs),
                                           [word = QStringView(caption).trimmed()](
                                               const Glyph& each) { return each.caption == word; });
    if (glyph == std::end(glyphs))
        return {};
    // A mark takes half of the smaller side.
    const double scale = std::min(within.width(), within.height()) * 0.05;
    return QTransform::fromTranslate(within.center().x(), within.center().y())
        .scale(scale, scale)
        .map(glyph->shape());
}

} // namespace larkspin
