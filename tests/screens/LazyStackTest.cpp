#include "LazyStack.h"
#include "FocusScreen.h"
#include "FocusSection.h"
#include "ScrollArea.h"
#include "Stage.h"

#include <QAbstractListModel>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal extent = 250;
constexpr qreal pitch = 290; // with the spacing
constexpr qreal ahead = 600;
constexpr qreal room = 1780;

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

const QString stack = u"LazyStack { x: 6; orientation: Qt.Horizontal; extent: 250; spacing: 40; ahead: 600;"
                      "  model: screen.rows; place: screen.rows ? screen.rows.place : -1;"
                      "  onHeld: row => screen.rows.hold(row);"
                      "  delegate: Focusable { required property int index; required property string title;"
                      "    width: 250; height: 390 } }"_s;

/** Rows make nothing ahead while this exists, columns do. */
struct NoAheadInRows : QObject
{
    NoAheadInRows() { qApp->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto stack = event->type() == QEvent::Timer ? qobject_cast<LazyStack*>(watched) : nullptr;
        return stack && stack->orientation() == Qt::Horizontal;
    }
};

/** A screen with one row of things to focus in a section, and a button below. */
struct Shelf
{
    explicit Shelf(Rows* rows, const QString& content = stack)
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

} // namespace

/** A row or column of which only those items exist that are near what is shown. */
class LazyStackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyWhatIsNearExists_data();
    void onlyWhatIsNearExists();
    void aWalkFindsEveryRow_data();
    void aWalkFindsEveryRow();
    void whatIsInSightIsMadeAtOnceAndTheRestInTime();
    void aLongScrollMakesOnlyWhatItPasses();
    void rowsOfRowsFillWhenTheyAreInSight();
    void rowsHaveTheirOwnExtents();
    void itemsKnowTheirRoles();
    void aKeptItemIsTheSameOneWithNewValues();
    void equalKeysAreToldApartByTheirOrder();
    void theFocusGoesWhereThePlaceIs_data();
    void theFocusGoesWhereThePlaceIs();
    void aFocusElsewhereStaysThere();
    void whatMovedUnderTheFocusStaysInSight_data();
    void whatMovedUnderTheFocusStaysInSight();
    void theViewersMoveIsToldOnce();
    void theSectionIsEnteredAtThePlace();
    void aRowMadeAnewStandsAtItsPlaceAtOnce();
    void itIsWholeWithoutAnArea();
    void itFollowsItsAreaWhereverItIsPut();
    void aModelMayGo();
    void aModelMayChangeWhileItemsAreMade();
    void aDelegateMayChangeTheModelAsItIsMade();
    void aPlacePastTheEndIsNone();
    void aFaultyDelegateIsSaidOnce();
    void itDrawsNothingAtRest();
};

void LazyStackTest::onlyWhatIsNearExists_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {0, 1, 2, 9, 200, 10000})
        QTest::addRow("%d", count) << count;
}

void LazyStackTest::onlyWhatIsNearExists()
{
    QFETCH(int, count);
    Rows rows(count);
    Shelf shelf(&rows);
    QCOMPARE(shelf.row->width(), std::max(0.0, count * pitch - 40));
    for (const qreal position : {0.0, 1000.0, 1e9, 3000.0}) {
        shelf.area->reveal(position, position + 1, true);
        const qreal first = shelf.area->position() - ahead - 6;
        const qreal last = shelf.area->position() + room + ahead - 6;
        QList<int> near;
        for (int i = 0; i < count; ++i) {
            const bool isAtPlace = i < 2; // and the one beside it
            if (isAtPlace || (i * pitch + extent > first && i * pitch < last))
                near.append(i);
        }
        QTRY_COMPARE(shelf.existing(), near);
        QCOMPARE(shelf.row->existing(), near.size());
        for (const int i : near)
            QCOMPARE(shelf.row->itemAt(i)->x(), i * pitch);
    }
}

void LazyStackTest::aWalkFindsEveryRow_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {2, 20, 200})
        QTest::addRow("%d", count) << count;
}

