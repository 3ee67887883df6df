#pragma once

#include "SoftwareRenderer.h"
#include "VideoSurface.h"

#include <QQuickItem>

namespace quillmere {

class VideoEngine;

/**
 * Shows pictures that were drawn into memory, for windows without a GPU. Showing one copies its pixels once, into the
 * window. Screen thread only; its parent, the view, owns it; the renderer keeps the engine alive.
 */
class SoftwareSurface : public QQuickItem, public VideoSurface
{
    Q_OBJECT

public:
    SoftwareSurface(VideoEngine& engine, QQuickItem* view);

    void resize(QSizeF size, QSize pixels) override;

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

private:
    std::shared_ptr<std::function<void()>> m_onPictureChanged;
    std::unique_ptr<SoftwareRenderer> m_renderer;
    QSize m_pixels;
};

} // namespace quillmere
