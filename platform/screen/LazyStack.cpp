#include "LazyStack.h"

#include "FocusScreen.h"
#include "FocusSection.h"
#include "MadeItem.h"
#include "ScrollArea.h"

#include <QElapsedTimer>
#include <QQmlProperty>
#include <QScopedValueRollback>

namespace {

constexpr qint64 turnBudget = 4; // milliseconds of making items ahead, in one turn of the event loop

/** Whether `item` is `ancestor` or stands in it. */
bool isWithin(const QQuickItem* ancestor, const QQuickItem* item)
{
    return ancestor && item && (ancestor == item || ancestor->isAncestorOf(item));
}

Focusable* firstFocusable(QQuickItem* item)
{
    if (auto focusable = qobject_cast<Focusable*>(item))
        return focusable;
    const auto children = item->childItems();
    for (QQuickItem* child : children) {
        if (Focusable* focusable = firstFocusable(child))
            return focusable;
    }
    return nullptr;
}

FocusSection* firstSection(QQuickItem* item)
{
    if (auto section = qobject_cast<FocusSection*>(item))
        return section;
    const auto children = item->childItems();
    for (QQuickItem* child : children) {
        if (FocusSection* section = firstSection(child))
            return section;
    }
    return nullptr;
}

} // namespace

LazyStack::LazyStack(QQuickItem* parent) : QQuickItem(parent) {}

LazyStack::~LazyStack() = default;

void LazyStack::setOrientation(Qt::Orientation orientation)
{
    if (m_orientation == orientation)
        return;
    m_orientation = orientation;
    followSurroundings();
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
    for (QQuickItem* item : std::as_const(m_items))
        discard(item);
    m_items.clear();
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
    followSurroundings();
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
    if (change == ItemParentHasChanged)
        followSurroundings();
    QQuickItem::itemChange(change, data);
}

/** Finds the scroll area around this and listens to all that decides what of this it shows. */
void LazyStack::followSurroundings()
{
    if (!isComponentComplete())
        return;
    for (const auto& connection : std::as_const(m_surroundings))
        disconnect(connection);
    m_surroundings.clear();
    m_area = nullptr;
    for (QQuickItem* item = parentItem(); item && !m_area; item = item->parentItem()) {
        m_surroundings << connect(item, &QQuickItem::parentChanged, this, &LazyStack::followSurroundings);
        auto area = qobject_cast<ScrollArea*>(item);
        if (area && area->orientation() == m_orientation)
            m_area = area;
        else
            m_surroundings << connect(item, &QQuickItem::xChanged, this, &LazyStack::populate)
                           << connect(item, &QQuickItem::yChanged, this, &LazyStack::populate);
    }
    if (m_area)
        m_surroundings << connect(m_area, &ScrollArea::positionChanged, this, &LazyStack::populate)
                       << connect(m_area, &ScrollArea::aimChanged, this, &LazyStack::populate)
                       << connect(m_area, &QQuickItem::widthChanged, this, &LazyStack::populate)
                       << connect(m_area, &QQuickItem::heightChanged, this, &LazyStack::populate);
    populate();
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
        keepItems(before);
        if (m_orientation == Qt::Vertical)
            setImplicitHeight(m_rows.length());
        else
            setImplicitWidth(m_rows.length());
        if (focused && focused->isVisible() && focused->mapToItem(this, QPointF()) != stood)
            moveFocus(screen, focused);
    }
    populate();
    rememberPlace();
    if (focused && focused->isVisible())
        // The owner may be about to tell that the place has moved with it.
        QMetaObject::invokeMethod(
            this, [this] { focusPlace(screenFocusedHere()); }, Qt::QueuedConnection);
    else
        focusPlace(screen);
}

/** After a change of the model: those whose row is still there stay, and take its number and values. */
void LazyStack::keepItems(const StackRows& before)
{
    QHash<StackRows::Identity, QQuickItem*> left;
    for (auto i = m_items.cbegin(); i != m_items.cend(); ++i)
        left.insert(before.at(i.key()).identity, i.value());
    m_items.clear();
    for (int row = 0; row < m_rows.count() && !left.isEmpty(); ++row) {
        if (QQuickItem* item = left.take(m_rows.at(row).identity))
            m_items.insert(row, item);
    }
    for (QQuickItem* item : std::as_const(left))
        discard(item);
    const auto kept = m_items;
    for (auto i = kept.cbegin(); i != kept.cend(); ++i) {
        if (m_items.value(i.key()) != i.value())
            continue; // the model has changed again
        layOut(i.value(), i.key());
        const QVariantMap values = roles(i.value(), i.key());
        for (auto value = values.cbegin(); value != values.cend(); ++value)
            QQmlProperty::write(i.value(), value.key(), value.value());
    }
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
    showPlaceAtOnce();
    while (std::exchange(m_isOutdated, false)) {
        discardFar();
        const QList<int> rows = missing(0);
        for (auto row = rows.cbegin(); row != rows.cend() && !m_isOutdated; ++row)
            make(*row);
    }
    if (!missing(m_ahead).isEmpty())
        m_makingAhead.start(0, this);
}

void LazyStack::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_makingAhead.timerId())
        return QQuickItem::timerEvent(event);
    QElapsedTimer turn;
    turn.start();
    const QList<int> rows = missing(m_ahead);
    if (rows.isEmpty())
        m_makingAhead.stop();
    const QScopedValueRollback populating(m_isPopulating, true);
    m_isOutdated = false;
    for (auto row = rows.cbegin(); row != rows.cend() && !m_isOutdated && turn.elapsed() < turnBudget; ++row)
        make(*row);
}

