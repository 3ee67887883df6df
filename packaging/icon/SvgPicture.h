#pragma once

#include <QByteArray>
#include <QPaintDevice>

#include <memory>

class QPaintEngine;

/**
 * Takes down what a painter paints as an SVG file: shapes filled and outlined with colours and linear gradients, and
 * nothing else. The bytes are the same with every version of Qt.
 */
class SvgPicture : public QPaintDevice
{
public:
    explicit SvgPicture(int side);
    ~SvgPicture() override;

    QByteArray svg() const;

    QPaintEngine* paintEngine() const override;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class Engine;

    int m_side;
    std::unique_ptr<Engine> m_engine;
};
