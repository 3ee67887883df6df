#pragma once

#include "SoftwareRenderer.h"

#include <memory>

namespace quillmere {

class MpvEngine;

/** Draws with libmpv's software renderer, on its own thread. Its functions are called on the screen thread. */
class MpvSoftwareRenderer : public SoftwareRenderer
{
public:
    MpvSoftwareRenderer(std::shared_ptr<MpvEngine> engine, PictureListener listener);
    ~MpvSoftwareRenderer() override;

    void setSize(QSize pixels) override;
    QImage picture() override;

private:
    class DrawThread;

    std::shared_ptr<DrawThread> m_thread;
};

} // namespace quillmere
