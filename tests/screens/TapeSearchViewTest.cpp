#include "ScrollArea.h"
#include "StationPalette.h"
#include "TapeSearchHouse.h"

#include <QRegularExpression>

#include <numeric>

/** The tape search as the viewer sees and walks it. */
class TapeSearchViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_house.reset(); }

    void aFreshSearchIsItsFieldAlone();
    void thePartsStandWhereTheyShould();
    void theOutcomeHasItsLook();
    void onlyTheSpinnerIsSeenWhileASearchRuns();
    void theSpinnerStandsUnderTheField();
    void noMatchQuotesTheQueryAsTyped();
    void theLongestQueryIsQuotedWithinTheScreen();
    void theFocusStaysOnTheFieldWhenResultsCome();
    void resultsAreWalkedAlongAndLeftUpwards();
    void ofManyResultsFewCassettesExist();
    void ofTheMostResultsFewCassettesExistToo();
    void aResultOpensItsTapeAndBackReturnsToIt();
    void aResultPlaysAndIsReadFromItsTape();
    void backFromTheSearchIsTheShop();
    void eachOpeningStartsEmpty();
    void theNextSearchIsEnteredAtItsFirstResult();
    void aLateAnswerLeavesTheFocusOnTheSameTape();
    void aLateAnswerStandsWhereTheFocusWouldCome_data();
    void aLateAnswerStandsWhereTheFocusWouldCome();
    void aLateFailureBringsTheFocusBackToTheField();
    void resultsThatChangeBeneathATapeLeaveItOpen();
    void aSearchEndsWithItsScreen();
    void aWordTypedWithTheRemoteIsSearched();

private:
    std::unique_ptr<TapeSearchHouse> m_house;
};

void TapeSearchViewTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_house = std::make_unique<TapeSearchHouse>();
}

void TapeSearchViewTest::aFreshSearchIsItsFieldAlone()
{
    QCOMPARE(m_house->focused(), m_house->field());
    QVERIFY(m_house->text(u"Search the stacks"_s));
    QVERIFY(m_house->text(u"A name, a street, a motion — titles and spoken transcripts both."_s));
    QVERIFY(!m_house->spinner());
    QVERIFY(!m_house->thing(u"Tape 1"_s));
    for (const QQuickItem* text : Stage::texts(m_house->search()))
        QVERIFY2(!text->property("text").toString().contains(u"found"_s), "nothing was searched");
    QCOMPARE(m_house->http.count(), 0);
}

void TapeSearchViewTest::thePartsStandWhereTheyShould()
{
    m_house->find(u"zoning"_s, {5, 6});
    const QRectF title = m_house->area(Stage::texts(m_house->search()).first());
    const QRectF invitation = m_house->areaOf(u"A name, a street, a motion — titles and spoken transcripts both."_s);
    const QRectF field = m_house->area(m_house->field());
    const QRectF count = m_house->areaOf(u"2 tapes found"_s);
    const QRectF first = m_house->areaOfThing(u"Tape 5"_s);
    QCOMPARE(title.topLeft(), QPointF(90, 60));
    QCOMPARE(invitation.topLeft(), title.bottomLeft() + QPointF(0, 34));
    QCOMPARE(field.topLeft(), invitation.bottomLeft() + QPointF(0, 34));
    QCOMPARE(field.right(), 1920.0 - 90);
    QCOMPARE(count.topLeft(), field.bottomLeft() + QPointF(0, 34));
    QCOMPARE(first.topLeft(), count.bottomLeft() + QPointF(6, 34 + 30));
    QCOMPARE(first.size(), QSizeF(230, 230 * 1.5625));
    QCOMPARE(m_house->areaOfThing(u"Tape 6"_s).topLeft(), first.topRight() + QPointF(40, 0));
    QVERIFY(first.bottom() + 30 < 1080 - 60);
}

void TapeSearchViewTest::theOutcomeHasItsLook()
{
    m_house->find(u"zoning"_s, {5});
    const QQuickItem* const count = m_house->text(u"1 tape found"_s);
    QVERIFY(count);
    QCOMPARE(count->property("color").value<QColor>(), StationPalette::teal());
    const QFont font = count->property("font").value<QFont>();
    QCOMPARE(font.pixelSize(), 24);
    QCOMPARE(font.weight(), QFont::DemiBold);
}

