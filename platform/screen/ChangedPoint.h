#pragma once

#include <QQuickItem>

class QSGSimpleRectNode;

namespace quillmere {

/**
 * A transparent pixel that is marked dirty in every rendered frame; it requests no frame itself. Without it, a frame in
 * which nothing has changed is committed without damage. A Wayland compositor such as cage 0.1 then sends no frame
 * callback, and Qt stops rendering. Needed with the software renderer only. Screen thread only; owned by its parent
 * item.
 */
class ChangedPoint : public QQuickItem
{
    Q_OBJECT

public:
    /** `parent` is an item of the window to keep rendering. */
    explicit ChangedPoint(QQuickItem* parent);

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void releaseResources() override { m_node = nullptr; }

private:
    void markChanged();

    QSGSimpleRectNode* m_node = nullptr; ///< owned by the scene graph, which the software renderer runs on this thread
};

} // namespace quillmere
