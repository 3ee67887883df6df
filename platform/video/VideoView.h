#pragma once

#include "VideoPlayer.h"

#include <QPointer>
#include <QQuickItem>

class VideoSurface;

/**
 * The item on screen: shows a player's picture at the real pixel size, letterboxed with black, through OpenGL or
 * through memory as the window draws. Screen thread only. It does not own its player, which may go before it.
 */
class VideoView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(VideoPlayer* player READ player WRITE setPlayer NOTIFY playerChanged)

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
    void showPicture();
    void dropPicture();
    void fitPicture();

    QPointer<VideoPlayer> m_player;
    std::unique_ptr<VideoSurface> m_surface;
    QMetaObject::Connection m_fitting;
};