void TapeSearchViewTest::onlyTheSpinnerIsSeenWhileASearchRuns()
{
    m_house->find(u"zoning"_s, {5});
    QVERIFY(!m_house->spinner());
    m_house->submit(u"parade"_s);
    QVERIFY(m_house->spinner());
    QVERIFY(!m_house->text(u"1 tape found"_s));
    QVERIFY(!m_house->thing(u"Tape 5"_s));
    m_house->answer(TapeSearchHouse::path(u"parade"_s), TapeSearchHouse::pageOf({}));
    QTRY_VERIFY(!m_house->spinner());
    QVERIFY(m_house->text(u"No tapes match “parade”. Try a different word."_s));
}

void TapeSearchViewTest::theSpinnerStandsUnderTheField()
{
    m_house->submit(u"zoning"_s);
    m_house->stage.waitForFrame();
    const QQuickItem* const spinner = m_house->spinner();
    QCOMPARE(spinner->scale(), 1.4);
    QCOMPARE(spinner->property("color").value<QColor>(), StationPalette::cream());
    const QRectF field = m_house->area(m_house->field());
    QCOMPARE(m_house->area(spinner).size(), QSizeF(44, 44) * 1.4);
    QCOMPARE(m_house->area(spinner).left(), field.left());
    QCOMPARE(m_house->area(spinner).top(), field.bottom() + 34);
}

void TapeSearchViewTest::noMatchQuotesTheQueryAsTyped()
{
    m_house->submit(u"  council  "_s);
    m_house->answer(TapeSearchHouse::path(u"council"_s), TapeSearchHouse::pageOf({}));
    QTRY_VERIFY(m_house->text(u"No tapes match “  council  ”. Try a different word."_s));
    QCOMPARE(m_house->focused(), m_house->field());
}

void TapeSearchViewTest::theLongestQueryIsQuotedWithinTheScreen()
{
    const QString query = QString(200, u'W');
    m_house->submit(query);
    m_house->answer(TapeSearchHouse::path(query), TapeSearchHouse::pageOf({}));
    const QString line = u"No tapes match “"_s + query + u"”. Try a different word."_s;
    QTRY_VERIFY(m_house->text(line));
    m_house->stage.settle();
    QVERIFY(m_house->isInSight(m_house->areaOf(line)));
    QVERIFY(m_house->text(line)->property("contentWidth").toReal() <= 1740);
}

void TapeSearchViewTest::theFocusStaysOnTheFieldWhenResultsCome()
{
    m_house->find(u"zoning"_s, {5, 6});
    QCOMPARE(m_house->focused(), m_house->field());
}

void TapeSearchViewTest::resultsAreWalkedAlongAndLeftUpwards()
{
    m_house->find(u"zoning"_s, {5, 6, 7});
    m_house->press({Qt::Key_Down});
    QCOMPARE(m_house->heard(), u"Tape 5"_s);
    m_house->press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Right});
    QCOMPARE(m_house->heard(), u"Tape 7"_s);
    m_house->press({Qt::Key_Up});
    QCOMPARE(m_house->focused(), m_house->field());
    m_house->press({Qt::Key_Down});
    QCOMPARE(m_house->heard(), u"Tape 7"_s);
}

void TapeSearchViewTest::ofManyResultsFewCassettesExist()
{
    QList<int> ids;
    for (int id = 1; id <= 200; ++id)
        ids.append(id);
    m_house->find(u"zoning"_s, ids);
    QVERIFY(m_house->text(u"200 tapes found"_s));
    m_house->press({Qt::Key_Down});
    for (int step = 1; step < 200; ++step)
        m_house->press({Qt::Key_Right});
    m_house->stage.settle();
    QCOMPARE(m_house->heard(), u"Tape 200"_s);
    QVERIFY(m_house->isFocusInSight());
    QVERIFY(Stage::all(m_house->search(), "CardButton").size() < 30);
}

