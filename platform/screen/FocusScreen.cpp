#include "FocusScreen.h"

#include "FocusSection.h"
#include "FocusTargets.h"
#include "LazyStack.h"
#include "Logging.h"
#include "ScrollArea.h"

#include <QKeyEvent>
#include <QQuickWindow>

#include <algorithm>
#include <tuple>
#include <utility>

namespace {

// Of the view, by one press; the rest keeps a line or two in sight to read on from.
constexpr qreal readingStep = 0.8;

/** The name of an item's type, without what the QML engine appends. */
QByteArray typeName(const QObject& item)
{
    return QByteArray(item.metaObject()->className()).replace("_QML", "\n").split('\n').constFirst();
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
    // The things on it leave, and its contents shrink, after its own members have gone.
    forget();
}

FocusScreen* FocusScreen::around(const QQuickItem* item)
{
    for (QQuickItem* parent = item->parentItem(); parent; parent = parent->parentItem()) {
        if (auto* const screen = qobject_cast<FocusScreen*>(parent))
            return screen;
    }
    return nullptr;
}

void FocusScreen::takeFocus()
{
    if (m_cover) {
        m_cover->takeFocus();
        return;
    }
    if (qobject_cast<FocusScreen*>(scopedFocusItem()))
        scopedFocusItem()->setFocus(false);
    settle();
    forceActiveFocus();
}

void FocusScreen::focus(Focusable* focusable, bool atOnce)
{
    if (!focusable || around(focusable) != this)
        return;
    const bool isNew = m_focused != focusable;
    forget();
    m_focused = focusable;
    m_leaving = connect(focusable, &QQuickItem::windowChanged, this, &FocusScreen::keepFocusSoon);
    if (!isYielding())
        focusable->setFocus(true);
    for (QQuickItem* parent = focusable->parentItem(); parent && parent != this; parent = parent->parentItem()) {
        if (auto* const section = qobject_cast<FocusSection*>(parent))
            section->setHeld(focusable);
        else if (auto* const stack = qobject_cast<LazyStack*>(parent))
            stack->hold(focusable);
        else if (auto* const area = qobject_cast<ScrollArea*>(parent)) {
            reveal(*area, atOnce);
            follow(*area);
        }
    }
    remember();
    m_toldOfFocus = true;
    if (isNew) {
        qCInfo(logFocus).noquote() << typeName(*focusable) << "at" << m_place << "of" << typeName(*this);
        Q_EMIT focusedChanged();
    }
}

bool FocusScreen::move(int arrow)
{
    keepFocus();
    if (!canKeep())
        return false;
    if (readOn(arrow))
        return true;
    Focusable* const next = FocusTargets(*this).neighbour(*m_focused, arrow);
    focus(next);
    return next;
}

void FocusScreen::keepFocus()
{
    if (hasFocus() && !isYielding())
        settle();
}

void FocusScreen::keepFocusSoon()
{
    // canKeep() is called only later: the focused item may be half destroyed now.
    if (m_keepingSoon)
        return;
    m_keepingSoon = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_keepingSoon = false;
            keepFocus();
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
        takeFocus();
}

/** Whether a screen within this one has the keys. */
bool FocusScreen::isYielding() const
{
    return m_cover || qobject_cast<FocusScreen*>(scopedFocusItem());
}

bool FocusScreen::canKeep() const
{
    return m_focused && m_focused->canHoldFocus() && around(m_focused) == this;
}

void FocusScreen::settle()
{
    // While it is hidden so is everything on it, which tells nothing of what can hold the focus.
    if (!isVisible())
        return;
    if (canKeep()) {
        m_focused->setFocus(true);
        remember();
    } else if (Focusable* const next = successor()) {
        focus(next, m_place.isNull());
    } else {
        letGo();
    }
}

/** What gets the focus when nothing holds it. */
Focusable* FocusScreen::successor() const
{
    const FocusTargets targets(*this);
    Focusable* const near = m_section ? targets.nearest(*m_section, m_place) : nullptr;
    return near ? near : targets.first();
}

void FocusScreen::letGo()
{
    if (scopedFocusItem())
        scopedFocusItem()->setFocus(false);
    forget();
    if (std::exchange(m_toldOfFocus, false))
        Q_EMIT focusedChanged();
}

/** Ends all that is done for the focused thing's sake. */
void FocusScreen::forget()
{
    m_focused = nullptr;
    disconnect(m_leaving);
    for (const auto& length : std::exchange(m_lengths, {}))
        disconnect(length);
    m_isReading = false;
}

void FocusScreen::remember()
{
    m_section = FocusSection::around(m_focused);
    const QQuickItem* const plane = m_section ? m_section.data() : static_cast<QQuickItem*>(this);
    m_place = rectOfRest(*m_focused, plane);
}

void FocusScreen::reveal(ScrollArea& area, bool atOnce) const
{
    const auto span = [&area](const QQuickItem& item) {
        const QRectF rect = rectOfRest(item, area.contentItem());
        return area.orientation() == Qt::Vertical ? std::pair(rect.top(), rect.bottom())
                                                  : std::pair(rect.left(), rect.right());
    };
    auto [first, last] = span(*m_focused);
    const FocusSection* const section = FocusSection::around(m_focused);
    if (section && area.isAncestorOf(section)) {
        const auto whole = span(*section);
        if (whole.second - whole.first <= area.viewExtent())
            std::tie(first, last) = whole;
    }
    area.reveal(first, last, atOnce);
}

/** What grows or goes before the focused thing moves it: it stays in sight. */
void FocusScreen::follow(ScrollArea& area)
{
    m_lengths.append(connect(&area, &ScrollArea::contentExtentChanged, this, [this, &area] {
        if (canKeep() && !m_isReading)
            reveal(area, false);
    }));
}

/** Scrolls on through a focused thing that is longer than its view. */
bool FocusScreen::readOn(int arrow)
{
    if (!isVertical(arrow))
        return false;
    for (QQuickItem* parent = m_focused->parentItem(); parent && parent != this; parent = parent->parentItem()) {
        auto* const area = qobject_cast<ScrollArea*>(parent);
        if (!area || area->orientation() != Qt::Vertical)
            continue;
        const QRectF rect = rectOfRest(*m_focused, area->contentItem());
        const qreal hidden =
            arrow == Qt::Key_Down ? rect.bottom() - area->aim() - area->viewExtent() : area->aim() - rect.top();
        const qreal step = std::min(readingStep * area->viewExtent(), hidden + area->lead());
        if (hidden > 1 && area->scrollBy(arrow == Qt::Key_Down ? step : -step)) {
            m_isReading = true;
            return true;
        }
    }
    return false;
}