void LazyStackTest::aWalkFindsEveryRow()
{
    QFETCH(int, count);
    Rows rows(count);
    Shelf shelf(&rows);
    QCOMPARE(shelf.focusedTitle(), u"0, round 0"_s);
    // At the end of a burst both the place and what is still shown may be seen.
    constexpr int most = int(2 * (room + 2 * ahead) / pitch) + 6;
    for (const int arrow : {Qt::Key_Right, Qt::Key_Left}) {
        for (int step = 1; step <= count; ++step) {
            shelf.stage.press(arrow);
            const int last = std::min(step, count - 1);
            const int at = arrow == Qt::Key_Right ? last : count - 1 - last;
            QCOMPARE(shelf.focusedTitle(), u"%1, round 0"_s.arg(at));
            QCOMPARE(rows.place(), at);
            QVERIFY(shelf.row->existing() <= most);
            const qreal x = shelf.screen->focused()->x() + 6 - shelf.area->aim();
            QVERIFY(x >= 0 && x + extent <= room);
            if (step % 7 == 0)
                QTest::qWait(20);
        }
    }
    QTRY_COMPARE(shelf.area->position(), shelf.area->aim());
}

void LazyStackTest::whatIsInSightIsMadeAtOnceAndTheRestInTime()
{
    Rows rows(200);
    Shelf shelf(&rows);
    shelf.area->reveal(100 * pitch, 100 * pitch + extent, true);
    const QList<int> atOnce = shelf.existing();
    QCOMPARE(atOnce, (QList<int>{0, 1, 94, 95, 96, 97, 98, 99, 100}));
    const QList<int> inTime{0, 1, 92, 93, 94, 95, 96, 97, 98, 99, 100, 101, 102};
    QTRY_COMPARE(shelf.existing(), inTime);
    shelf.stage.settle();
    QCOMPARE(shelf.existing(), inTime);
}

void LazyStackTest::aLongScrollMakesOnlyWhatItPasses()
{
    Rows rows(10000);
    Shelf shelf(&rows);
    shelf.area->reveal(5000 * pitch, 5001 * pitch);
    QVERIFY(shelf.row->itemAt(4998)); // where it will be seen, so that a key may go on from there
    int most = 0;
    connect(shelf.area, &ScrollArea::positionChanged, this, [&] { most = std::max(most, shelf.row->existing()); });
    QTRY_COMPARE(shelf.area->position(), shelf.area->aim());
    QVERIFY(most <= 25);
}

void LazyStackTest::rowsOfRowsFillWhenTheyAreInSight()
{
    Rows rows(20);
    Shelf shelf(&rows);
    auto column = static_cast<LazyStack*>(
        Stage::first(shelf.stage.put(u"FocusScreen { id: screen; width: 1920; height: 1080; property var rows;"
                                     "  ScrollArea { width: 1920; height: 1000; contentExtent: 10000;"
                                     "    LazyStack { extent: 500; ahead: 1500; model: screen.rows;"
                                     "      delegate: FocusSection { id: line; width: 1920; height: 500;"
                                     "        ScrollArea { width: 1780; height: 400; orientation: Qt.Horizontal;"
                                     "          LazyStack { orientation: Qt.Horizontal; extent: 250; spacing: 40;"
                                     "            model: screen.rows; delegate: Focusable { } } } } } } }"_s,
                                     {{u"rows"_s, QVariant::fromValue<QObject*>(&rows)}}),
                     "LazyStack"));
    const auto cards = [column](int row) {
        QQuickItem* line = column->itemAt(row);
        return line ? static_cast<LazyStack*>(Stage::first(line, "LazyStack"))->existing() : -1;
    };
    // In time all that exist are full; but not before.
    QTRY_COMPARE(cards(4), 7);
    NoAheadInRows noAhead;
    column->setPlace(10);
    QCOMPARE(cards(10), 7);
    QCOMPARE(cards(11), 7);
    QCOMPARE(cards(12), -1);
    auto area = static_cast<ScrollArea*>(column->parentItem()->parentItem());
    area->reveal(5000, 5500);
    QCOMPARE(cards(9), 7);
    QTRY_COMPARE(cards(13), 0);
    area->reveal(6500, 7000);
    QCOMPARE(cards(13), 7);
}

void LazyStackTest::rowsHaveTheirOwnExtents()
{
    Rows rows(4);
    rows.setExtents({100, 1, 2000, 50});
    Shelf shelf(&rows);
    QCOMPARE(shelf.row->implicitWidth(), 2151 + 3 * 40);
    QTRY_COMPARE(shelf.existing(), (QList<int>{0, 1, 2, 3}));
    QList<qreal> places;
    for (int i = 0; i < 4; ++i)
        places.append(shelf.row->itemAt(i)->x());
    QCOMPARE(places, (QList<qreal>{0, 140, 181, 2221}));
}