void TapeSearchViewTest::ofTheMostResultsFewCassettesExistToo()
{
    QList<int> ids(10'000);
    std::iota(ids.begin(), ids.end(), 1);
    m_house->find(u"zoning"_s, ids);
    QVERIFY(m_house->text(u"10000 tapes found"_s));
    m_house->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Right});
    m_house->stage.settle();
    QCOMPARE(m_house->heard(), u"Tape 3"_s);
    QVERIFY(Stage::all(m_house->search(), "CardButton").size() < 30);
}

void TapeSearchViewTest::aResultOpensItsTapeAndBackReturnsToIt()
{
    m_house->find(u"zoning"_s, {5, 6, 7});
    m_house->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Select});
    QCOMPARE(m_house->search()->depth(), 1);
    m_house->stage.settle();
    QCOMPARE(m_house->focused()->property("text").toString(), u"Push it in"_s);
    QVERIFY(m_house->text(u"Tape 6"_s));
    m_house->press({Qt::Key_Back});
    QCOMPARE(m_house->search()->depth(), 0);
    QCOMPARE(m_house->heard(), u"Tape 6"_s);
    m_house->stage.settle();
    QVERIFY(m_house->isFocusInSight());
    QCOMPARE(m_house->field()->property("text").toString(), u"zoning"_s);
}

void TapeSearchViewTest::aResultPlaysAndIsReadFromItsTape()
{
    m_house->find(u"zoning"_s, {5});
    m_house->press({Qt::Key_Down, Qt::Key_Select, Qt::Key_Select});
    QCOMPARE(m_house->front()->objectName(), u"player"_s);
    m_house->press({Qt::Key_Back, Qt::Key_Right, Qt::Key_Select});
    QCOMPARE(m_house->front()->objectName(), u"transcript"_s);
    m_house->press({Qt::Key_Back, Qt::Key_Back});
    QCOMPARE(m_house->heard(), u"Tape 5"_s);
}

void TapeSearchViewTest::backFromTheSearchIsTheShop()
{
    m_house->find(u"zoning"_s, {5});
    m_house->press({Qt::Key_Down, Qt::Key_Back});
    QVERIFY(!m_house->shop()->property("searching").toBool());
    QVERIFY(m_house->isOpen());
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
}

void TapeSearchViewTest::eachOpeningStartsEmpty()
{
    m_house->find(u"zoning"_s, {5});
    m_house->press({Qt::Key_Back});
    m_house->stage.settle();
    QVERIFY(!m_house->search());
    m_house->openSearch();
    QCOMPARE(m_house->field()->property("text").toString(), QString());
    QVERIFY(!m_house->controller()->hasSearched());
    QVERIFY(!m_house->thing(u"Tape 5"_s));
    QCOMPARE(m_house->focused(), m_house->field());
}

void TapeSearchViewTest::theNextSearchIsEnteredAtItsFirstResult()
{
    QList<int> ids;
    for (int id = 1; id <= 30; ++id)
        ids.append(id);
    m_house->find(u"zoning"_s, ids);
    m_house->press({Qt::Key_Down});
    for (int step = 0; step < 20; ++step)
        m_house->press({Qt::Key_Right});
    m_house->stage.settle();
    m_house->press({Qt::Key_Up});
    m_house->find(u"parade"_s, ids);
    QVERIFY(m_house->isInSight(m_house->areaOfThing(u"Tape 1"_s)));
    m_house->press({Qt::Key_Down});
    QCOMPARE(m_house->heard(), u"Tape 1"_s);
}

void TapeSearchViewTest::aLateAnswerLeavesTheFocusOnTheSameTape()
{
    m_house->submit(u"zo"_s);
    m_house->find(u"zoning"_s, {5, 6, 7});
    m_house->press({Qt::Key_Down, Qt::Key_Right});
    m_house->answer(TapeSearchHouse::path(u"zo"_s), TapeSearchHouse::pageOf({8, 9, 4, 6}));
    QTRY_COMPARE(m_house->controller()->results().size(), 4);
    QCOMPARE(m_house->heard(), u"Tape 6"_s);
    m_house->stage.settle();
    QVERIFY(m_house->text(u"4 tapes found"_s));
    QVERIFY(m_house->isFocusInSight());
    m_house->press({Qt::Key_Left});
    QCOMPARE(m_house->heard(), u"Tape 4"_s);
}

