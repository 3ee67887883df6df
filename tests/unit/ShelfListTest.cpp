#include "ShelfList.h"
#include "ShelvesOfTapes.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

/** The shop's shelves as models, and the viewer's place in them. */
class ShelfListTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void shelvesAndCassettesStandInTheirOrder();
    void aCoverWithoutItsTapeIsNotShownButCounted();
    void aTitleLineReadsOnOneLine();
    void aCassetteIsHeardByTheBeginningOfAnEndlessTitle();
    void beforeTheFirstMoveThereIsNoPlace();
    void theViewersMovesAreThePlace();
    void aMoveToNowhereIsNone();
    void anEqualShelfKeepsItsRowWhereverItStands();
    void aShelfWhoseCoversChangedIsAnotherRow_data();
    void aShelfWhoseCoversChangedIsAnotherRow();
    void aShelfThatIsGoneTakesItsRowWithIt();
    void twoShelvesOfOneNameAreTwoRows();
    void theSameShelvesKeepThePlace();
    void thePlaceFollowsItsTape_data();
    void thePlaceFollowsItsTape();
    void theRowUnderTheFocusGoesOnThoughItChanged();
    void withoutTheFocusAChangedShelfBeginsAtItsFirst();
    void onlyTheRowUnderTheFocusKeepsItsPlaceThroughAChange();
    void inAnotherMarketEveryRowBeginsAtItsFirst();
    void inAnotherMarketTheFocusStaysOnItsTape_data();
    void inAnotherMarketTheFocusStaysOnItsTape();
    void aRowThatLosesItsTapesLosesItsPlace();
    void aFresherTapeIsTakenThoughItsIdIsTheSame();
    void aFresherTapeOfAnEqualCoverIsTaken();
    void whileTheShelvesChangeNoMoveIsTaken();
    void theRowsHaveChangedBeforeTheListSaysSo();
    void thePlaceIsToldBeforeTheChangeIsThrough();
    void anEmptiedListStartsAnew();

private:
    void show(const QString& text) { m_list->show(shelvesOf(text)); }
    /** Walks to a card, as the stacks report it. */
    void goTo(int shelf, int cassette);
    /** Walks away from the shelves, as the stack of shelves reports it. */
    void goToTheCounter() { m_list->setHasFocus(false); }
    int keyOf(int shelf) const { return m_list->index(shelf).data(ShelfList::KeyRole).toInt(); }
    /** The place in each row. */
    QList<int> places() const;
    /** Where the place is: "shelf name: id", and nothing while there is none. */
    QString place() const;
    QString contents() const;

    std::unique_ptr<ShelfList> m_list;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void ShelfListTest::init()
{
    m_tester.reset();
    m_list = std::make_unique<ShelfList>();
    m_tester = std::make_unique<QAbstractItemModelTester>(m_list.get());
}

void ShelfListTest::goTo(int shelf, int cassette)
{
    m_list->row(shelf)->setPlace(cassette);
    m_list->setPlace(shelf);
    m_list->setHasFocus(true);
}

QList<int> ShelfListTest::places() const
{
    QList<int> all;
    for (int shelf = 0; shelf < m_list->rowCount(); ++shelf)
        all.append(m_list->row(shelf)->place());
    return all;
}

QString ShelfListTest::place() const
{
    const CassetteRow* row = m_list->row(m_list->place());
    if (!row)
        return {};
    const VHSCover cover = row->content().covers.value(row->place());
    return row->name() + u": "_s + QString::number(cover.id);
}

QString ShelfListTest::contents() const
{
    QStringList all;
    for (int shelf = 0; shelf < m_list->rowCount(); ++shelf) {
        const auto* row = m_list->index(shelf).data(ShelfList::CassettesRole).value<CassetteRow*>();
        QStringList line{row->name() + u':'};
        for (int cassette = 0; cassette < row->rowCount(); ++cassette) {
            const QModelIndex index = row->index(cassette);
            const auto cover = index.data(CassetteRow::CoverRole).value<VHSCover>();
            line.append(index.data(CassetteRow::KeyRole) == cover.id ? QString::number(cover.id) : u"?"_s);
        }
        all.append(line.join(u' '));
    }
    return all.join(u"; "_s);
}