void LazyStackTest::itemsKnowTheirRoles()
{
    Rows rows(3);
    Shelf shelf(&rows);
    QQuickItem* item = shelf.row->itemAt(2);
    QCOMPARE(item->property("index").toInt(), 2);
    QCOMPARE(item->property("title").toString(), u"2, round 0"_s);
    QVERIFY(!item->property("key").isValid());
    QCOMPARE(item->parentItem(), shelf.row);
}

void LazyStackTest::aKeptItemIsTheSameOneWithNewValues()
{
    Rows rows(QStringList{u"a"_s, u"b"_s, u"c"_s});
    Shelf shelf(&rows);
    const QPointer<QQuickItem> a = shelf.row->itemAt(0);
    const QPointer<QQuickItem> b = shelf.row->itemAt(1);
    const QPointer<QQuickItem> c = shelf.row->itemAt(2);
    rows.change({u"c"_s, u"new"_s, u"a"_s}, -1);
    QCOMPARE(shelf.row->itemAt(0), c.data());
    QCOMPARE(shelf.row->itemAt(2), a.data());
    QCOMPARE(a->property("index").toInt(), 2);
    QCOMPARE(a->property("title").toString(), u"a, round 1"_s);
    QCOMPARE(a->x(), 2 * pitch);
    QCOMPARE(shelf.row->itemAt(1)->property("title").toString(), u"new, round 1"_s);
    QVERIFY(!b || !b->isVisible());
    QTRY_VERIFY(!b);
    QCOMPARE(shelf.row->existing(), 3);
}

void LazyStackTest::equalKeysAreToldApartByTheirOrder()
{
    Rows rows(QStringList{u"a"_s, u"a"_s, u"b"_s});
    Shelf shelf(&rows);
    QQuickItem* first = shelf.row->itemAt(0);
    QQuickItem* second = shelf.row->itemAt(1);
    rows.change({u"b"_s, u"a"_s, u"a"_s, u"a"_s}, -1);
    QCOMPARE(shelf.row->itemAt(1), first);
    QCOMPARE(shelf.row->itemAt(2), second);
    QVERIFY(shelf.row->itemAt(3) != second);
    QCOMPARE(shelf.row->itemAt(3)->property("index").toInt(), 3);
}

void LazyStackTest::theFocusGoesWhereThePlaceIs_data()
{
    QTest::addColumn<QStringList>("after");
    QTest::addColumn<int>("place");
    QTest::addColumn<QString>("focused");
    const auto letters = [](const QString& keys) { return keys.split(QString(), Qt::SkipEmptyParts); };
    // Before: abcde, with the focus on c.
    QTest::newRow("nothing changes") << letters(u"abcde"_s) << 2 << u"c"_s;
    QTest::newRow("others come before") << letters(u"xyzabcde"_s) << 5 << u"c"_s;
    QTest::newRow("others go") << letters(u"cde"_s) << 0 << u"c"_s;
    QTest::newRow("the order changes") << letters(u"edcba"_s) << 2 << u"c"_s;
    QTest::newRow("it becomes the last") << letters(u"abdec"_s) << 4 << u"c"_s;
    QTest::newRow("it goes") << letters(u"abde"_s) << 2 << u"d"_s;
    QTest::newRow("it goes with all after it") << letters(u"ab"_s) << 1 << u"b"_s;
    QTest::newRow("all others come") << letters(u"xyz"_s) << 1 << u"y"_s;
    QTest::newRow("the owner wants another") << letters(u"abcde"_s) << 0 << u"a"_s;
    QTest::newRow("the owner wants one far away") << letters(u"abcdefghijklmnopqrstuvwxyz"_s) << 25 << u"z"_s;
    QTest::newRow("none is left") << QStringList() << -1 << QString();
}

void LazyStackTest::theFocusGoesWhereThePlaceIs()
{
    QFETCH(QStringList, after);
    QFETCH(int, place);
    QFETCH(QString, focused);
    Rows rows(QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s});
    Shelf shelf(&rows);
    shelf.focusRow(2);
    QCOMPARE(rows.place(), 2);
    shelf.stage.settle();
    rows.change(after, place);
    QCOMPARE(rows.place(), place);
    if (focused.isEmpty()) {
        QTRY_COMPARE(shelf.screen->focused()->objectName(), u"below"_s);
        return;
    }
    // At once, so that the very next key finds it there.
    QCOMPARE(shelf.focusedTitle(), focused + u", round 1"_s);
    shelf.stage.settle();
    QCOMPARE(shelf.focusedTitle(), focused + u", round 1"_s);
    QCOMPARE(rows.place(), place);
    const qreal x = shelf.screen->focused()->x() + 6 - shelf.area->position();
    QVERIFY(x >= 0 && x + extent <= room);
}

