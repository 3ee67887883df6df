#include "LazyStack.h"

#include "FocusScreen.h"
#include "FocusSection.h"
#include "ScrollArea.h"

#include <QElapsedTimer>
#include <QQmlContext>
#include <QScopedValueRollback>

namespace quillmere {

namespace {

constexpr qint64 createBudget = 4; // milliseconds for creating items ahead in one event loop iteration

/** The item inside `item` to focus: the current one of its section, else the first focusable one. */
Focusable* entrance(QQuickItem* item)
{
    if (auto focusable = qobject_cast<Focusable*>(item))
        return focusable;
    if (auto section = qobject_cast<FocusSection*>(item); section && section->current())
        return section->current();
    const auto children = item->childItems();
    for (QQuickItem* child : children) {
        if (Focusable* focusable = entrance(child))
            return focusable;
    }
    return nullptr;
}

} // namespace

LazyStack::LazyStack(QQuickItem* parent) : QQuickItem(parent), m_viewport(*this), m_items(*this)
{
    connect(&m_viewport, &StackViewport::changed, this, &LazyStack::populate);
}

LazyStack::~LazyStack() = default;

void LazyStack::setOrientation(Qt::Orientation orientation)
{
    if (m_orientation == orientation)
        return;
    m_orientation = orientation;
    updateEnclosingItems();
    readModel();
    Q_EMIT orientationChanged();
}

void LazyStack::setModel(CurrentRowModel* model)
{
    if (m_model == model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (model) {
        using Model = QAbstractItemModel;
        connect(model, &Model::modelReset, this, &LazyStack::readModel);
        connect(model, &Model::rowsInserted, this, &LazyStack::readModel);
        connect(model, &Model::rowsRemoved, this, &LazyStack::readModel);
        connect(model, &Model::rowsMoved, this, &LazyStack::readModel);
        connect(model, &Model::layoutChanged, this, &LazyStack::readModel);
        connect(model, &Model::dataChanged, this, &LazyStack::readModel);
        connect(model, &CurrentRowModel::currentRowChanged, this, &LazyStack::onCurrentRowChanged);
        connect(model, &QObject::destroyed, this, &LazyStack::readModel);
    }
    readModel();
    Q_EMIT modelChanged();
}

void LazyStack::setDelegate(QQmlComponent* delegate)
{
    if (m_delegate == delegate)
        return;
    m_delegate = delegate;
    m_isDelegateInvalid = false;
    m_items.discardUnless([](int) { return false; });
    populate();
    Q_EMIT delegateChanged();
}

void LazyStack::setExtent(qreal extent)
{
    if (m_extent == extent)
        return;
    m_extent = extent;
    readModel();
    Q_EMIT extentChanged();
}

void LazyStack::setMeasured(bool measured)
{
    if (m_isMeasured == measured)
        return;
    m_isMeasured = measured;
    readModel();
    Q_EMIT measuredChanged();
}

void LazyStack::setSpacing(qreal spacing)
{
    if (m_spacing == spacing)
        return;
    m_spacing = spacing;
    readModel();
    Q_EMIT spacingChanged();
}

void LazyStack::setCacheBuffer(qreal cacheBuffer)
{
    if (m_cacheBuffer == cacheBuffer)
        return;
    m_cacheBuffer = cacheBuffer;
    populate();
    Q_EMIT cacheBufferChanged();
}

void LazyStack::componentComplete()
{
    QQuickItem::componentComplete();
    updateEnclosingItems();
    readModel();
}

void LazyStack::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.topLeft() != oldGeometry.topLeft())
        populate();
}

void LazyStack::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemParentHasChanged && isComponentComplete())
        updateEnclosingItems();
    QQuickItem::itemChange(change, data);
}

/** Connects to the scroll areas, stacks and section that contain this stack. */
void LazyStack::updateEnclosingItems()
{
    m_viewport.reconnect();
    if (auto* const section = FocusSection::enclosingSection(this))
        section->addStack(*this);
}

