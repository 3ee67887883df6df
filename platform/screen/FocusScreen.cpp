#include "FocusScreen.h"

#include "FocusContainer.h"
#include "FocusSection.h"
#include "FocusTargets.h"
#include "Logging.h"
#include "ScrollArea.h"

#include <QKeyEvent>
#include <QQuickWindow>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

// Part of the viewport that one key press scrolls; the rest leaves a line or two visible to continue reading from.
constexpr qreal readingScrollStep = 0.8;

/** Type name of an item, without its namespace and the suffix added by the QML engine. */
QByteArray typeName(const QObject& item)
{
    const QByteArray name = QByteArray(item.metaObject()->className()).replace("_QML", "\n").split('\n').constFirst();
    return name.sliced(name.lastIndexOf(':') + 1);
}

bool isVertical(int arrow)
{
    return arrow == Qt::Key_Up || arrow == Qt::Key_Down;
}

} // namespace

FocusScreen::FocusScreen(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemIsFocusScope);
    if (logScreen().isInfoEnabled()) {
        connect(this, &FocusScreen::appeared, this,
                [this] { qCInfo(logScreen).noquote() << typeName(*this) << "appears"; });
        connect(this, &FocusScreen::disappeared, this,
                [this] { qCInfo(logScreen).noquote() << typeName(*this) << "disappears"; });
    }
}

FocusScreen::~FocusScreen()
{
    // Child items are removed, and contents shrink, after the members are destroyed.
    resetFocused();
}

FocusScreen* FocusScreen::enclosingScreen(const QQuickItem* item)
{
    for (QQuickItem* parent = item->parentItem(); parent; parent = parent->parentItem()) {
        if (auto* const screen = qobject_cast<FocusScreen*>(parent))
            return screen;
    }
    return nullptr;
}

void FocusScreen::acquireFocus()
{
    if (m_cover) {
        m_cover->acquireFocus();
        return;
    }
    if (qobject_cast<FocusScreen*>(scopedFocusItem()))
        scopedFocusItem()->setFocus(false);
    applyFocus();
    forceActiveFocus();
}

void FocusScreen::focus(Focusable* focusable, bool immediately)
{
    if (!focusable || enclosingScreen(focusable) != this)
        return;
    const bool isNew = m_focused != focusable;
    resetFocused();
    m_focused = focusable;
    m_windowConnection = connect(focusable, &QQuickItem::windowChanged, this, &FocusScreen::ensureFocusLater);
    if (!isInnerScreenActive())
        focusable->setFocus(true);
    for (QQuickItem* parent = focusable->parentItem(); parent && parent != this; parent = parent->parentItem()) {
        if (auto* const container = dynamic_cast<FocusContainer*>(parent))
            container->onFocusInside(*focusable, immediately);
    }
    storeRect();
    m_isFocusNotified = true;
    if (isNew) {
        qCInfo(logFocus).noquote() << typeName(*focusable) << "at" << m_lastRect << "of" << typeName(*this);
        Q_EMIT focusedChanged();
    }
}

bool FocusScreen::move(int arrow)
{
    ensureFocus();
    if (!isFocusedValid())
        return false;
    if (scrollFocused(arrow))
        return true;
    Focusable* const next = FocusTargets(*this).neighbour(*m_focused, arrow);
    focus(next);
    return next;
}

void FocusScreen::ensureFocus()
{
    if (hasFocus() && !isInnerScreenActive())
        applyFocus();
}

void FocusScreen::ensureFocusLater()
{
    // Whether the focus is valid is checked only later: the focused item may be half destroyed now.
    if (m_isEnsureQueued)
        return;
    m_isEnsureQueued = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isEnsureQueued = false;
            ensureFocus();
        },
        Qt::QueuedConnection);
}

void FocusScreen::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const bool isArrow = isVertical(key) || key == Qt::Key_Left || key == Qt::Key_Right;
    event->setAccepted(isArrow);
    if (isArrow)
        move(key);
}

void FocusScreen::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemActiveFocusHasChanged && data.boolValue && !scopedFocusItem())
        acquireFocus();
}

/** Whether a screen inside this one, or its cover, has the keys. */
bool FocusScreen::isInnerScreenActive() const
{
    return m_cover || qobject_cast<FocusScreen*>(scopedFocusItem());
}

bool FocusScreen::isFocusedValid() const
{
    return m_focused && m_focused->isFocusable() && enclosingScreen(m_focused) == this;
}

void FocusScreen::applyFocus()
{
    // While the screen is hidden, so are its items, and isFocusable() is false for all of them.
    if (!isVisible())
        return;
    if (isFocusedValid()) {
        m_focused->setFocus(true);
        storeRect();
    } else if (Focusable* const next = fallback()) {
        focus(next, m_lastRect.isNull());
    } else {
        releaseFocus();
    }
}

/** The item to focus when none is: the one nearest to the last focused item in its section, else the first. */
Focusable* FocusScreen::fallback() const
{
    const FocusTargets targets(*this);
    Focusable* const near = m_lastSection ? targets.nearest(*m_lastSection, m_lastRect) : nullptr;
    return near ? near : targets.first();
}

void FocusScreen::releaseFocus()
{
    if (scopedFocusItem())
        scopedFocusItem()->setFocus(false);
    resetFocused();
    if (std::exchange(m_isFocusNotified, false))
        Q_EMIT focusedChanged();
}

/** Clears the focused item and disconnects everything that tracks it. */
void FocusScreen::resetFocused()
{
    m_focused = nullptr;
    disconnect(m_windowConnection);
}

void FocusScreen::storeRect()
{
    m_lastSection = FocusSection::enclosingSection(m_focused);
    const QQuickItem* const plane = m_lastSection ? m_lastSection.data() : static_cast<QQuickItem*>(this);
    m_lastRect = restingRect(*m_focused, plane);
}

/** Scrolls inside a focused item that is longer than the viewport. */
bool FocusScreen::scrollFocused(int arrow)
{
    if (!isVertical(arrow))
        return false;
    for (QQuickItem* parent = m_focused->parentItem(); parent && parent != this; parent = parent->parentItem()) {
        auto* const area = qobject_cast<ScrollArea*>(parent);
        if (!area || area->orientation() != Qt::Vertical)
            continue;
        const QRectF rect = restingRect(*m_focused, area->contentItem());
        const qreal hidden = arrow == Qt::Key_Down ? rect.bottom() - area->targetPosition() - area->viewExtent()
                                                   : area->targetPosition() - rect.top();
        const qreal step = std::min(readingScrollStep * area->viewExtent(), hidden + area->revealMargin());
        if (hidden > 1 && area->scrollBy(arrow == Qt::Key_Down ? step : -step))
            return true;
    }
    return false;
}

} // namespace quillmere
