#pragma once

#include "VideoPlayer.h"

#include <QPointer>
#include <QQuickItem>

namespace quillmere {

class VideoSurface;

/**
 * Shows the video of a player in device pixels, letterboxed with black. Draws through OpenGL or through memory, as the
 * window does. Screen thread only. It does not own its player, which may be destroyed first.
 */
class VideoView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillmere::VideoPlayer* player READ player WRITE setPlayer NOTIFY playerChanged)

public:
    explicit VideoView(QQuickItem* parent = nullptr);
    ~VideoView() override;

    VideoPlayer* player() const { return m_player; }
    void setPlayer(VideoPlayer* player);

Q_SIGNALS:
    void playerChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& value) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    void createSurface();
    void destroySurface();
    void updateSurfaceSize();

    QPointer<VideoPlayer> m_player;
    std::unique_ptr<VideoSurface> m_surface;
    QMetaObject::Connection m_sizeConnection;
};

} // namespace quillmere
