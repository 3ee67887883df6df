#pragma once

#include <QQuickItem>

namespace quillmere {

/**
 * An item that can have the remote's focus and be selected; its children draw it. It is focusable while it is visible,
 * enabled and not empty. `activeFocus` tells whether it is focused. Screen thread only; owned by its parent item.
 */
class Focusable : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** Whether it is focused first when its screen has no focused item; if several are, the first in the item tree. */
    Q_PROPERTY(bool preferred MEMBER m_preferred FINAL)

public:
    explicit Focusable(QQuickItem* parent = nullptr);

    bool isPreferred() const { return m_preferred; }
    bool isFocusable() const { return isVisible() && isEnabled() && width() > 0 && height() > 0; }

Q_SIGNALS:
    /** Select was pressed while it had focus. Emitted once for each press, also if the button is held down. */
    void selected();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    void notifyScreen();

    bool m_preferred = false;
};

} // namespace quillmere
