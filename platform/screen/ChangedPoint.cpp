#include "ChangedPoint.h"

#include <QQuickWindow>
#include <QSGSimpleRectNode>

namespace quillmere {

ChangedPoint::ChangedPoint(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setSize({1, 1});
    setZ(1); // covered items are not drawn
    // A change made later than this signal would request the next frame.
    connect(window(), &QQuickWindow::beforeRendering, this, &ChangedPoint::markChanged, Qt::DirectConnection);
    connect(
        window(), &QQuickWindow::sceneGraphInvalidated, this, [this] { m_node = nullptr; }, Qt::DirectConnection);
}

QSGNode* ChangedPoint::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/)
{
    m_node = static_cast<QSGSimpleRectNode*>(node);
    if (!m_node)
        m_node = new QSGSimpleRectNode(boundingRect(), Qt::transparent);
    return m_node;
}

void ChangedPoint::markChanged()
{
    if (m_node)
        m_node->markDirty(QSGNode::DirtyMaterial);
}

} // namespace quillmere
