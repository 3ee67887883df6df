#pragma once

#include "FocusScreen.h"
#include "FocusSection.h"
#include "LazyStack.h"
#include "ScrollArea.h"
#include "Stage.h"

#include <QAbstractListModel>
#include <QTest>

using namespace Qt::StringLiterals;

inline constexpr qreal extent = 250;
inline constexpr qreal pitch = 290; // with the spacing
inline constexpr qreal ahead = 600;
inline constexpr qreal room = 1780;

/** Rows of letters or numbers, and the viewer's place among them. */
class Rows : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int place READ place NOTIFY placeChanged FINAL)

public:
    enum Role { KeyRole = Qt::UserRole, TitleRole, ExtentRole };

    explicit Rows(QStringList keys) : m_keys(std::move(keys)) {}
    explicit Rows(int count)
    {
        for (int i = 0; i < count; ++i)
            m_keys.append(QString::number(i));
    }

    int place() const { return m_place; }
    QStringList keys() const { return m_keys; }
    void setExtents(const QList<qreal>& extents) { m_extents = extents; }

    void change(const QStringList& keys, int place)
    {
        beginResetModel();
        m_keys = keys;
        m_round += 1;
        m_place = place;
        endResetModel();
        Q_EMIT placeChanged();
    }
    void setPlace(int place)
    {
        m_place = place;
        Q_EMIT placeChanged();
    }
    Q_INVOKABLE void hold(int row)
    {
        if (row != m_place)
            setPlace(row);
    }
    void setDisturbances(int count) { m_disturbances = count; }
    /** Drops the first row, a few times. */
    Q_INVOKABLE void disturb()
    {
        if (m_disturbances-- > 0)
            change(m_keys.mid(1), m_place);
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

Q_SIGNALS:
    void placeChanged();

private:
    QStringList m_keys;
    QList<qreal> m_extents;
    int m_place = -1;
    int m_round = 0;
    int m_disturbances = 0;
};

inline constexpr auto stack = u"LazyStack { x: 6; orientation: Qt.Horizontal; extent: 250; spacing: 40; ahead: 600;"
                              "  model: screen.rows; place: screen.rows ? screen.rows.place : -1;"
                              "  onHeld: row => screen.rows.hold(row);"
                              "  delegate: Focusable { required property int index; required property string title;"
                              "    width: 250; height: 390 } }";

/** A screen with one row of things to focus in a section, and a button below. */
struct Shelf
{
    explicit Shelf(Rows* rows, const QString& content = QString::fromUtf16(stack))
        : screen(static_cast<FocusScreen*>(
              stage.put(u"FocusScreen { id: screen; width: 1920; height: 1080; property var rows;"
                        "  FocusSection { width: 1920; height: 400; ScrollArea { x: 70; width: 1780; height: 400;"
                        "    orientation: Qt.Horizontal; %1 } }"
                        "  Focusable { objectName: 'below'; x: 70; y: 600; width: 300; height: 100 } }"_s.arg(content),
                        {{u"rows"_s, QVariant::fromValue<QObject*>(rows)}}))),
          area(static_cast<ScrollArea*>(Stage::first(screen, "ScrollArea"))),
          row(static_cast<LazyStack*>(Stage::first(screen, "LazyStack")))
    {
        const auto measure = [this] { area->setContentExtent(row->implicitWidth() + 12); };
        if (row) {
            measure();
            QObject::connect(row, &QQuickItem::implicitWidthChanged, area, measure);
        }
        screen->takeFocus();
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
    /** The row that has the keys, by what the screen shows there; nothing when it is elsewhere. */
    QString focusedTitle() const
    {
        return screen->focused() && screen->focused()->hasActiveFocus()
                   ? screen->focused()->property("title").toString()
                   : QString();
    }
    void focusRow(int index) { screen->focus(static_cast<Focusable*>(row->itemAt(index))); }

    Stage stage;
    FocusScreen* screen;
    ScrollArea* area;
    LazyStack* row;
};