void LazyStack::readModel()
{
    if (!isComponentComplete())
        return;
    FocusScreen* screen = screenFocusedInside();
    const QPointer<Focusable> focused = screen ? screen->focused() : nullptr;
    const QPointF oldPosition = focused ? focused->mapToItem(this, QPointF()) : QPointF();
    const StackRows before = std::exchange(m_rows, StackRows(m_model, m_extent, m_spacing));
    {
        // Prevents populate() from discarding the focused item while it is outside the visible range.
        const QScopedValueRollback populating(m_isPopulating, true);
        m_items.updateRows(before, m_rows, m_model, [this](QQuickItem& item, int row) { layOut(item, row); });
        m_items.forEach([this](const QQuickItem& item, int) { measure(item); });
        updateImplicitSize();
        const int row = m_items.rowContaining(focused);
        if (row >= 0 && row == currentRow() && focused->mapToItem(this, QPointF()) != oldPosition)
            screen->focus(focused, true);
    }
    m_isCurrentRowShown = false;
    populate();
    focusCurrentRow(screen);
}

/** Creates and discards items so that they match the visible range. */
void LazyStack::populate()
{
    if (!isComponentComplete())
        return;
    m_isDirty = true;
    if (m_isPopulating)
        return;
    const QScopedValueRollback populating(m_isPopulating, true);
    while (std::exchange(m_isDirty, false)) {
        showCurrentRow();
        discardFar();
        const QList<int> rows =
            missing(m_viewport.isNear() ? m_viewport.visibleRanges(0) : QList<StackViewport::Range>());
        for (auto row = rows.cbegin(); row != rows.cend() && !m_isDirty; ++row)
            createDelegateItem(*row);
    }
    if (!missing(m_viewport.visibleRanges(m_cacheBuffer)).isEmpty())
        m_cacheTimer.start(0, this);
}

void LazyStack::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_cacheTimer.timerId())
        return QQuickItem::timerEvent(event);
    QElapsedTimer turn;
    turn.start();
    const QList<int> rows = missing(m_viewport.visibleRanges(0) + m_viewport.visibleRanges(m_cacheBuffer));
    if (rows.isEmpty())
        m_cacheTimer.stop();
    {
        const QScopedValueRollback populating(m_isPopulating, true);
        m_isDirty = false;
        for (auto row = rows.cbegin(); row != rows.cend() && !m_isDirty && turn.elapsed() < createBudget; ++row)
            createDelegateItem(*row);
    }
    if (m_isDirty)
        populate();
}

void LazyStack::discardFar()
{
    QList<StackRows::Span> spans;
    for (const auto& range : m_viewport.visibleRanges(m_cacheBuffer))
        spans.append(m_rows.between(range.first, range.last));
    m_items.discardUnless([&](int row) {
        return isNearCurrentRow(row) ||
               std::any_of(spans.cbegin(), spans.cend(), [row](const auto& span) { return span.contains(row); });
    });
}

void LazyStack::createDelegateItem(int row)
{
    if (m_isDelegateInvalid)
        return;
    // Failure is a programming error and would be the same for every row.
    m_isDelegateInvalid =
        !m_items.create(row, *m_delegate, m_model, [this](QQuickItem& item, int at) { layOut(item, at); });
    if (QQuickItem* const item = m_items.at(row)) {
        const auto changed = m_orientation == Qt::Vertical ? &QQuickItem::heightChanged : &QQuickItem::widthChanged;
        connect(item, changed, this, [this, item] { measure(*item); });
        measure(*item);
    }
}

/** Sets the length of the item's row from the item, and moves the other items. */
void LazyStack::measure(const QQuickItem& item)
{
    const int row = m_isMeasured ? m_items.rowContaining(&item) : -1;
    if (row < 0 || !m_rows.setExtent(row, m_orientation == Qt::Vertical ? item.height() : item.width()))
        return;
    m_items.forEach([this](QQuickItem& moved, int at) { layOut(moved, at); });
    updateImplicitSize();
    populate();
}

