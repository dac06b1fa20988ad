#include "platform/qt/places.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr int gap = 6;              // in pixels, between two windows
constexpr int littleCovered = 1000; // pixels, which make no difference

int sizeOf(const QRect& area) {
    return area.isEmpty() ? 0 : area.width() * area.height();
}

// Where a window may begin along one side of another one: after it, before it, or flush with it.
void addStarts(std::vector<int>& starts, int first, int last, int length) {
    starts.insert(starts.end(), {last + 1 + gap, first - gap - length, first, last + 1 - length});
}

} // namespace

QPoint cornerWithin(const QRect& area, const QRect& window) {
    const auto into = [](int start, int length, int first, int last) {
        return std::max(first, std::min(start, last + 1 - length));
    };
    return {into(window.left(), window.width(), area.left(), area.right()),
            into(window.top(), window.height(), area.top(), area.bottom())};
}

QPoint cornerBeside(const QRect& area, QSize size, const QRect& main,
                    const std::vector<QRect>& parts, const std::vector<QRect>& others, Near near) {
    std::vector<QRect> all = others;
    all.push_back(main);
    std::vector<int> lefts = {area.left(), area.right() + 1 - size.width()};
    std::vector<int> tops = {area.top(), area.bottom() + 1 - size.height()};
    std::vector<QRect> edges = all;
    edges.insert(edges.end(), parts.begin(), parts.end());
    for (const QRect& each : edges) {
        addStarts(lefts, each.left(), each.right(), size.width());
        addStarts(tops, each.top(), each.bottom(), size.height());
    }
    const auto costOf = [&](QPoint corner) {
        const QRect window(corner, size);
        int covered = 0;
        for (const QRect& each : all)
            covered += sizeOf(window & each);
        std::vector<int> cost;
        for (const QRect& part : parts)
            cost.push_back(sizeOf(part & window));
        cost.insert(cost.end(),
                    {covered / littleCovered, covered > 0 ? 1 : 0,
                     (near == Near::foot && covered == 0 ? window.bottomLeft() - main.bottomRight()
                                                         : corner - main.topRight())
                         .manhattanLength()});
        return cost;
    };
    QPoint best = cornerWithin(area, QRect(main.topRight(), size));
    auto least = costOf(best);
    for (const int left : lefts)
        for (const int top : tops) {
            const QPoint corner = cornerWithin(area, QRect(QPoint(left, top), size));
            if (const auto cost = costOf(corner); cost < least) {
                least = cost;
                best = corner;
            }
        }
    return best;
}

} // namespace larkspin
