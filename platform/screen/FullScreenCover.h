#pragma once

#include "FocusScreen.h"

#include <QQmlComponent>
#include <QVariantMap>

/**
 * A screen that covers the one it stands on: while `screen` is set it is shown, slid up within 0.3 s; when it is null
 * again the screen slides down and is destroyed. The keys go to it at once when it comes, and back to the screen beneath
 * at once when it leaves. Back that the screen has no use for asks to dismiss it, once a press.
 * Screen thread only; its parent item owns it.
 */
class FullScreenCover : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** What to show, a FocusScreen; null for nothing. Its maker outlives this. */
    Q_PROPERTY(QQmlComponent* screen READ screen WRITE setScreen NOTIFY screenChanged FINAL)
    /** Properties that the screen is made with. */
    Q_PROPERTY(QVariantMap properties MEMBER m_properties FINAL)
    /** What is not drawn while it is wholly covered: its `visible` is this one's then. */
    Q_PROPERTY(QQuickItem* beneath READ beneath WRITE setBeneath NOTIFY beneathChanged FINAL)
    /** The screen that is shown, null when there is none. */
    Q_PROPERTY(FocusScreen* item READ item NOTIFY screenChanged FINAL)

public:
    explicit FullScreenCover(QQuickItem* parent = nullptr);
    ~FullScreenCover() override;

    static constexpr int slideTime = 300; // milliseconds

    QQmlComponent* screen() const { return m_screen; }
    void setScreen(QQmlComponent* screen);
    QQuickItem* beneath() const { return m_beneath; }
    void setBeneath(QQuickItem* beneath);
    FocusScreen* item() const { return m_item; }

Q_SIGNALS:
    void screenChanged();
    void beneathChanged();

    /** The viewer wants back from the cover; whoever owns the flag behind `screen` clears it. */
    void dismissed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    void followScreen(bool isSeen);
    void change(bool isSeen);
    void followHost();
    FocusScreen* made();
    void come(bool slides);
    void leave(FocusScreen* item, bool slides);
    void slide(FocusScreen* item, qreal y);
    void setCovering(bool covering);
    qreal slideLength() const;

    QPointer<QQmlComponent> m_screen;
    QPointer<QQmlComponent> m_made; ///< the one that was last made, or tried
    QVariantMap m_properties;
    QPointer<QQuickItem> m_beneath;
    QPointer<FocusScreen> m_item;
    QPointer<FocusScreen> m_host; ///< the screen around this, which is covered
    bool m_isChanging = false;
    bool m_isCovering = false; ///< wholly
};