void ShelfListTest::shelvesAndCassettesStandInTheirOrder()
{
    show(u"B: 4 2; A: 9007199254740993 1"_s);
    QCOMPARE(contents(), u"B: 4 2; A: 9007199254740993 1"_s);
    const QAbstractItemModelTester tester(m_list->row(0));
    QCOMPARE(m_list->row(0)->count(), 2);
    QCOMPARE(m_list->row(0)->caption(), u"City Council · 2024"_s);
    QCOMPARE(m_list->roleNames(),
             (QHash<int, QByteArray>{{ShelfList::KeyRole, "key"}, {ShelfList::CassettesRole, "cassettes"}}));
    show(u"A: 1"_s);
    QCOMPARE(contents(), u"A: 1"_s);
}

void ShelfListTest::aCoverWithoutItsTapeIsNotShownButCounted()
{
    Shelf shelf = shelfOf(u"A"_s, {1, 2, 3});
    shelf.tapesByID.remove(2);
    m_list->show({shelf});
    QCOMPARE(contents(), u"A: 1 3"_s);
    QCOMPARE(m_list->row(0)->count(), 3);
    QCOMPARE(m_list->row(0)->content().tapes.at(1).title, u"Tape 3"_s);
}

void ShelfListTest::aCassetteIsHeardByTheBeginningOfAnEndlessTitle()
{
    Shelf shelf = shelfOf(u"A"_s, {1, 2});
    shelf.covers[0].title = u"Port\nHarbour"_s;
    shelf.covers[1].title = QString(100000, u't');
    m_list->show({shelf});
    const CassetteRow* row = m_list->row(0);
    QCOMPARE(row->index(0).data(CassetteRow::TitleRole).toString(), u"Port Harbour"_s);
    QCOMPARE(row->index(1).data(CassetteRow::TitleRole).toString(), QString(1000, u't') + u'…');
}

void ShelfListTest::aTitleLineReadsOnOneLine()
{
    Shelf shelf = shelfOf(u"Money\non the Table"_s, {1});
    shelf.covers.first().bodyName = u"City\r\nCouncil"_s;
    m_list->show({shelf});
    QCOMPARE(m_list->row(0)->name(), u"Money on the Table"_s);
    QCOMPARE(m_list->row(0)->caption(), u"City Council · 2024"_s);
}

void ShelfListTest::beforeTheFirstMoveThereIsNoPlace()
{
    show(u"A: 1 2; B: 3"_s);
    QCOMPARE(m_list->place(), -1);
    QCOMPARE(m_list->row(0)->place(), -1);
    show(u"A: 1; B: 3"_s);
    QCOMPARE(m_list->place(), -1);
    QCOMPARE(m_list->row(0)->place(), -1);
}

void ShelfListTest::theViewersMovesAreThePlace()
{
    show(u"A: 1 2; B: 3"_s);
    QSignalSpy moved(m_list.get(), &ShelfList::placeChanged);
    goTo(0, 1);
    QCOMPARE(place(), u"A: 2"_s);
    goTo(1, 0);
    QCOMPARE(place(), u"B: 3"_s);
    QCOMPARE(m_list->row(0)->place(), 1);
    QCOMPARE(moved.count(), 2);
    goTo(1, 0);
    QCOMPARE(moved.count(), 2);
}

void ShelfListTest::aMoveToNowhereIsNone()
{
    show(u"A: 1 2"_s);
    goTo(0, 1);
    m_list->setPlace(1);
    m_list->setPlace(-1);
    m_list->row(0)->setPlace(2);
    m_list->row(0)->setPlace(-1);
    QCOMPARE(place(), u"A: 2"_s);
}

void ShelfListTest::anEqualShelfKeepsItsRowWhereverItStands()
{
    show(u"A: 1; B: 2"_s);
    const CassetteRow* a = m_list->row(0);
    const CassetteRow* b = m_list->row(1);
    const QList<int> keys{keyOf(0), keyOf(1)};
    show(u"B: 2; New: 7; A: 1"_s);
    QCOMPARE(m_list->row(0), b);
    QCOMPARE(m_list->row(2), a);
    QCOMPARE((QList<int>{keyOf(2), keyOf(0)}), keys);
    QVERIFY(!keys.contains(keyOf(1)));
    QCOMPARE(contents(), u"B: 2; New: 7; A: 1"_s);
}

void ShelfListTest::aShelfWhoseCoversChangedIsAnotherRow_data()
{
    QTest::addColumn<QString>("after");
    QTest::newRow("one more") << u"A: 1 2 3"_s;
    QTest::newRow("one fewer") << u"A: 1"_s;
    QTest::newRow("in another order") << u"A: 2 1"_s;
    QTest::newRow("all others") << u"A: 3 4"_s;
    QTest::newRow("none") << u"A:"_s;
}

