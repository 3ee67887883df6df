#pragma once

#include <QQuickItem>

/**
 * A thing on a screen that can hold the remote's focus and be selected; what it looks like is its content's business.
 * It can be reached while it is visible and enabled. `activeFocus` says whether it is the focused one.
 * Screen thread only; its parent item owns it.
 */
class Focusable : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** Takes the focus when its screen has none to keep; of several the first. */
    Q_PROPERTY(bool preferred MEMBER m_preferred FINAL)

public:
    explicit Focusable(QQuickItem* parent = nullptr);

    bool isPreferred() const { return m_preferred; }
    bool canHoldFocus() const { return isVisible() && isEnabled() && width() > 0 && height() > 0; }

Q_SIGNALS:
    /** The viewer pressed select on it: once a press, never by a held button. */
    void selected();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    void tellScreen();

    bool m_preferred = false;
};
