#pragma once

#include <QQuickItem>

class QSGSimpleRectNode;

/**
 * A transparent point that counts as changed in every frame that is drawn, and asks for no frame itself. Without it a frame
 * in which nothing has changed is shown without damage; a Wayland compositor such as cage 0.1 then never tells that it was
 * shown, and Qt draws no further one. For the software path. Screen thread only; its parent item owns it.
 */
class ChangedPoint : public QQuickItem
{
    Q_OBJECT

public:
    /** `parent` is in the window whose frames are meant. */
    explicit ChangedPoint(QQuickItem* parent);

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void releaseResources() override { m_node = nullptr; }

private:
    void markChanged();

    QSGSimpleRectNode* m_node = nullptr; ///< the scene graph's, which the software path draws on this thread
};
