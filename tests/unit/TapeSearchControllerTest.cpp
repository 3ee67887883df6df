#include "TapeSearchOnScript.h"
#include "TapeSearchTexts.h"

#include <QSignalSpy>

/** What the tape search shows, and when. */
class TapeSearchControllerTest : public TapeSearchOnScript
{
    Q_OBJECT

private Q_SLOTS:
    void theScreenSaysItsWords();
    void aFreshScreenShowsNothing();
    void typingAloneSearchesNothing();
    void whiteSpaceAloneIsNoQuery_data();
    void whiteSpaceAloneIsNoQuery();
    void whiteSpaceAfterAResultLeavesTheResult();
    void oneCharacterIsQueryEnough();
    void theBareWordIsSearchedAndTheTypedOneQuoted();
    void aSearchCarriesTheMarketOfTheShop();
    void onePageIsAskedForAndAllOfItIsShown();
    void theSpinnerStandsInUntilTheAnswer();
    void resultsAreInTheHubsOrder();
    void resultsAreCounted_data();
    void resultsAreCounted();
    void whatCannotBeHadIsNotFound_data();
    void whatCannotBeHadIsNotFound();
    void theNextSearchBeginsAtItsFirstResult();
    void aResultOpensAndBackReturns();
    void whatIsNoResultDoesNotOpen();
};

void TapeSearchControllerTest::theScreenSaysItsWords()
{
    QCOMPARE(TapeSearchTexts::title(), u"Search the stacks"_s);
    QCOMPARE(TapeSearchTexts::invitation(), u"A name, a street, a motion — titles and spoken transcripts both."_s);
}

void TapeSearchControllerTest::aFreshScreenShowsNothing()
{
    QVERIFY(m_screen->query().isEmpty());
    QVERIFY(m_screen->results().isEmpty());
    QVERIFY(!m_screen->hasSearched());
    QVERIFY(!m_screen->isBusy());
    QVERIFY(!m_screen->showsResults());
    QVERIFY(!m_screen->showsNoMatch());
    QCOMPARE(m_screen->path()->depth(), 0);
}

void TapeSearchControllerTest::typingAloneSearchesNothing()
{
    m_screen->setQuery(u"zoning"_s);
    QCOMPARE(m_house->http.count(), 0);
    QVERIFY(!m_screen->isBusy());
}

void TapeSearchControllerTest::whiteSpaceAloneIsNoQuery_data()
{
    QTest::addColumn<QString>("query");
    QTest::newRow("nothing") << QString();
    QTest::newRow("spaces") << u"   "_s;
    QTest::newRow("line breaks") << u"\n\r\n"_s;
    QTest::newRow("both") << u" \t\n \u2028 "_s;
    QTest::newRow("wide ones") << u"\u00a0\u2003\u3000"_s;
}

void TapeSearchControllerTest::whiteSpaceAloneIsNoQuery()
{
    QFETCH(const QString, query);
    QSignalSpy changed(m_screen.get(), &TapeSearchController::outcomeChanged);
    search(query);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(m_house->http.count(), 0);
    QVERIFY(!m_screen->isBusy());
}

void TapeSearchControllerTest::whiteSpaceAfterAResultLeavesTheResult()
{
    search(u"zoning"_s);
    m_house->answerTapes({u"Zoning"_s});
    QTRY_VERIFY(m_screen->showsResults());
    search(u"  "_s);
    QVERIFY(m_screen->showsResults());
    QCOMPARE(m_house->http.count(), 1);
}

void TapeSearchControllerTest::oneCharacterIsQueryEnough()
{
    search(u"z"_s);
    QVERIFY(m_house->http.waitingFor(request(u"z"_s)) >= 0);
}

void TapeSearchControllerTest::theBareWordIsSearchedAndTheTypedOneQuoted()
{
    search(u"  council  "_s);
    m_house->answerTapes({}, request(u"council"_s));
    QTRY_VERIFY(m_screen->showsNoMatch());
    QCOMPARE(m_screen->noMatchLine(), u"No tapes match “  council  ”. Try a different word."_s);
    QCOMPARE(m_screen->query(), u"  council  "_s);
}

void TapeSearchControllerTest::aSearchCarriesTheMarketOfTheShop()
{
    m_house->store->setMarket(u"springfield"_s);
    search(u"zoning"_s);
    QVERIFY(m_house->http.waitingFor(u"/api/tv/tapes?page=1&per_page=200&market=springfield&q=zoning"_s) >= 0);
    m_house->store->setMarket({});
    search(u"zoning"_s);
    QVERIFY(m_house->http.waitingFor(request(u"zoning"_s)) >= 0);
}

void TapeSearchControllerTest::onePageIsAskedForAndAllOfItIsShown()
{
    search(u"zoning"_s);
    m_house->answerTapes(QStringList(300, u"Zoning"_s));
    QTRY_COMPARE(m_screen->results().size(), 300);
    QCOMPARE(m_screen->countLine(), u"300 tapes found"_s);
    QCOMPARE(m_house->http.count(), 1);
}