void LazyStack::updateImplicitSize()
{
    if (m_orientation == Qt::Vertical)
        setImplicitHeight(m_rows.length());
    else
        setImplicitWidth(m_rows.length());
}

void LazyStack::layOut(QQuickItem& item, int row) const
{
    if (m_orientation == Qt::Vertical)
        item.setY(m_rows.at(row).first);
    else
        item.setX(m_rows.at(row).first);
}

/** Rows without an item among `ranges`, the current row and its neighbours, which the next arrow key needs. */
QList<int> LazyStack::missing(const QList<StackViewport::Range>& ranges) const
{
    // The screen that owns the delegate may be partly destroyed.
    const QQmlContext* context = m_delegate ? m_delegate->creationContext() : nullptr;
    if (!m_delegate || m_isDelegateInvalid || (context && !context->isValid()))
        return {};
    QList<int> rows;
    const auto add = [&](int first, int last) {
        for (int row = std::max(0, first); row <= std::min(last, m_rows.count() - 1); ++row) {
            if (!m_items.has(row) && !rows.contains(row))
                rows.append(row);
        }
    };
    if (currentRow() >= 0)
        add(currentRow() - 1, currentRow() + 1);
    for (const auto& range : ranges) {
        const StackRows::Span span = m_rows.between(range.first, range.last);
        add(span.first, span.last);
    }
    return rows;
}

/**
 * Scrolls to the current row, without animation, after a change and at creation, unless focus is in the scroll area.
 */
void LazyStack::showCurrentRow()
{
    ScrollArea* area = m_viewport.area();
    if (m_isCurrentRowShown || !area || m_rows.count() == 0)
        return;
    m_isCurrentRowShown = true;
    const FocusScreen* screen = FocusScreen::enclosingScreen(this);
    if (screen && screen->focused() && area->isAncestorOf(screen->focused()))
        return;
    const bool hasCurrentRow = currentRow() >= 0 && currentRow() < m_rows.count();
    const StackRows::Row& row = m_rows.at(hasCurrentRow ? currentRow() : 0);
    area->reveal(hasCurrentRow ? m_viewport.offset() + row.first : 0, m_viewport.offset() + row.last, true);
}

bool LazyStack::isNearCurrentRow(const QQuickItem* descendant) const
{
    const int row = m_items.rowContaining(descendant);
    return row >= 0 && isNearCurrentRow(row);
}

Focusable* LazyStack::currentFocusable() const
{
    QQuickItem* const item = m_items.at(currentRow());
    return item ? entrance(item) : nullptr;
}

void LazyStack::onFocusInside(Focusable& focused, bool)
{
    if (!m_model)
        return;
    if (const FocusScreen* screen = FocusScreen::enclosingScreen(this))
        connect(screen, &FocusScreen::focusedChanged, this, &LazyStack::updateHasFocus, Qt::UniqueConnection);
    m_model->setCurrentRow(m_items.rowContaining(&focused));
}

void LazyStack::updateHasFocus()
{
    if (m_model)
        m_model->setHasFocus(screenFocusedInside());
}

/** The enclosing screen if its focused item is inside this stack, else null. */
FocusScreen* LazyStack::screenFocusedInside() const
{
    FocusScreen* screen = FocusScreen::enclosingScreen(this);
    return screen && screen->focused() && isAncestorOf(screen->focused()) ? screen : nullptr;
}

void LazyStack::onCurrentRowChanged()
{
    m_isCurrentRowShown = false;
    populate();
    focusCurrentRow(screenFocusedInside());
    Q_EMIT currentRowChanged();
}

/** Moves the focus, which is in this stack, to the item of the current row. */
void LazyStack::focusCurrentRow(FocusScreen* screen)
{
    if (screen && m_items.rowContaining(screen->focused()) != currentRow())
        screen->focus(currentFocusable(), true);
}

} // namespace quillmere
