#include "FocusGeometry.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

// Points. Fractional layout may make neighbours overlap, or items of one line differ in position, by this much.
constexpr qreal tolerance = 0.5;

/** A rectangle rotated so that the arrow points along increasing values: from `first` to `last`. */
struct Span
{
    qreal first, last, left, right;

    qreal middle() const { return (left + right) / 2; }
    bool overlaps(const Span& other) const { return left < other.right && other.left < right; }
};

Span span(const QRectF& rect, int arrow)
{
    switch (arrow) {
    case Qt::Key_Up:
        return {-rect.bottom(), -rect.top(), rect.left(), rect.right()};
    case Qt::Key_Down:
        return {rect.top(), rect.bottom(), rect.left(), rect.right()};
    case Qt::Key_Left:
        return {-rect.right(), -rect.left(), rect.top(), rect.bottom()};
    default:
        return {rect.left(), rect.right(), rect.top(), rect.bottom()};
    }
}

} // namespace

qsizetype FocusGeometry::next(const QRectF& from, const QList<QRectF>& targets, int arrow, Beam beam)
{
    const Span start = span(from, arrow);
    qsizetype best = -1;
    qreal bestGap = 0;
    qreal bestOffset = 0;
    for (qsizetype i = 0; i < targets.size(); ++i) {
        const Span target = span(targets[i], arrow);
        const qreal gap = target.first - start.last;
        if (gap < -tolerance || (beam == Beam::Needed && !target.overlaps(start)))
            continue;
        const qreal offset = std::abs(target.middle() - start.middle());
        const bool inOneLine = std::abs(gap - bestGap) <= tolerance;
        if (best < 0 || (inOneLine ? offset < bestOffset : gap < bestGap)) {
            best = i;
            bestGap = gap;
            bestOffset = offset;
        }
    }
    return best;
}

qsizetype FocusGeometry::closest(const QRectF& to, const QList<QRectF>& targets)
{
    const auto distance = [&to](const QRectF& rect) {
        const QPointF offset = rect.center() - to.center();
        return QPointF::dotProduct(offset, offset);
    };
    const auto nearer = [&](const QRectF& a, const QRectF& b) { return distance(a) < distance(b); };
    return targets.isEmpty() ? -1 : std::min_element(targets.begin(), targets.end(), nearer) - targets.begin();
}

qsizetype FocusGeometry::topmostLeading(const QList<QRectF>& targets)
{
    if (targets.isEmpty())
        return -1;
    const auto higher = [](const QRectF& a, const QRectF& b) { return a.top() < b.top(); };
    const qreal lineEnd = std::min_element(targets.begin(), targets.end(), higher)->bottom();
    // Compares centres with the end of the line: by top edges alone, the tallest item of a line would always win.
    const auto before = [lineEnd](const QRectF& a, const QRectF& b) {
        const bool inLine = a.center().y() < lineEnd;
        return inLine == (b.center().y() < lineEnd) ? a.left() < b.left() : inLine;
    };
    return std::min_element(targets.begin(), targets.end(), before) - targets.begin();
}

} // namespace quillmere