void TapeSearchControllerTest::theSpinnerStandsInUntilTheAnswer()
{
    search(u"zoning"_s);
    QVERIFY(m_screen->isBusy());
    QVERIFY(!m_screen->hasSearched());
    m_house->answerTapes({u"Zoning"_s});
    QTRY_VERIFY(!m_screen->isBusy());
    QVERIFY(m_screen->hasSearched());
    QVERIFY(m_screen->showsResults());

    search(u"parade"_s);
    QVERIFY(m_screen->isBusy());
    QVERIFY(m_screen->hasSearched());
    QVERIFY(!m_screen->showsResults());
    QVERIFY(!m_screen->showsNoMatch());
    m_house->answerTapes({});
    QTRY_VERIFY(m_screen->showsNoMatch());
    QVERIFY(!m_screen->isBusy());
}

void TapeSearchControllerTest::resultsAreInTheHubsOrder()
{
    search(u"o"_s);
    m_house->answerTapes({u"Zoo"_s, u"Arbour"_s, u"Moor"_s});
    QTRY_COMPARE(found(), (QStringList{u"Zoo"_s, u"Arbour"_s, u"Moor"_s}));
    QCOMPARE(m_screen->cassettes()->rowCount(), 3);
    QCOMPARE(m_screen->cassettes()->content().cover(1).title, u"Arbour"_s);
}

void TapeSearchControllerTest::resultsAreCounted_data()
{
    QTest::addColumn<qsizetype>("tapes");
    QTest::addColumn<QString>("line");
    QTest::newRow("one") << qsizetype(1) << u"1 tape found"_s;
    QTest::newRow("two") << qsizetype(2) << u"2 tapes found"_s;
    QTest::newRow("a dozen") << qsizetype(12) << u"12 tapes found"_s;
    QTest::newRow("ungrouped") << qsizetype(1234) << u"1234 tapes found"_s;
}

void TapeSearchControllerTest::resultsAreCounted()
{
    QFETCH(const qsizetype, tapes);
    QTEST(TapeSearchTexts::countLine(tapes), "line");
}

void TapeSearchControllerTest::whatCannotBeHadIsNotFound_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("no match") << 200 << QByteArray(R"({"items": []})");
    QTest::newRow("refused") << 503 << QByteArray();
    QTest::newRow("no JSON") << 200 << QByteArray("<html>");
    QTest::newRow("no page") << 200 << QByteArray("[]");
    QTest::newRow("no answer") << 0 << QByteArray();
}

void TapeSearchControllerTest::whatCannotBeHadIsNotFound()
{
    QFETCH(const int, status);
    QFETCH(const QByteArray, body);
    search(u"zoning"_s);
    if (status == 0)
        m_house->fail(request(u"zoning"_s), u"The network is down."_s);
    else
        m_house->answer(request(u"zoning"_s), body, status);
    QTRY_VERIFY(m_screen->showsNoMatch());
    QVERIFY(!m_screen->isBusy());
    QCOMPARE(m_screen->noMatchLine(), u"No tapes match “zoning”. Try a different word."_s);
    QVERIFY(!(*m_house)->lastError());
}

void TapeSearchControllerTest::theNextSearchBeginsAtItsFirstResult()
{
    search(u"zo"_s);
    m_house->answerTapes({u"A"_s, u"B"_s, u"C"_s});
    QTRY_VERIFY(m_screen->showsResults());
    m_screen->cassettes()->setPlace(2);
    search(u"zoning"_s);
    m_house->answerTapes({u"A"_s, u"B"_s, u"C"_s});
    QTRY_VERIFY(m_screen->showsResults());
    QCOMPARE(m_screen->cassettes()->place(), -1);
}

void TapeSearchControllerTest::aResultOpensAndBackReturns()
{
    search(u"o"_s);
    m_house->answerTapes({u"Zoo"_s, u"Arbour"_s});
    QTRY_VERIFY(m_screen->showsResults());
    m_screen->path()->open(m_screen->cassettes(), 1);
    QCOMPARE(m_screen->path()->depth(), 1);
    QCOMPARE(m_screen->path()->tapeAt(0).title, u"Arbour"_s);
    m_screen->path()->pop();
    m_screen->path()->pop();
    QCOMPARE(m_screen->path()->depth(), 0);
    QVERIFY(m_screen->showsResults());
}

void TapeSearchControllerTest::whatIsNoResultDoesNotOpen()
{
    m_screen->path()->open(m_screen->cassettes(), 0);
    search(u"o"_s);
    m_house->answerTapes({u"Zoo"_s});
    QTRY_VERIFY(m_screen->showsResults());
    m_screen->path()->open(m_screen->cassettes(), -1);
    m_screen->path()->open(m_screen->cassettes(), 1);
    QCOMPARE(m_screen->path()->depth(), 0);
}

QTEST_GUILESS_MAIN(TapeSearchControllerTest)
#include "TapeSearchControllerTest.moc"