void LazyStackTest::aFocusElsewhereStaysThere()
{
    Rows rows(QStringList{u"a"_s, u"b"_s, u"c"_s});
    Shelf shelf(&rows);
    auto below = shelf.screen->findChild<Focusable*>(u"below"_s);
    shelf.screen->focus(below);
    rows.change({u"x"_s, u"y"_s}, 1);
    QVERIFY(below->hasActiveFocus());
    rows.setPlace(0);
    QVERIFY(below->hasActiveFocus());
    rows.change({}, -1);
    shelf.stage.settle();
    QVERIFY(below->hasActiveFocus());
}

void LazyStackTest::whatMovedUnderTheFocusStaysInSight_data()
{
    QTest::addColumn<bool>("isSeen");
    QTest::newRow("while it is seen") << true;
    QTest::newRow("while another screen covers it") << false;
}

void LazyStackTest::whatMovedUnderTheFocusStaysInSight()
{
    QFETCH(bool, isSeen);
    Rows rows(3);
    Shelf shelf(&rows);
    shelf.focusRow(2);
    shelf.area->setVisible(isSeen);
    QStringList keys = rows.keys();
    for (int i = 100; i < 150; ++i)
        keys.prepend(QString::number(i));
    const QPointer<Focusable> focused = shelf.screen->focused();
    rows.change(keys, 52);
    QCOMPARE(shelf.screen->focused(), focused.data());
    QCOMPARE(focused->x(), 52 * pitch);
    QCOMPARE(shelf.area->position(), 52 * pitch + extent + 6 - room);
}

void LazyStackTest::theViewersMoveIsToldOnce()
{
    Rows rows(5);
    Shelf shelf(&rows);
    QSignalSpy held(shelf.row, &LazyStack::held);
    shelf.stage.press(Qt::Key_Right);
    QCOMPARE(held, QList<QVariantList>{{1}});
    shelf.screen->focus(static_cast<Focusable*>(shelf.row->itemAt(1)));
    rows.setPlace(3);
    QCOMPARE(shelf.focusedTitle(), u"3, round 0"_s);
    QCOMPARE(held.size(), 1);
}

void LazyStackTest::theSectionIsEnteredAtThePlace()
{
    Rows rows(200);
    Shelf shelf(&rows);
    auto section = static_cast<FocusSection*>(Stage::first(shelf.screen, "FocusSection"));
    shelf.screen->focus(shelf.screen->findChild<Focusable*>(u"below"_s));
    rows.setPlace(150);
    QCOMPARE(section->held(), static_cast<Focusable*>(shelf.row->itemAt(150)));
    shelf.stage.press(Qt::Key_Up);
    QCOMPARE(shelf.focusedTitle(), u"150, round 0"_s);
}

void LazyStackTest::aRowMadeAnewStandsAtItsPlaceAtOnce()
{
    Rows rows(200);
    rows.setPlace(100);
    Shelf shelf(&rows, u"Item { }"_s);
    QQmlComponent component(&shelf.stage.engine());
    component.setData(
        ("import QtQuick\nimport Quillmere.Screen\nScrollArea { id: area; property var rows; property list<real> stops;"
         "  x: 70; width: 1780; height: 400; orientation: Qt.Horizontal; contentExtent: line.width + 12; lead: 100;"
         "  onPositionChanged: stops.push(position);"
         "  LazyStack { id: line; x: 6; orientation: Qt.Horizontal; extent: 250; spacing: 40; ahead: 600;"
         "    model: area.rows; place: 100; delegate: Focusable { width: 250; height: 390 } } }"),
        {});
    std::unique_ptr<QObject> made(
        component.createWithInitialProperties({{u"rows"_s, QVariant::fromValue<QObject*>(&rows)}}));
    auto area = qobject_cast<ScrollArea*>(made.get());
    QVERIFY2(area, qPrintable(component.errorString()));
    QCOMPARE(area->position(), 100 * pitch + extent + 6 + 100 - room);
    area->setParentItem(shelf.screen);
    shelf.stage.settle();
    QCOMPARE(area->position(), 100 * pitch + extent + 6 + 100 - room);
    QVERIFY(!static_cast<LazyStack*>(Stage::first(area, "LazyStack"))->itemAt(0));
}

void LazyStackTest::itIsWholeWithoutAnArea()
{
    Rows rows(200);
    LazyStack stack;
    Shelf shelf(&rows);
    stack.setDelegate(shelf.row->delegate());
    stack.setExtent(100);
    stack.setModel(&rows);
    QCOMPARE(stack.implicitHeight(), 20000.0);
    QCOMPARE(stack.existing(), 0);
}

