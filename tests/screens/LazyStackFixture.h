#pragma once

#include "CurrentRowModel.h"
#include "FocusFixture.h"
#include "LazyStack.h"

namespace quillmere {

inline constexpr qreal extent = 250;
inline constexpr qreal pitch = 290; // extent and spacing
inline constexpr qreal cacheBuffer = 600;
inline constexpr qreal viewportExtent = 1780;

/** A list of letters or numbers. */
class Rows : public CurrentRowModel
{
    Q_OBJECT

public:
    enum Role { KeyRole = Qt::UserRole, TitleRole, ExtentRole };

    explicit Rows(QStringList keys) : m_keys(std::move(keys)) {}
    explicit Rows(int count)
    {
        for (int i = 0; i < count; ++i)
            m_keys.append(QString::number(i));
    }

    QStringList keys() const { return m_keys; }
    void setExtents(const QList<qreal>& extents) { m_extents = extents; }

    void change(const QStringList& keys, int currentRow)
    {
        reset(currentRow, [&] {
            m_keys = keys;
            m_round += 1;
        });
    }
    void setRemovals(int count) { m_removals = count; }
    /** Removes the first row, at most as often as setRemovals() allows. */
    Q_INVOKABLE void removeFirstRow()
    {
        if (m_removals-- > 0)
            change(m_keys.mid(1), currentRow());
    }

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : int(m_keys.size()); }
    QVariant data(const QModelIndex& index, int role) const override
    {
        const QString& key = m_keys.at(index.row());
        if (role == ExtentRole)
            return m_extents.at(index.row());
        return role == KeyRole ? key : u"%1, round %2"_s.arg(key).arg(m_round);
    }
    QHash<int, QByteArray> roleNames() const override
    {
        QHash<int, QByteArray> names{{KeyRole, "key"}, {TitleRole, "title"}};
        if (!m_extents.isEmpty())
            names.insert(ExtentRole, "extent");
        return names;
    }

private:
    QStringList m_keys;
    QList<qreal> m_extents;
    int m_round = 0;
    int m_removals = 0;
};

inline const QString stack =
    u"LazyStack { x: 6; orientation: Qt.Horizontal; extent: 250; spacing: 40; cacheBuffer: 600;"
    "  model: screen.rows;"
    "  delegate: Focusable { required property int index; required property string title;"
    "    width: 250; height: 390 } }"_s;

/** A screen with a section that contains one row of Focusables, and a button below it. */
struct LazyStackFixture : TestScreen
{
    explicit LazyStackFixture(Rows* rows, const QString& content = stack)
        : screen(static_cast<FocusScreen*>(
              load(u"FocusScreen { id: screen; width: 1920; height: 1080; property var rows;"
                   "  FocusSection { width: 1920; height: 400; ScrollArea { x: 70; width: 1780; height: 400;"
                   "    orientation: Qt.Horizontal; %1 } }"
                   "  Focusable { objectName: 'below'; x: 70; y: 600; width: 300; height: 100 } }"_s.arg(content),
                   {{u"rows"_s, QVariant::fromValue<QObject*>(rows)}}))),
          area(static_cast<ScrollArea*>(first(screen, "ScrollArea"))),
          row(static_cast<LazyStack*>(first(screen, "LazyStack"))), below(screen->findChild<Focusable*>(u"below"_s))
    {
        const auto measure = [this] { area->setContentExtent(row->implicitWidth() + 12); };
        if (row) {
            measure();
            QObject::connect(row, &QQuickItem::implicitWidthChanged, area, measure);
        }
        screen->acquireFocus();
    }

    QList<int> existing() const
    {
        QList<int> rows;
        for (int i = 0; row->model() && i < row->model()->rowCount(); ++i) {
            if (row->itemAt(i))
                rows.append(i);
        }
        return rows;
    }
    /** The title shown by the row that has the active focus; empty if the focus is elsewhere. */
    QString focusedTitle() const
    {
        return screen->focused() && screen->focused()->hasActiveFocus()
                   ? screen->focused()->property("title").toString()
                   : QString();
    }
    void focusRow(int index) { screen->focus(static_cast<Focusable*>(row->itemAt(index))); }
    /** Whether the focused row is inside the viewport when the area has scrolled to this position. */
    bool isFocusVisible(qreal position) const
    {
        const qreal x = screen->focused()->x() + 6 - position;
        return x >= 0 && x + screen->focused()->width() <= viewportExtent;
    }

    FocusScreen* screen;
    ScrollArea* area;
    LazyStack* row;
    Focusable* below;
};

/** The rows outlive the screen that shows them. */
struct OwnedRows
{
    template<typename Content>
    explicit OwnedRows(const Content& content) : rows(content)
    {}

    Rows rows;
};

/** The same screen with rows of its own. `content` is their number or their keys. */
struct RowsFixture : OwnedRows, LazyStackFixture
{
    template<typename Content>
    explicit RowsFixture(const Content& content, const QString& qml = stack)
        : OwnedRows(content), LazyStackFixture(&rows, qml)
    {}
};

} // namespace quillmere
