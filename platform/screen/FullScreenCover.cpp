#include "FullScreenCover.h"

#include "DevicePixels.h"
#include "MadeItem.h"

#include <QKeyEvent>
#include <QQuickWindow>
#include <QScopedValueRollback>
#include <QVariantAnimation>

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
    followScreen(true);
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
    followScreen(false);
}

void FullScreenCover::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (m_item)
        m_item->setSize(newGeometry.size());
}

/** Comes to show what is wanted; what is told on the way may change that again. */
void FullScreenCover::followScreen(bool isSeen)
{
    if (!isComponentComplete() || m_isChanging)
        return;
    const QScopedValueRollback changing(m_isChanging, true);
    while (m_made != m_screen)
        change(isSeen);
}

void FullScreenCover::change(bool isSeen)
{
    followHost();
    const QPointer<FocusScreen> leaving = m_item;
    const bool hadKeys = leaving ? leaving->hasActiveFocus() : !m_host || m_host->hasActiveFocus();
    m_item = made();
    if (m_host)
        m_host->setCover(m_item);
    setCovering(false);
    FocusScreen* const next = m_item ? m_item : m_host;
    if (next && hadKeys)
        next->takeFocus();
    else if (m_item)
        m_item->setFocus(true);
    const bool slides = isSeen && isVisible();
    if (leaving)
        leave(leaving, slides);
    if (m_item)
        come(slides);
    // A cover that is there from the beginning appears with what it stands on.
    if (m_item && isSeen)
        Q_EMIT m_item->appeared();
}

/** The screen around this comes and goes with what it shows on itself. */
void FullScreenCover::followHost()
{
    FocusScreen* host = FocusScreen::around(this);
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

FocusScreen* FullScreenCover::made()
{
    m_made = m_screen;
    if (!m_made)
        return nullptr;
    const auto begin = [this](QQuickItem& item) {
        item.setSize(size());
        return m_properties;
    };
    QQuickItem* item = madeItem(*m_made, *this, begin);
    auto screen = qobject_cast<FocusScreen*>(item);
    if (item && !screen) {
        qWarning("what a FullScreenCover is to show is no FocusScreen");
        item->setVisible(false);
        item->deleteLater();
    }
    return screen;
}

void FullScreenCover::come(bool slides)
{
    if (!slides) {
        setCovering(true);
        return;
    }
    m_item->setY(slideLength());
    slide(m_item, 0);
}

void FullScreenCover::leave(FocusScreen* item, bool slides)
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

/** From where it is to `y`; at the end it covers what is beneath, or is destroyed. */
void FullScreenCover::slide(FocusScreen* item, qreal y)
{
    delete item->findChild<QVariantAnimation*>(QString(), Qt::FindDirectChildrenOnly);
    auto animation = new QVariantAnimation(item);
    animation->setStartValue(item->y());
    animation->setEndValue(y);
    animation->setDuration(qRound(slideTime * std::min(1.0, std::abs(y - item->y()) / slideLength())));
    animation->setEasingCurve(QEasingCurve::OutCubic);
    connect(animation, &QVariantAnimation::valueChanged, item,
            [this, item](const QVariant& value) { item->setY(onDevicePixels(*this, Qt::Vertical, value.toReal())); });
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

/** The window's height in points: beside the canvas there may be more to see than the canvas. */
qreal FullScreenCover::slideLength() const
{
    const qreal length = window() ? mapRectFromScene(QRectF(QPointF(), window()->size())).height() : height();
    return std::max(length, 1.0);
}
