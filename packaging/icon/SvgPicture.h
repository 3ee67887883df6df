#pragma once

#include <QByteArray>
#include <QPaintDevice>

#include <memory>

class QPaintEngine;

namespace quillmere {

/**
 * Paint device that records painting as SVG. Supports only shapes that are filled with colours or linear gradients and
 * outlined with colours. Unlike Qt SVG, the output is identical with every version of Qt.
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

} // namespace quillmere
