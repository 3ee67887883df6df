#pragma once

#include "FocusScreen.h"

#include <QQmlComponent>
#include <QVariantMap>

namespace quillmere {

/**
 * Presents a screen over its own screen. Setting `screen` slides the new screen up in 0.3 s; setting it to null slides
 * it down and destroys it. Keys move to the new screen, and back to the screen beneath, before the animation. If the
 * presented screen does not accept Back, `dismissed` is emitted, once for each press. Screen thread only; owned by its
 * parent item.
 */
class FullScreenCover : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** Component of the screen to present, a FocusScreen; null for none. The component's owner outlives this. */
    Q_PROPERTY(QQmlComponent* screen READ screen WRITE setScreen NOTIFY screenChanged FINAL)
    /** Initial properties of the screen. */
    Q_PROPERTY(QVariantMap properties MEMBER m_properties FINAL)
    /** Item that is fully covered by the presented screen; its `visible` is set to false while it is. */
    Q_PROPERTY(QQuickItem* beneath READ beneath WRITE setBeneath NOTIFY beneathChanged FINAL)
    /** The presented screen; null if there is none. */
    Q_PROPERTY(quillmere::FocusScreen* item READ item NOTIFY screenChanged FINAL)

public:
    explicit FullScreenCover(QQuickItem* parent = nullptr);
    ~FullScreenCover() override;

    static constexpr int slideDuration = 300; // milliseconds

    QQmlComponent* screen() const { return m_screen; }
    void setScreen(QQmlComponent* screen);
    QQuickItem* beneath() const { return m_beneath; }
    void setBeneath(QQuickItem* beneath);
    FocusScreen* item() const { return m_item; }

Q_SIGNALS:
    void screenChanged();
    void beneathChanged();

    /** Back was pressed. The owner of `screen` is expected to clear it. */
    void dismissed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    void applyScreen(bool isAnimated);
    void replaceScreen(bool isAnimated);
    void trackHost();
    FocusScreen* createScreen();
    void slideIn(bool slides);
    void slideOut(FocusScreen* item, bool slides);
    void slide(FocusScreen* item, qreal y);
    void setCovering(bool covering);
    qreal slideLength() const;

    QPointer<QQmlComponent> m_screen;
    QPointer<QQmlComponent> m_createdFrom; ///< component of m_item, or of the latest failed attempt
    QVariantMap m_properties;
    QPointer<QQuickItem> m_beneath;
    QPointer<FocusScreen> m_item;
    QPointer<FocusScreen> m_host; ///< the screen that contains this cover
    bool m_isChanging = false;
    bool m_isCovering = false; ///< the presented screen covers everything, no animation is running
};

} // namespace quillmere
