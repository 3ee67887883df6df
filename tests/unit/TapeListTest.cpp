#include "TapeList.h"
#include "StoreOnScript.h"

#include <QSignalSpy>

namespace {

Shelf shelfOf(const QString& name, const QList<Tape>& tapes)
{
    Shelf shelf;
    shelf.name = name;
    for (const Tape& tape : tapes) {
        VHSCover cover;
        cover.id = tape.id;
        cover.title = tape.title;
        shelf.covers.append(cover);
        shelf.tapesByID.insert(tape.id, tape);
    }
    return shelf;
}

Tape tapeOf(qint64 id, const QString& title)
{
    Tape tape;
    tape.id = id;
    tape.title = title;
    return tape;
}

const Tape zoning = tapeOf(1, u"Zoning"_s);
const Tape parade = tapeOf(2, u"Parade"_s);
const Tape budget = tapeOf(3, u"Budget"_s);
const QString checking = u"Checking what's on the shelf…"_s;

} // namespace

/** The shop's plain list, on a store whose shelves the test sets up. */
class TapeListTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void eachShelfIsAHeadingAndItsTapesInOrder();
    void theFirstTapeHasTheFocus();
    void movingSkipsHeadingsAndStopsAtTheEnds();
    void theRowFollowsATapeThatMoves();
    void theNearestTapeTakesTheFocusOfOneThatIsGone_data();
    void theNearestTapeTakesTheFocusOfOneThatIsGone();
    void anEmptiedListHasNoRow();
    void ofTwoTapesWithOneIdTheRowStays();
    void aRefreshWithTheSameShelvesKeepsTheRow();
    void anotherMarketKeepsTheRowUntilItsTapesCome();
    void aLineBreakReadsAsASpace_data();
    void aLineBreakReadsAsASpace();
    void anEmptyListSaysWhy();
    void theChosenTapePlaysAndStaysChosen();
    void nothingPlaysFromAnEmptyList();

private:
    void show(const QList<Shelf>& shelves) { (*m_house)->setShelves(shelves); }
    QStringList rows() const;
    QString current() const;

    std::unique_ptr<StoreOnScript> m_house;
    std::unique_ptr<TapeList> m_list;
};

void TapeListTest::init()
{
    m_house = std::make_unique<StoreOnScript>();
    m_list = std::make_unique<TapeList>();
    m_list->setStore(m_house->store.get());
}

void TapeListTest::cleanup()
{
    m_list.reset();
    m_house.reset();
}

/** What the rows read, headings in brackets. */
QStringList TapeListTest::rows() const
{
    QStringList all;
    for (int row = 0; row < m_list->rowCount(); ++row) {
        const QString text = m_list->index(row).data(TapeList::TextRole).toString();
        all.append(m_list->index(row).data(TapeList::IsTapeRole).toBool() ? text : u'[' + text + u']');
    }
    return all;
}

QString TapeListTest::current() const
{
    return m_list->currentTape().title;
}

void TapeListTest::eachShelfIsAHeadingAndItsTapesInOrder()
{
    show({shelfOf(u"A"_s, {zoning, parade}), shelfOf(u"B"_s, {budget})});
    QCOMPARE(rows(), (QStringList{u"[A]"_s, u"Zoning"_s, u"Parade"_s, u"[B]"_s, u"Budget"_s}));
}

void TapeListTest::theFirstTapeHasTheFocus()
{
    QCOMPARE(m_list->currentRow(), -1);
    QCOMPARE(m_list->currentTape().id, Tape().id);
    show({shelfOf(u"A"_s, {zoning, parade})});
    QCOMPARE(m_list->currentRow(), 1);
    QCOMPARE(current(), u"Zoning"_s);
}

void TapeListTest::movingSkipsHeadingsAndStopsAtTheEnds()
{
    show({shelfOf(u"A"_s, {zoning, parade}), shelfOf(u"B"_s, {budget})});
    QList<int> visited;
    for (const int step : {-1, 1, 1, 1, -1, -1, -1}) {
        m_list->move(step);
        visited.append(m_list->currentRow());
    }
    QCOMPARE(visited, (QList<int>{1, 2, 4, 4, 2, 1, 1}));
}

void TapeListTest::theRowFollowsATapeThatMoves()
{
    show({shelfOf(u"A"_s, {zoning, parade}), shelfOf(u"B"_s, {budget})});
    m_list->move(1);
    show({shelfOf(u"New"_s, {tapeOf(9, u"Fresh"_s)}), shelfOf(u"A"_s, {zoning}), shelfOf(u"B"_s, {budget, parade})});
    QCOMPARE(m_list->currentRow(), 6);
    QCOMPARE(current(), u"Parade"_s);
}

void TapeListTest::theNearestTapeTakesTheFocusOfOneThatIsGone_data()
{
    QTest::addColumn<QList<Shelf>>("shelves");
    QTest::addColumn<QString>("tape");
    QTest::newRow("the one that moved up to its row") << QList{shelfOf(u"A"_s, {zoning, budget})} << budget.title;
    QTest::newRow("the one below the heading that moved up to its row")
        << QList{shelfOf(u"A"_s, {zoning}), shelfOf(u"B"_s, {budget})} << budget.title;
    QTest::newRow("the last one when it was the last") << QList{shelfOf(u"A"_s, {zoning})} << zoning.title;
}

