#include "TapeSearchControllerFixture.h"
#include "TapeSearchTexts.h"
#include "TestMain.h"

#include <QSignalSpy>

namespace quillmere {

/** Tests what the tape search shows, and when. */
class TapeSearchControllerTest : public TapeSearchControllerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void screenHasItsTexts();
    void newScreenShowsNothing();
    void typingDoesNotSearch();
    void whiteSpaceIsNotSearched_data();
    void whiteSpaceIsNotSearched();
    void whiteSpaceAfterResultKeepsResult();
    void oneCharacterIsSearched();
    void trimmedQueryIsSearchedAndTypedQueryIsQuoted();
    void searchUsesMarketOfShop();
    void onePageIsRequestedAndFullyShown();
    void spinnerIsShownUntilAnswer();
    void resultsAreInOrderOfHub();
    void resultsAreCounted_data();
    void resultsAreCounted();
    void failedSearchShowsNoMatch_data();
    void failedSearchShowsNoMatch();
    void nextSearchResetsCurrentRow();
    void resultOpensAndBackReturns();
    void invalidRowDoesNotOpen();
};

void TapeSearchControllerTest::screenHasItsTexts()
{
    QCOMPARE(TapeSearchTexts::title(), u"Search the stacks"_s);
    QCOMPARE(TapeSearchTexts::invitation(), u"A name, a street, a motion — titles and spoken transcripts both."_s);
}

void TapeSearchControllerTest::newScreenShowsNothing()
{
    QVERIFY(m_screen->query().isEmpty());
    QVERIFY(m_screen->results().isEmpty());
    QVERIFY(!m_screen->hasSearched());
    QVERIFY(!m_screen->isBusy());
    QVERIFY(!m_screen->showsResults());
    QVERIFY(!m_screen->showsNoMatch());
    QCOMPARE(m_screen->path()->depth(), 0);
}

void TapeSearchControllerTest::typingDoesNotSearch()
{
    m_screen->setQuery(u"zoning"_s);
    QCOMPARE(m_fixture->http.count(), 0);
    QVERIFY(!m_screen->isBusy());
}

void TapeSearchControllerTest::whiteSpaceIsNotSearched_data()
{
    QTest::addColumn<QString>("query");
    QTest::newRow("empty") << QString();
    QTest::newRow("spaces") << u"   "_s;
    QTest::newRow("line breaks") << u"\n\r\n"_s;
    QTest::newRow("both") << u" \t\n \u2028 "_s;
    QTest::newRow("wide spaces") << u"\u00a0\u2003\u3000"_s;
}

void TapeSearchControllerTest::whiteSpaceIsNotSearched()
{
    QFETCH(const QString, query);
    QSignalSpy changed(m_screen.get(), &TapeSearchController::outcomeChanged);
    search(query);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(m_fixture->http.count(), 0);
    QVERIFY(!m_screen->isBusy());
}

void TapeSearchControllerTest::whiteSpaceAfterResultKeepsResult()
{
    search(u"zoning"_s);
    m_fixture->answerTapes({u"Zoning"_s});
    QTRY_VERIFY(m_screen->showsResults());
    search(u"  "_s);
    QVERIFY(m_screen->showsResults());
    QCOMPARE(m_fixture->http.count(), 1);
}

void TapeSearchControllerTest::oneCharacterIsSearched()
{
    search(u"z"_s);
    QVERIFY(m_fixture->http.waitingFor(request(u"z"_s)) >= 0);
}

void TapeSearchControllerTest::trimmedQueryIsSearchedAndTypedQueryIsQuoted()
{
    search(u"  council  "_s);
    m_fixture->answerTapes({}, request(u"council"_s));
    QTRY_VERIFY(m_screen->showsNoMatch());
    QCOMPARE(m_screen->noMatchLine(), u"No tapes match “  council  ”. Try a different word."_s);
    QCOMPARE(m_screen->query(), u"  council  "_s);
}

void TapeSearchControllerTest::searchUsesMarketOfShop()
{
    m_fixture->store->setMarket(u"springfield"_s);
    search(u"zoning"_s);
    QVERIFY(m_fixture->http.waitingFor(u"/api/tv/tapes?page=1&per_page=200&market=springfield&q=zoning"_s) >= 0);
    m_fixture->store->setMarket({});
    search(u"zoning"_s);
    QVERIFY(m_fixture->http.waitingFor(request(u"zoning"_s)) >= 0);
}

