#include "FullScreenCover.h"

#include "CreateItem.h"
#include "DevicePixels.h"

#include <QKeyEvent>
#include <QQuickWindow>
#include <QScopedValueRollback>
#include <QVariantAnimation>

namespace quillmere {

FullScreenCover::FullScreenCover(QQuickItem* parent) : QQuickItem(parent) {}

FullScreenCover::~FullScreenCover()
{
    setCovering(false);
}

void FullScreenCover::setScreen(QQmlComponent* screen)
{
    if (m_screen == screen)
        return;
    m_screen = screen;
    applyScreen(true);
    Q_EMIT screenChanged();
}

void FullScreenCover::setBeneath(QQuickItem* beneath)
{
    if (m_beneath == beneath)
        return;
    const bool isCovering = m_isCovering;
    setCovering(false);
    m_beneath = beneath;
    setCovering(isCovering);
    Q_EMIT beneathChanged();
}

void FullScreenCover::keyPressEvent(QKeyEvent* event)
{
    const bool back = event->key() == Qt::Key_Back && m_item;
    event->setAccepted(back);
    if (back && !event->isAutoRepeat())
        Q_EMIT dismissed();
}

void FullScreenCover::componentComplete()
{
    QQuickItem::componentComplete();
    applyScreen(false);
}

void FullScreenCover::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (m_item)
        m_item->setSize(newGeometry.size());
}

/** Presents the current component. Slots called on the way may change it again. */
void FullScreenCover::applyScreen(bool isAnimated)
{
    if (!isComponentComplete() || m_isChanging)
        return;
    const QScopedValueRollback changing(m_isChanging, true);
    while (m_createdFrom != m_screen)
        replaceScreen(isAnimated);
}

void FullScreenCover::replaceScreen(bool isAnimated)
{
    trackHost();
    const QPointer<FocusScreen> removed = m_item;
    const bool hadKeys = removed ? removed->hasActiveFocus() : !m_host || m_host->hasActiveFocus();
    m_item = createScreen();
    if (m_host)
        m_host->setCover(m_item);
    setCovering(false);
    FocusScreen* const next = m_item ? m_item : m_host;
    if (next && hadKeys)
        next->acquireFocus();
    else if (m_item)
        m_item->setFocus(true);
    const bool slides = isAnimated && isVisible();
    if (removed)
        slideOut(removed, slides);
    if (m_item)
        slideIn(slides);
    // A cover present from the start gets `appeared` together with its host.
    if (m_item && isAnimated)
        Q_EMIT m_item->appeared();
}

/** Forwards `appeared` and `disappeared` of the containing screen to the presented one. */
void FullScreenCover::trackHost()
{
    FocusScreen* host = FocusScreen::enclosingScreen(this);
    if (m_host == host)
        return;
    if (m_host)
        m_host->disconnect(this);
    m_host = host;
    if (!host)
        return;
    connect(host, &FocusScreen::appeared, this, [this] {
        if (m_item)
            Q_EMIT m_item->appeared();
    });
    connect(host, &FocusScreen::disappeared, this, [this] {
        if (m_item)
            Q_EMIT m_item->disappeared();
    });
}

FocusScreen* FullScreenCover::createScreen()
{
    m_createdFrom = m_screen;
    if (!m_createdFrom)
        return nullptr;
    const auto initialize = [this](QQuickItem& item) {
        item.setSize(size());
        return m_properties;
    };
    QQuickItem* item = createItem(*m_createdFrom, *this, initialize);
    auto screen = qobject_cast<FocusScreen*>(item);
    if (item && !screen) {
        qWarning("what a FullScreenCover is to show is no FocusScreen");
        item->setVisible(false);
        item->deleteLater();
    }
    return screen;
}

void FullScreenCover::slideIn(bool slides)
{
    if (!slides) {
        setCovering(true);
        return;
    }
    m_item->setY(slideLength());
    slide(m_item, 0);
}

void FullScreenCover::slideOut(FocusScreen* item, bool slides)
{
    item->setEnabled(false);
    if (slides) {
        slide(item, slideLength());
    } else {
        item->setVisible(false);
        item->deleteLater();
    }
    Q_EMIT item->disappeared();
}

/** Animates from the current position to `y`. At the end the screen covers the item beneath, or is destroyed. */
void FullScreenCover::slide(FocusScreen* item, qreal y)
{
    delete item->findChild<QVariantAnimation*>(QString(), Qt::FindDirectChildrenOnly);
    auto animation = new QVariantAnimation(item);
    animation->setStartValue(item->y());
    animation->setEndValue(y);
    animation->setDuration(qRound(slideDuration * std::min(1.0, std::abs(y - item->y()) / slideLength())));
    animation->setEasingCurve(QEasingCurve::OutCubic);
    connect(animation, &QVariantAnimation::valueChanged, item, [this, item](const QVariant& value) {
        item->setY(snapToDevicePixels(*this, Qt::Vertical, value.toReal()));
    });
    if (y == 0)
        connect(animation, &QVariantAnimation::finished, this, [this] { setCovering(true); });
    else
        connect(animation, &QVariantAnimation::finished, item, &QObject::deleteLater);
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

void FullScreenCover::setCovering(bool covering)
{
    if (m_isCovering == covering)
        return;
    m_isCovering = covering;
    if (m_beneath)
        m_beneath->setVisible(!covering);
}

/** Height of the window in points. It can be larger than the canvas. */
qreal FullScreenCover::slideLength() const
{
    const qreal length = window() ? mapRectFromScene(QRectF(QPointF(), window()->size())).height() : height();
    return std::max(length, 1.0);
}

} // namespace quillmere