void LazyStackTest::itFollowsItsAreaWhereverItIsPut()
{
    Rows rows(200);
    Shelf shelf(&rows);
    QQuickItem outside;
    shelf.row->setParentItem(&outside);
    QCOMPARE(shelf.row->existing(), 2); // its place and the one beside
    auto between = new QQuickItem(shelf.area->contentItem());
    shelf.row->setParentItem(between);
    QTRY_COMPARE(shelf.row->existing(), 9);
    between->setX(-100 * pitch);
    QTRY_COMPARE(shelf.row->existing(), 11 + 2);
    QVERIFY(shelf.row->itemAt(103));
    shelf.area->setWidth(290);
    QTRY_COMPARE(shelf.row->existing(), 6 + 2);
}

void LazyStackTest::aModelMayGo()
{
    auto rows = std::make_unique<Rows>(20);
    Shelf shelf(rows.get());
    QVERIFY(shelf.row->existing() > 0);
    rows.reset();
    QCOMPARE(shelf.row->existing(), 0);
    QCOMPARE(shelf.row->implicitWidth(), 0.0);
    QTRY_COMPARE(shelf.screen->focused()->objectName(), u"below"_s);
}

void LazyStackTest::aModelMayChangeWhileItemsAreMade()
{
    Rows rows(200);
    Shelf shelf(&rows);
    for (const int count : {200, 1, 0, 3, 200}) {
        rows.change(Rows(count).keys(), count > 0 ? 0 : -1);
        QCoreApplication::processEvents();
        rows.change(Rows(count).keys().mid(1), -1);
    }
    QTRY_COMPARE(shelf.row->existing(), 9);
}

void LazyStackTest::aDelegateMayChangeTheModelAsItIsMade()
{
    Rows rows(200);
    rows.setDisturbances(20);
    Shelf shelf(&rows, u"LazyStack { orientation: Qt.Horizontal; extent: 250; spacing: 40; ahead: 600;"
                       "  model: screen.rows; delegate: Focusable { required property int index;"
                       "    required property string title; width: 250; height: 390;"
                       "    Component.onCompleted: screen.rows.disturb() } }"_s);
    QCOMPARE(rows.rowCount(), 180);
    QTRY_COMPARE(shelf.row->existing(), 9);
    QCOMPARE(shelf.existing(), (QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    for (int i = 0; i < 9; ++i) {
        QCOMPARE(shelf.row->itemAt(i)->property("index").toInt(), i);
        QCOMPARE(shelf.row->itemAt(i)->property("title").toString(), u"%1, round 20"_s.arg(i + 20));
        QCOMPARE(shelf.row->itemAt(i)->x(), i * pitch);
    }
}

void LazyStackTest::aPlacePastTheEndIsNone()
{
    Rows rows(3);
    Shelf shelf(&rows);
    shelf.focusRow(1);
    rows.setPlace(1000);
    QCOMPARE(shelf.focusedTitle(), u"1, round 0"_s);
    rows.change({u"x"_s, u"y"_s}, 1000);
    QTRY_VERIFY(shelf.focusedTitle().endsWith(u"round 1"_s));
    rows.change({u"x"_s, u"y"_s}, -7);
    QCOMPARE(shelf.row->existing(), 2);
}

void LazyStackTest::aFaultyDelegateIsSaidOnce()
{
    Rows rows(20);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"nothing can be shown: .*missing.*"_s));
    QTest::failOnWarning(QRegularExpression(u"nothing can be shown"_s));
    Shelf shelf(&rows, u"LazyStack { orientation: Qt.Horizontal; extent: 250; model: screen.rows;"
                       "  delegate: Item { required property int missing } }"_s);
    QCOMPARE(shelf.row->existing(), 0);
    rows.change({u"x"_s}, 0);
    QCOMPARE(shelf.row->existing(), 0);
    QTRY_COMPARE(shelf.row->childItems().size(), 0);
}

void LazyStackTest::itDrawsNothingAtRest()
{
    Rows rows(200);
    Shelf shelf(&rows);
    shelf.stage.press(Qt::Key_Right);
    shelf.stage.settle();
    const int frames = shelf.stage.frames();
    QTest::qWait(300);
    QCOMPARE(shelf.stage.frames(), frames);
}

QTEST_MAIN(LazyStackTest)
#include "LazyStackTest.moc"