void LazyStack::discardFar()
{
    const QList<StackRows::Span> spans = shown(m_ahead);
    for (auto i = m_items.begin(); i != m_items.end();) {
        const int row = i.key();
        const bool isWanted = isNearPlace(row) || std::any_of(spans.cbegin(), spans.cend(),
                                                              [row](const auto& span) { return span.contains(row); });
        if (!isWanted)
            discard(i.value());
        i = isWanted ? std::next(i) : m_items.erase(i);
    }
}

void LazyStack::make(int row)
{
    if (m_isRefused)
        return;
    QQuickItem* begun = nullptr;
    const auto begin = [&](QQuickItem& item) {
        begun = &item;
        m_items.insert(row, begun);
        layOut(begun, row);
        return roles(begun, row);
    };
    if (!madeItem(*m_delegate, *this, begin)) {
        // The programmer's mistake; it would be the same for every row.
        m_isRefused = true;
        m_items.removeIf([begun](const auto& item) { return item.value() == begun; });
    } else if (row == m_place) {
        rememberPlace();
    }
}

void LazyStack::discard(QQuickItem* item)
{
    // It may be in the middle of telling that it was selected.
    item->setVisible(false);
    item->deleteLater();
}

QVariantMap LazyStack::roles(const QQuickItem* item, int row) const
{
    const auto has = [item](const char* name) { return item->metaObject()->indexOfProperty(name) >= 0; };
    QVariantMap values;
    if (has("index"))
        values.insert(QStringLiteral("index"), row);
    const auto names = m_model ? m_model->roleNames() : QHash<int, QByteArray>();
    for (auto role = names.cbegin(); role != names.cend(); ++role) {
        if (has(role.value()))
            values.insert(QString::fromUtf8(role.value()), m_model->index(row, 0).data(role.key()));
    }
    return values;
}

void LazyStack::layOut(QQuickItem* item, int row) const
{
    if (m_orientation == Qt::Vertical)
        item->setY(m_rows.at(row).first);
    else
        item->setX(m_rows.at(row).first);
}

/** Where this begins in the content of the scroll area. */
qreal LazyStack::offset() const
{
    const QPointF origin = mapToItem(m_area->contentItem(), QPointF());
    return m_orientation == Qt::Vertical ? origin.y() : origin.x();
}

/** The rows in sight now and those that will be when the scroll under way has ended, with a margin on either side. */
QList<StackRows::Span> LazyStack::shown(qreal margin) const
{
    if (!m_area)
        return {};
    QList<StackRows::Span> spans;
    for (const qreal position : {m_area->aim(), m_area->position()}) {
        const qreal first = position - offset();
        spans.append(m_rows.between(first - margin, first + m_area->viewExtent() + margin));
    }
    return spans;
}

/** Rows without an item that should have one. Those beside the place count, so that a move finds them. */
QList<int> LazyStack::missing(qreal margin) const
{
    if (!m_delegate || m_isRefused)
        return {};
    QList<int> rows;
    const auto add = [&](int first, int last) {
        for (int row = std::max(0, first); row <= std::min(last, m_rows.count() - 1); ++row) {
            if (!m_items.contains(row) && !rows.contains(row))
                rows.append(row);
        }
    };
    if (m_place >= 0)
        add(m_place - 1, m_place + 1);
    const auto spans = shown(margin);
    for (const auto& span : spans)
        add(span.first, span.last);
    return rows;
}

/** A row that was made anew stands from the beginning where it was left. */
void LazyStack::showPlaceAtOnce()
{
    if (m_isPlaceShown || !m_area || m_rows.count() == 0)
        return;
    m_isPlaceShown = true;
    if (m_orientation != Qt::Horizontal || m_place < 0 || m_place >= m_rows.count())
        return;
    const StackRows::Row& row = m_rows.at(m_place);
    m_area->reveal(offset() + row.first, offset() + row.last, true);
}

QQuickItem* LazyStack::itemAt(int row) const
{
    return m_items.value(row);
}

int LazyStack::existing() const
{
    return int(m_items.size());
}

void LazyStack::hold(const QQuickItem* descendant)
{
    for (auto i = m_items.cbegin(); i != m_items.cend(); ++i) {
        if (!isWithin(i.value(), descendant))
            continue;
        const int row = i.key();
        if (row == m_place || m_isMovingFocus)
            return;
        // The place follows the focus here, not the other way round.
        const QScopedValueRollback moving(m_isMovingFocus, true);
        Q_EMIT held(row);
        return;
    }
}

/** The section around this is entered at the place, also when the item there is a new one. */
void LazyStack::rememberPlace() const
{
    QQuickItem* item = m_items.value(m_place);
    FocusSection* section = item ? FocusSection::around(this) : nullptr;
    if (!section || isWithin(item, section->held()))
        return;
    if (Focusable* focusable = firstFocusable(item))
        section->setHeld(focusable);
}

/** The screen around this if its focus is in here. */
FocusScreen* LazyStack::screenFocusedHere() const
{
    FocusScreen* screen = FocusScreen::around(this);
    return screen && isWithin(this, screen->focused()) ? screen : nullptr;
}

/** Gives the focus, which was in this stack, to the item at the place. */
void LazyStack::focusPlace(FocusScreen* screen)
{
    QQuickItem* item = m_items.value(m_place);
    if (!screen || !item || isWithin(item, screen->focused()))
        return;
    const FocusSection* section = firstSection(item);
    Focusable* held = section ? section->held() : nullptr;
    if (Focusable* focusable = held ? held : firstFocusable(item))
        moveFocus(screen, focusable);
}

void LazyStack::moveFocus(FocusScreen* screen, Focusable* focusable)
{
    const QScopedValueRollback moving(m_isMovingFocus, true);
    screen->focus(focusable, true);
}