void ShelfListTest::aShelfWhoseCoversChangedIsAnotherRow()
{
    QFETCH(QString, after);
    show(u"A: 1 2"_s);
    const int key = keyOf(0);
    QSignalSpy gone(m_list->row(0), &QObject::destroyed);
    show(after);
    QCOMPARE(contents(), after);
    QVERIFY(keyOf(0) != key);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(gone.count(), 1);
}

void ShelfListTest::aShelfThatIsGoneTakesItsRowWithIt()
{
    show(u"A: 1; B: 2"_s);
    QSignalSpy gone(m_list->row(0), &QObject::destroyed);
    show(u"B: 2"_s);
    QCOMPARE(gone.count(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(gone.count(), 1);
    QCOMPARE(m_list->findChildren<CassetteRow*>().size(), 1);
}

void ShelfListTest::twoShelvesOfOneNameAreTwoRows()
{
    show(u"A: 1; A: 2"_s);
    const CassetteRow* first = m_list->row(0);
    const CassetteRow* second = m_list->row(1);
    QVERIFY(first != second);
    show(u"A: 1; A: 2; A: 3"_s);
    QCOMPARE(m_list->row(0), first);
    QCOMPARE(m_list->row(1), second);
    QCOMPARE(contents(), u"A: 1; A: 2; A: 3"_s);
}

void ShelfListTest::theSameShelvesKeepThePlace()
{
    show(u"A: 1 2 3; B: 4 5"_s);
    goTo(0, 2);
    goTo(1, 1);
    show(u"A: 1 2 3; B: 4 5"_s);
    QCOMPARE(place(), u"B: 5"_s);
    QCOMPARE(m_list->row(0)->place(), 2);
}

void ShelfListTest::thePlaceFollowsItsTape_data()
{
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("place");
    // Before: "A: 1 2 3; B: 4 5 6; C: 7 8", with the viewer at 5.
    QTest::newRow("along its shelf") << u"A: 1 2 3; B: 9 8 6 4 5; C: 7"_s << u"B: 5"_s;
    QTest::newRow("with its shelf") << u"B: 4 5 6; A: 1 2 3; C: 7 8"_s << u"B: 5"_s;
    QTest::newRow("a new shelf above") << u"New: 9; A: 1 2 3; B: 4 5 6; C: 7 8"_s << u"B: 5"_s;
    QTest::newRow("to another shelf") << u"A: 1 2 3; B: 4 6; C: 7 8 5"_s << u"C: 5"_s;
    QTest::newRow("to another shelf, its own gone") << u"A: 1 5 2; C: 7"_s << u"A: 5"_s;
    QTest::newRow("to a new shelf") << u"A: 1; New: 6 5"_s << u"New: 5"_s;
    QTest::newRow("of two, the one that stayed") << u"A: 5; B: 5 5; C: 5"_s << u"B: 5"_s;
    QTest::newRow("of two, the one on its shelf") << u"A: 5 1; B: 6 4 5; C: 7"_s << u"B: 5"_s;
    QTest::newRow("gone: the one that came to its row") << u"A: 1 2 3; B: 4 6; C: 7 8"_s << u"B: 6"_s;
    QTest::newRow("gone: the last, where it was") << u"A: 1 2 3; B: 4; C: 7 8"_s << u"B: 4"_s;
    QTest::newRow("gone, on a shelf that moved") << u"B: 4 6; A: 1 2 3"_s << u"B: 6"_s;
    QTest::newRow("gone with its shelf: the shelf at its place") << u"A: 1 2 3; C: 7 8"_s << u"C: 8"_s;
    QTest::newRow("gone with its shelf, bounded") << u"A: 1 2 3; C: 7"_s << u"C: 7"_s;
    QTest::newRow("gone with its shelf and those after") << u"A: 1"_s << u"A: 1"_s;
    QTest::newRow("its shelf is empty: the next") << u"A: 1 2 3; B:; C: 7 8"_s << u"C: 8"_s;
    QTest::newRow("its shelf and the next are empty") << u"A: 1 2 3; B:; C:"_s << u"A: 2"_s;
    QTest::newRow("another market altogether") << u"X: 21; Y: 22 23; Z: 24"_s << u"Y: 23"_s;
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("only empty shelves") << u"A:; B:"_s << QString();
}

void ShelfListTest::thePlaceFollowsItsTape()
{
    QFETCH(QString, after);
    show(u"A: 1 2 3; B: 4 5 6; C: 7 8"_s);
    goTo(1, 1);
    show(after);
    QTEST(place(), "place");
    QCOMPARE(contents(), after);
}

void ShelfListTest::theRowUnderTheFocusGoesOnThoughItChanged()
{
    show(u"A: 1 2 3; B: 4 5 6"_s);
    goTo(1, 1);
    const CassetteRow* b = m_list->row(1);
    const int key = keyOf(1);
    show(u"B: 9 4 5 6; A: 1 2 3"_s);
    QCOMPARE(m_list->row(0), b);
    QCOMPARE(keyOf(0), key);
    show(u"B: 9 4"_s);
    QCOMPARE(m_list->row(0), b);
    QCOMPARE(place(), u"B: 4"_s);
}

void ShelfListTest::withoutTheFocusAChangedShelfBeginsAtItsFirst()
{
    show(u"A: 1 2 3; B: 4 5 6"_s);
    goTo(1, 2);
    goTo(0, 2);
    goToTheCounter();
    show(u"A: 1 2 3 9; B: 4 5 6"_s);
    QCOMPARE(places(), (QList<int>{-1, 2}));
    QCOMPARE(m_list->place(), -1);
    show(u"B: 4 5 6"_s);
    QCOMPARE(places(), QList<int>{2});
}

void ShelfListTest::onlyTheRowUnderTheFocusKeepsItsPlaceThroughAChange()
{
    show(u"A: 1 2 3; B: 4 5 6; C: 7; D: 8 9"_s);
    goTo(1, 2);
    goTo(0, 1);
    goTo(3, 1);
    goTo(2, 0);
    show(u"A: 3 2; B: 9 4; C: 10 7; D: 8 9"_s);
    QCOMPARE(places(), (QList<int>{-1, -1, 1, 1}));
    QCOMPARE(place(), u"C: 7"_s);
    // The shelf that gets the focus of one that is gone has its own place.
    show(u"A: 3 2; B: 9 4; D: 8 9"_s);
    QCOMPARE(place(), u"D: 9"_s);
}

void ShelfListTest::inAnotherMarketEveryRowBeginsAtItsFirst()
{
    show(u"A: 1 2 3; B: 4 5 6; C: 7 8"_s);
    goTo(2, 1);
    goTo(1, 2);
    goTo(0, 2);
    goToTheCounter();
    const QList<int> keys{keyOf(0), keyOf(1), keyOf(2)};
    // Also a shelf of which no tape is from elsewhere.
    m_list->show(shelvesOf(u"A: 1 2 3; B: 5 6; C: 7 8"_s), ShelfList::Market::Another);
    QCOMPARE(places(), (QList<int>{-1, -1, -1}));
    QCOMPARE(m_list->place(), -1);
    for (int shelf = 0; shelf < 3; ++shelf)
        QVERIFY(!keys.contains(keyOf(shelf)));
}

void ShelfListTest::inAnotherMarketTheFocusStaysOnItsTape_data()
{
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("place");
    // Before: "A: 1 2 3; B: 4 5 6; C: 7 8", with the viewer at 5, after a walk to 3 and 8.
    QTest::newRow("on its shelf") << u"A: 1 2 3; B: 5 6"_s << u"B: 5"_s;
    QTest::newRow("on an equal shelf") << u"A: 1; B: 4 5 6"_s << u"B: 5"_s;
    QTest::newRow("on another shelf") << u"A: 1; C: 8 5"_s << u"C: 5"_s;
    QTest::newRow("gone: the first of its shelf") << u"A: 1 2 3; B: 21 4 6; C: 7 8"_s << u"B: 21"_s;
    QTest::newRow("gone with its shelf: the first of the next") << u"A: 1 2 3; C: 7 8"_s << u"C: 7"_s;
    QTest::newRow("gone with all shelves") << u"X: 21 22"_s << u"X: 21"_s;
    QTest::newRow("nothing is left") << QString() << QString();
}

void ShelfListTest::inAnotherMarketTheFocusStaysOnItsTape()
{
    QFETCH(QString, after);
    QFETCH(QString, place);
    show(u"A: 1 2 3; B: 4 5 6; C: 7 8"_s);
    goTo(0, 2);
    goTo(2, 1);
    goTo(1, 1);
    m_list->show(shelvesOf(after), ShelfList::Market::Another);
    QCOMPARE(this->place(), place);
    for (int shelf = 0; shelf < m_list->rowCount(); ++shelf)
        QCOMPARE(m_list->row(shelf)->place() >= 0, shelf == m_list->place());
}

void ShelfListTest::aRowThatLosesItsTapesLosesItsPlace()
{
    show(u"A: 1 2; B: 3"_s);
    goTo(0, 1);
    goTo(1, 0);
    show(u"A:; B: 3"_s);
    QCOMPARE(m_list->row(0)->place(), -1);
    show(u"A: 1 2; B: 3"_s);
    QCOMPARE(m_list->row(0)->place(), -1);
    QCOMPARE(place(), u"B: 3"_s);
}

void ShelfListTest::aFresherTapeIsTakenThoughItsIdIsTheSame()
{
    show(u"A: 1 2"_s);
    goTo(0, 0);
    QSignalSpy reset(m_list->row(0), &CassetteRow::modelReset);
    Shelf shelf = shelfOf(u"A"_s, {1, 2});
    shelf.covers.last().title = u"Fresher"_s;
    shelf.tapesByID[2].title = u"Fresher"_s;
    m_list->show({shelf});
    QCOMPARE(reset.count(), 1);
    QCOMPARE(m_list->row(0)->content().tapes.at(1).title, u"Fresher"_s);
    QCOMPARE(m_list->row(0)->index(1).data(CassetteRow::CoverRole).value<VHSCover>().title, u"Fresher"_s);
}

void ShelfListTest::aFresherTapeOfAnEqualCoverIsTaken()
{
    show(u"A: 1 2"_s);
    const CassetteRow* a = m_list->row(0);
    Shelf shelf = shelfOf(u"A"_s, {1, 2});
    shelf.tapesByID[2].hasAgenda = true;
    m_list->show({shelf});
    QCOMPARE(m_list->row(0), a);
    QVERIFY(a->content().tapes.at(1).hasAgenda);
    // The cover has lost its tape: the viewer's place is bounded, though the shelf is equal.
    goTo(0, 1);
    shelf.tapesByID.remove(2);
    m_list->show({shelf});
    QCOMPARE(m_list->row(0), a);
    QCOMPARE(place(), u"A: 1"_s);
}

void ShelfListTest::whileTheShelvesChangeNoMoveIsTaken()
{
    show(u"A: 1 2; B: 3 4"_s);
    goTo(1, 1);
    // What a stack does that loses the item with the focus: it reports another.
    connect(m_list->row(1), &CassetteRow::modelReset, this, [this] {
        m_list->row(1)->setPlace(0);
        m_list->setPlace(0);
    });
    connect(m_list.get(), &ShelfList::modelReset, this, [this] { m_list->setPlace(0); });
    show(u"A: 1 2; B: 3 4"_s);
    QCOMPARE(place(), u"B: 4"_s);
    m_list->setPlace(0);
    QCOMPARE(m_list->place(), 0);
}

void ShelfListTest::theRowsHaveChangedBeforeTheListSaysSo()
{
    show(u"A: 1 2; B: 3"_s);
    goTo(0, 1);
    QString seen;
    connect(m_list.get(), &ShelfList::modelReset, this, [this, &seen] { seen = contents() + u" at "_s + place(); });
    show(u"A: 1; B: 3 2"_s);
    QCOMPARE(seen, u"A: 1; B: 3 2 at B: 2"_s);
}

void ShelfListTest::thePlaceIsToldBeforeTheChangeIsThrough()
{
    show(u"A: 1 2; B: 3"_s);
    goTo(0, 1);
    const CassetteRow* row = m_list->row(0);
    QStringList told;
    connect(row, &CassetteRow::placeChanged, this, [&] { told.append(u"row's place %1"_s.arg(row->place())); });
    connect(row, &CassetteRow::modelReset, this, [&] { told.append(u"row"_s); });
    connect(m_list.get(), &ShelfList::placeChanged, this,
            [&] { told.append(u"list's place %1"_s.arg(m_list->place())); });
    connect(m_list.get(), &ShelfList::modelReset, this, [&] { told.append(u"list"_s); });
    show(u"B: 3; A: 2 1"_s);
    QCOMPARE(told, (QStringList{u"row's place 0"_s, u"row"_s, u"list's place 1"_s, u"list"_s}));
}

void ShelfListTest::anEmptiedListStartsAnew()
{
    show(u"A: 1 2"_s);
    goTo(0, 1);
    show({});
    QCOMPARE(m_list->rowCount(), 0);
    QCOMPARE(m_list->place(), -1);
    show(u"A: 1 2"_s);
    QCOMPARE(m_list->place(), -1);
    QCOMPARE(m_list->row(0)->place(), -1);
}

QTEST_GUILESS_MAIN(ShelfListTest)
#include "ShelfListTest.moc"
