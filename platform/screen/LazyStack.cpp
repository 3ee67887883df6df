#include "LazyStack.h"

#include "FocusScreen.h"

#include <QElapsedTimer>
#include <QQmlContext>
#include <QScopedValueRollback>

namespace {

constexpr qint64 turnBudget = 4; // milliseconds of making items ahead, in one turn of the event loop

} // namespace

LazyStack::LazyStack(QQuickItem* parent) : QQuickItem(parent), m_sight(*this), m_items(*this)
{
    connect(&m_sight, &StackSight::changed, this, &LazyStack::populate);
}

LazyStack::~LazyStack() = default;

void LazyStack::setOrientation(Qt::Orientation orientation)
{
    if (m_orientation == orientation)
        return;
    m_orientation = orientation;
    m_sight.follow();
    readModel();
    Q_EMIT orientationChanged();
}

void LazyStack::setModel(QAbstractItemModel* model)
{
    if (m_model == model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    m_isModelChanging = false;
    if (model) {
        using Model = QAbstractItemModel;
        connect(model, &Model::modelAboutToBeReset, this, [this] { m_isModelChanging = true; });
        connect(model, &Model::modelReset, this, &LazyStack::readModel);
        connect(model, &Model::rowsInserted, this, &LazyStack::readModel);
        connect(model, &Model::rowsRemoved, this, &LazyStack::readModel);
        connect(model, &Model::rowsMoved, this, &LazyStack::readModel);
        connect(model, &Model::layoutChanged, this, &LazyStack::readModel);
        connect(model, &Model::dataChanged, this, &LazyStack::readModel);
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
    m_isRefused = false;
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

void LazyStack::setAhead(qreal ahead)
{
    if (m_ahead == ahead)
        return;
    m_ahead = ahead;
    populate();
    Q_EMIT aheadChanged();
}

void LazyStack::setPlace(int place)
{
    if (m_place == place)
        return;
    m_place = place;
    m_isPlaceShown = false;
    if (!m_isModelChanging) {
        populate();
        rememberPlace();
        if (!m_isMovingFocus)
            focusPlace(screenFocusedHere());
    }
    Q_EMIT placeChanged();
}

void LazyStack::componentComplete()
{
    QQuickItem::componentComplete();
    m_sight.follow();
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
        m_sight.follow();
    QQuickItem::itemChange(change, data);
}

void LazyStack::readModel()
{
    m_isModelChanging = false;
    if (!isComponentComplete())
        return;
    FocusScreen* screen = screenFocusedHere();
    const QPointer<Focusable> focused = screen ? screen->focused() : nullptr;
    const QPointF stood = focused ? focused->mapToItem(this, QPointF()) : QPointF();
    const StackRows before = std::exchange(m_rows, StackRows(m_model, m_extent, m_spacing));
    {
        // Until the area shows what has the focus, that would count as far away.
        const QScopedValueRollback populating(m_isPopulating, true);
        m_items.keep(before, m_rows, m_model, [this](QQuickItem& item, int row) { layOut(item, row); });
        m_items.forEach([this](const QQuickItem& item, int) { measure(item); });
        showLength();
        if (m_items.rowAround(focused) >= 0 && focused->mapToItem(this, QPointF()) != stood)
            moveFocus(screen, focused);
    }
    m_isPlaceShown = false;
    populate();
    rememberPlace();
    if (m_items.rowAround(focused) >= 0)
        // The owner may be about to tell that the place has moved with it.
        QMetaObject::invokeMethod(
            this, [this] { focusPlace(screenFocusedHere()); }, Qt::QueuedConnection);
    else
        focusPlace(screen);
}

/** Brings what exists up to date with what is near what is shown. */
void LazyStack::populate()
{
    if (!isComponentComplete())
        return;
    m_isOutdated = true;
    if (m_isPopulating)
        return;
    const QScopedValueRollback populating(m_isPopulating, true);
    while (std::exchange(m_isOutdated, false)) {
        showPlaceAtOnce();
        discardFar();
        const QList<int> rows = missing(m_sight.isNear() ? m_sight.shown(0) : QList<StackSight::Stretch>());
        for (auto row = rows.cbegin(); row != rows.cend() && !m_isOutdated; ++row)
            make(*row);
    }
    if (!missing(m_sight.shown(m_ahead)).isEmpty())
        m_makingAhead.start(0, this);
}

void LazyStack::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_makingAhead.timerId())
        return QQuickItem::timerEvent(event);
    QElapsedTimer turn;
    turn.start();
    const QList<int> rows = missing(m_sight.shown(0) + m_sight.shown(m_ahead));
    if (rows.isEmpty())
        m_makingAhead.stop();
    {
        const QScopedValueRollback populating(m_isPopulating, true);
        m_isOutdated = false;
        for (auto row = rows.cbegin(); row != rows.cend() && !m_isOutdated && turn.elapsed() < turnBudget; ++row)
            make(*row);
    }
    if (m_isOutdated)
        populate();
}

void LazyStack::discardFar()
{
    QList<StackRows::Span> spans;
    for (const auto& stretch : m_sight.shown(m_ahead))
        spans.append(m_rows.between(stretch.first, stretch.last));
    m_items.discardUnless([&](int row) {
        return isNearPlace(row) ||
               std::any_of(spans.cbegin(), spans.cend(), [row](const auto& span) { return span.contains(row); });
    });
}

void LazyStack::make(int row)
{
    if (m_isRefused)
        return;
    // The programmer's mistake, which would be the same for every row.
    m_isRefused = !m_items.make(row, *m_delegate, m_model, [this](QQuickItem& item, int at) { layOut(item, at); });
    if (QQuickItem* const item = m_items.at(row)) {
        const auto changed = m_orientation == Qt::Vertical ? &QQuickItem::heightChanged : &QQuickItem::widthChanged;
        connect(item, changed, this, [this, item] { measure(*item); });
        measure(*item);
    }
    if (row == m_place)
        rememberPlace();
}

/** The item's row becomes as long as it is, and the others move. */
void LazyStack::measure(const QQuickItem& item)
{
    const int row = m_isMeasured ? m_items.rowAround(&item) : -1;
    if (row < 0 || !m_rows.setExtent(row, m_orientation == Qt::Vertical ? item.height() : item.width()))
        return;
    m_items.forEach([this](QQuickItem& moved, int at) { layOut(moved, at); });
    showLength();
    populate();
}

void LazyStack::showLength()
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

/** Rows that have no item, of those in some stretches and those at the place and beside it: a move finds those. */
QList<int> LazyStack::missing(const QList<StackSight::Stretch>& stretches) const
{
    // The screen that the delegate stands on may be in the middle of going.
    const QQmlContext* context = m_delegate ? m_delegate->creationContext() : nullptr;
    if (!m_delegate || m_isRefused || (context && !context->isValid()))
        return {};
    QList<int> rows;
    const auto add = [&](int first, int last) {
        for (int row = std::max(0, first); row <= std::min(last, m_rows.count() - 1); ++row) {
            if (!m_items.has(row) && !rows.contains(row))
                rows.append(row);
        }
    };
    if (m_place >= 0)
        add(m_place - 1, m_place + 1);
    for (const auto& stretch : stretches) {
        const StackRows::Span span = m_rows.between(stretch.first, stretch.last);
        add(span.first, span.last);
    }
    return rows;
}