void TapeListTest::theNearestTapeTakesTheFocusOfOneThatIsGone()
{
    QFETCH(const QList<Shelf>, shelves);
    show({shelfOf(u"A"_s, {zoning, parade}), shelfOf(u"B"_s, {budget})});
    m_list->move(1);
    show(shelves);
    QTEST(current(), "tape");
}

void TapeListTest::anEmptiedListHasNoRow()
{
    show({shelfOf(u"A"_s, {zoning, parade})});
    m_list->move(1);
    show({});
    QCOMPARE(m_list->rowCount(), 0);
    QCOMPARE(m_list->currentRow(), -1);
    m_list->move(1);
    m_list->move(-1);
    QCOMPARE(m_list->currentRow(), -1);
    show({shelfOf(u"A"_s, {zoning, parade})});
    QCOMPARE(m_list->currentRow(), 1);
}

void TapeListTest::ofTwoTapesWithOneIdTheRowStays()
{
    const QList shelves{shelfOf(u"A"_s, {zoning, parade}), shelfOf(u"B"_s, {zoning})};
    show(shelves);
    m_list->move(1);
    m_list->move(1);
    QCOMPARE(m_list->currentRow(), 4);
    show(shelves);
    QCOMPARE(m_list->currentRow(), 4);
}

void TapeListTest::aRefreshWithTheSameShelvesKeepsTheRow()
{
    const QStringList titles{u"Zoning"_s, u"Parade"_s, u"Budget"_s};
    m_house->loadOnce(titles);
    m_list->move(1);
    const int row = m_list->currentRow();
    const QString tape = current();
    const QStringList before = rows();
    QSignalSpy reset(m_list.get(), &TapeList::modelReset);
    m_house->loadOnce(titles);
    QVERIFY(!reset.isEmpty());
    QCOMPARE(rows(), before);
    QCOMPARE(m_list->currentRow(), row);
    QCOMPARE(current(), tape);
}

void TapeListTest::anotherMarketKeepsTheRowUntilItsTapesCome()
{
    m_house->loadOnce({u"Zoning"_s, u"Parade"_s});
    m_list->move(1);
    const int row = m_list->currentRow();
    const QStringList before = rows();
    (*m_house)->setMarket(u"springfield"_s);
    QCOMPARE(m_list->currentRow(), row);
    QSignalSpy reset(m_list.get(), &TapeList::modelReset);
    m_house->answerTapes({u"Zoning"_s, u"Parade"_s}, u"/api/tv/tapes?page=1&per_page=200&market=springfield"_s);
    QTRY_VERIFY(!reset.isEmpty());
    QCOMPARE(rows(), before);
    QCOMPARE(m_list->currentRow(), row);
}

void TapeListTest::aLineBreakReadsAsASpace_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("line feed") << u"Zoning\nand more"_s;
    QTest::newRow("carriage return and line feed") << u"Zoning\r\nand more"_s;
    QTest::newRow("carriage return") << u"Zoning\rand more"_s;
    QTest::newRow("line separator") << u"Zoning\u2028and more"_s;
    QTest::newRow("paragraph separator") << u"Zoning\u2029and more"_s;
    QTest::newRow("several") << u"Zoning\n\nand more"_s;
}

void TapeListTest::aLineBreakReadsAsASpace()
{
    QFETCH(const QString, title);
    show({shelfOf(u"A"_s, {tapeOf(1, title)})});
    QCOMPARE(rows(), (QStringList{u"[A]"_s, u"Zoning and more"_s}));
    QCOMPARE(current(), title);
}

void TapeListTest::anEmptyListSaysWhy()
{
    Store& store = *m_house->store;
    QSignalSpy changed(m_list.get(), &TapeList::emptyTextChanged);
    QCOMPARE(m_list->emptyText(), checking);
    store.setLastError(u"The hub answered 503."_s);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(m_list->emptyText(), u"The hub answered 503."_s);
    store.setLastError(QString());
    QCOMPARE(m_list->emptyText(), checking);
    changed.clear();
    store.setLastError(u"The hub answered 503."_s);
    show({shelfOf(u"A"_s, {zoning})});
    QCOMPARE(changed.count(), 2);
    QCOMPARE(m_list->emptyText(), QString());
}

void TapeListTest::theChosenTapePlaysAndStaysChosen()
{
    show({shelfOf(u"A"_s, {zoning, parade})});
    m_list->move(1);
    QSignalSpy playing(m_list.get(), &TapeList::playingChanged);
    m_list->setPlaying(true);
    QCOMPARE(playing.count(), 1);
    QVERIFY(m_list->isPlaying());
    QCOMPARE(m_list->chosen().title, u"Parade"_s);
    show({shelfOf(u"A"_s, {zoning})});
    QVERIFY(m_list->isPlaying());
    QCOMPARE(m_list->chosen().title, u"Parade"_s);
    m_list->setPlaying(false);
    QCOMPARE(playing.count(), 2);
    QVERIFY(!m_list->isPlaying());
}

void TapeListTest::nothingPlaysFromAnEmptyList()
{
    QSignalSpy playing(m_list.get(), &TapeList::playingChanged);
    m_list->setPlaying(true);
    QVERIFY(!m_list->isPlaying());
    QCOMPARE(playing.count(), 0);
}

QTEST_GUILESS_MAIN(TapeListTest)
#include "TapeListTest.moc"