void TapeSearchViewTest::aLateAnswerStandsWhereTheFocusWouldCome_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("count");
    // Before: tapes 1 to 30, walked to 13.
    QTest::newRow("without the tape") << 101 << 12;
    QTest::newRow("fewer than before") << 101 << 3;
    QTest::newRow("the tape stands further on") << -20 << 40;
    QTest::newRow("the tape stands first") << 13 << 30;
}

void TapeSearchViewTest::aLateAnswerStandsWhereTheFocusWouldCome()
{
    QFETCH(int, first);
    QFETCH(int, count);
    const auto ids = [](int from, int many) {
        QList<int> all;
        for (int id = from; id < from + many; ++id)
            all.append(id);
        return all;
    };
    m_house->submit(u"zo"_s);
    m_house->find(u"zoning"_s, ids(1, 30));
    m_house->press({Qt::Key_Down});
    for (int step = 0; step < 12; ++step)
        m_house->press({Qt::Key_Right});
    QCOMPARE(m_house->heard(), u"Tape 13"_s);
    m_house->press({Qt::Key_Up});
    m_house->stage.settle();
    m_house->answer(TapeSearchHouse::path(u"zo"_s), TapeSearchHouse::pageOf(ids(first, count)));
    QTRY_COMPARE(m_house->controller()->results().constFirst().id, first);
    m_house->stage.settle();
    auto strip = static_cast<ScrollArea*>(Stage::first(m_house->search(), "CassetteStrip"));
    const qreal position = strip->position();
    m_house->press({Qt::Key_Down});
    QVERIFY(m_house->isFocusInSight());
    QCOMPARE(strip->aim(), position);
}

void TapeSearchViewTest::aLateFailureBringsTheFocusBackToTheField()
{
    m_house->submit(u"zo"_s);
    m_house->find(u"zoning"_s, {5, 6, 7});
    m_house->press({Qt::Key_Down, Qt::Key_Right});
    m_house->answer(TapeSearchHouse::path(u"zo"_s), {}, 503);
    QTRY_VERIFY(m_house->controller()->showsNoMatch());
    QTRY_COMPARE(m_house->focused(), m_house->field());
}

void TapeSearchViewTest::resultsThatChangeBeneathATapeLeaveItOpen()
{
    m_house->submit(u"zo"_s);
    m_house->find(u"zoning"_s, {5, 6, 7});
    m_house->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Select});
    m_house->answer(TapeSearchHouse::path(u"zo"_s), TapeSearchHouse::pageOf({8, 6}));
    QTRY_COMPARE(m_house->controller()->results().size(), 2);
    QCOMPARE(m_house->search()->depth(), 1);
    QCOMPARE(m_house->focused()->property("text").toString(), u"Push it in"_s);
    m_house->press({Qt::Key_Back});
    QCOMPARE(m_house->heard(), u"Tape 6"_s);
}

void TapeSearchViewTest::aSearchEndsWithItsScreen()
{
    m_house->submit(u"zoning"_s);
    QVERIFY(m_house->http.isWaiting(0));
    m_house->press({Qt::Key_Back});
    QVERIFY(m_house->http.wasCancelled(0));
}

void TapeSearchViewTest::aWordTypedWithTheRemoteIsSearched()
{
    // The keyboard begins at its "a".
    m_house->press({Qt::Key_Select, Qt::Key_Select, Qt::Key_Right, Qt::Key_Select});
    m_house->press({Qt::Key_MediaTogglePlayPause});
    m_house->answer(TapeSearchHouse::path(u"ab"_s), TapeSearchHouse::pageOf({5, 6}));
    QTRY_VERIFY(m_house->controller()->showsResults());
    QCOMPARE(m_house->focused(), m_house->field());
    m_house->press({Qt::Key_Down});
    QCOMPARE(m_house->heard(), u"Tape 5"_s);
}

QTEST_MAIN(TapeSearchViewTest)
#include "TapeSearchViewTest.moc"
