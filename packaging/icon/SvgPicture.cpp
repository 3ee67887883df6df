#include "SvgPicture.h"

#include <QGradient>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

namespace quillmere {

namespace {

/** Formats with at most two decimals, which is precise enough for a picture of 256 points. */
QByteArray number(double value)
{
    QByteArray text = QByteArray::number(value, 'f', 2);
    while (text.endsWith('0'))
        text.chop(1);
    if (text.endsWith('.'))
        text.chop(1);
    return text == "-0" ? "0" : text;
}

QByteArray point(const QPointF& at)
{
    return number(at.x()) + ' ' + number(at.y());
}

QByteArray shape(const QPainterPath& path)
{
    QByteArray steps;
    QPointF start;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        const bool closes = i + 1 == path.elementCount() || path.elementAt(i + 1).isMoveTo();
        if (element.isMoveTo())
            start = element;
        // SVG closes a subpath with "Z", QPainterPath with a line to its start.
        if (element.isLineTo() && closes && QPointF(element) == start)
            steps += 'Z';
        else
            steps += (element.isMoveTo()    ? "M"
                      : element.isLineTo()  ? "L"
                      : element.isCurveTo() ? "C"
                                            : " ") +
                     point(element);
    }
    return steps;
}

QByteArray attribute(const QByteArray& name, const QByteArray& value)
{
    return ' ' + name + "=\"" + value + '"';
}

/**
 * The colour as attribute `name`, and its opacity as attribute `prefix`-opacity. The prefix is fill, stroke or stop.
 */
QByteArray paint(const QByteArray& name, const QByteArray& prefix, const QColor& colour, double opacity)
{
    QByteArray attributes = attribute(name, colour.name().toLatin1());
    if (const double alpha = colour.alphaF() * opacity; alpha < 1)
        attributes += attribute(prefix + "-opacity", number(alpha));
    return attributes;
}

} // namespace

class SvgPicture::Engine : public QPaintEngine
{
public:
    Engine() : QPaintEngine(AllFeatures) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    Type type() const override { return User; }

    void drawPath(const QPainterPath& path) override;
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { qFatal("An SVG picture has no pixels."); }

    QByteArray shapes;

private:
    QByteArray filling();
    QByteArray gradient(const QLinearGradient& gradient);

    int m_gradients = 0;
};

void SvgPicture::Engine::drawPath(const QPainterPath& path)
{
    const QTransform transform = painter()->combinedTransform();
    const QByteArray fill = filling();
    QByteArray outline;
    if (const QPen pen = painter()->pen(); pen.style() != Qt::NoPen)
        outline = paint("stroke", "stroke", pen.color(), painter()->opacity()) +
                  attribute("stroke-width", number(pen.widthF() * transform.m11()));
    // With antialiasing, a seam would be visible between adjacent shapes.
    const bool isSmooth = painter()->testRenderHint(QPainter::Antialiasing);
    const QByteArray edges = isSmooth ? QByteArray() : attribute("shape-rendering", "crispEdges");
    shapes += "<path" + attribute("d", shape(transform.map(path))) + fill + outline + edges + "/>\n";
}

QByteArray SvgPicture::Engine::filling()
{
    const QBrush brush = painter()->brush();
    switch (brush.style()) {
    case Qt::NoBrush:
        return attribute("fill", "none");
    case Qt::SolidPattern:
        return paint("fill", "fill", brush.color(), painter()->opacity());
    case Qt::LinearGradientPattern:
        return gradient(*static_cast<const QLinearGradient*>(brush.gradient()));
    default:
        qFatal("An SVG picture has colours and linear gradients only.");
    }
}

QByteArray SvgPicture::Engine::gradient(const QLinearGradient& gradient)
{
    const QTransform transform = painter()->combinedTransform();
    const QPointF from = transform.map(gradient.start());
    const QPointF to = transform.map(gradient.finalStop());
    const QByteArray name = 'g' + QByteArray::number(++m_gradients);
    shapes += "<linearGradient" + attribute("id", name) + attribute("gradientUnits", "userSpaceOnUse") +
              attribute("x1", number(from.x())) + attribute("y1", number(from.y())) + attribute("x2", number(to.x())) +
              attribute("y2", number(to.y())) + ">\n";
    for (const auto& [offset, colour] : gradient.stops())
        shapes += "<stop" + attribute("offset", number(offset)) +
                  paint("stop-color", "stop", colour, painter()->opacity()) + "/>\n";
    shapes += "</linearGradient>\n";
    return attribute("fill", "url(#" + name + ')');
}

SvgPicture::SvgPicture(int side) : m_side(side), m_engine(std::make_unique<Engine>()) {}

SvgPicture::~SvgPicture() = default;

QByteArray SvgPicture::svg() const
{
    const QByteArray side = QByteArray::number(m_side);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + side + "\" height=\"" + side + "\" viewBox=\"0 0 " +
           side + ' ' + side + "\">\n" + m_engine->shapes + "</svg>\n";
}

QPaintEngine* SvgPicture::paintEngine() const
{
    return m_engine.get();
}

int SvgPicture::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
    case PdmHeight:
        return m_side;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return 96;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return int(devicePixelRatioFScale());
    default:
        return QPaintDevice::metric(metric);
    }
}

} // namespace quillmere