void TapeSearchControllerTest::onePageIsRequestedAndFullyShown()
{
    search(u"zoning"_s);
    m_fixture->answerTapes(QStringList(300, u"Zoning"_s));
    QTRY_COMPARE(m_screen->results().size(), 300);
    QCOMPARE(m_screen->countLine(), u"300 tapes found"_s);
    QCOMPARE(m_fixture->http.count(), 1);
}

void TapeSearchControllerTest::spinnerIsShownUntilAnswer()
{
    search(u"zoning"_s);
    QVERIFY(m_screen->isBusy());
    QVERIFY(!m_screen->hasSearched());
    m_fixture->answerTapes({u"Zoning"_s});
    QTRY_VERIFY(!m_screen->isBusy());
    QVERIFY(m_screen->hasSearched());
    QVERIFY(m_screen->showsResults());

    search(u"parade"_s);
    QVERIFY(m_screen->isBusy());
    QVERIFY(m_screen->hasSearched());
    QVERIFY(!m_screen->showsResults());
    QVERIFY(!m_screen->showsNoMatch());
    m_fixture->answerTapes({});
    QTRY_VERIFY(m_screen->showsNoMatch());
    QVERIFY(!m_screen->isBusy());
}

void TapeSearchControllerTest::resultsAreInOrderOfHub()
{
    search(u"o"_s);
    m_fixture->answerTapes({u"Zoo"_s, u"Arbour"_s, u"Moor"_s});
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
    QTest::newRow("no digit grouping") << qsizetype(1234) << u"1234 tapes found"_s;
}

void TapeSearchControllerTest::resultsAreCounted()
{
    QFETCH(const qsizetype, tapes);
    QTEST(TapeSearchTexts::countLine(tapes), "line");
}

void TapeSearchControllerTest::failedSearchShowsNoMatch_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("no match") << 200 << QByteArray(R"({"items": []})");
    QTest::newRow("error status") << 503 << QByteArray();
    QTest::newRow("no JSON") << 200 << QByteArray("<html>");
    QTest::newRow("no page") << 200 << QByteArray("[]");
    QTest::newRow("no answer") << 0 << QByteArray();
}

void TapeSearchControllerTest::failedSearchShowsNoMatch()
{
    QFETCH(const int, status);
    QFETCH(const QByteArray, body);
    search(u"zoning"_s);
    if (status == 0)
        m_fixture->fail(request(u"zoning"_s), u"The network is down."_s);
    else
        m_fixture->answer(request(u"zoning"_s), body, status);
    QTRY_VERIFY(m_screen->showsNoMatch());
    QVERIFY(!m_screen->isBusy());
    QCOMPARE(m_screen->noMatchLine(), u"No tapes match “zoning”. Try a different word."_s);
    QVERIFY(!(*m_fixture)->lastError());
}

void TapeSearchControllerTest::nextSearchResetsCurrentRow()
{
    search(u"zo"_s);
    m_fixture->answerTapes({u"A"_s, u"B"_s, u"C"_s});
    QTRY_VERIFY(m_screen->showsResults());
    m_screen->cassettes()->setCurrentRow(2);
    search(u"zoning"_s);
    m_fixture->answerTapes({u"A"_s, u"B"_s, u"C"_s});
    QTRY_VERIFY(m_screen->showsResults());
    QCOMPARE(m_screen->cassettes()->currentRow(), -1);
}

void TapeSearchControllerTest::resultOpensAndBackReturns()
{
    search(u"o"_s);
    m_fixture->answerTapes({u"Zoo"_s, u"Arbour"_s});
    QTRY_VERIFY(m_screen->showsResults());
    m_screen->path()->open(m_screen->cassettes(), 1);
    QCOMPARE(m_screen->path()->depth(), 1);
    QCOMPARE(m_screen->path()->tapeAt(0).title, u"Arbour"_s);
    m_screen->path()->pop();
    m_screen->path()->pop();
    QCOMPARE(m_screen->path()->depth(), 0);
    QVERIFY(m_screen->showsResults());
}

void TapeSearchControllerTest::invalidRowDoesNotOpen()
{
    m_screen->path()->open(m_screen->cassettes(), 0);
    search(u"o"_s);
    m_fixture->answerTapes({u"Zoo"_s});
    QTRY_VERIFY(m_screen->showsResults());
    m_screen->path()->open(m_screen->cassettes(), -1);
    m_screen->path()->open(m_screen->cassettes(), 1);
    QCOMPARE(m_screen->path()->depth(), 0);
}

QUILLMERE_TEST(TapeSearchControllerTest, QCoreApplication)

} // namespace quillmere

#include "TapeSearchControllerTest.moc"
