#pragma once

#include "SoftwareRenderer.h"

#include <memory>

class MpvEngine;

/** libmpv's software renderer. The screen thread's end of it; the other is a thread that draws. */
class MpvSoftwareRenderer : public SoftwareRenderer
{
public:
    MpvSoftwareRenderer(std::shared_ptr<MpvEngine> engine, PictureListener changed);
    ~MpvSoftwareRenderer() override;

    void setSize(QSize pixels) override;
    QImage picture() override;

private:
    class Drawing;

    std::shared_ptr<Drawing> m_drawing;
};
