#include "Rows.h"
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
    void screenHasItsTexts()
    {
        QCOMPARE(TapeSearchTexts::title(), u"Search the stacks"_s);
        QCOMPARE(TapeSearchTexts::invitation(), u"A name, a street, a motion — titles and spoken transcripts both."_s);
    }

    void newScreenShowsNothingBeforeSearch()
    {
        QVERIFY(m_screen->query().isEmpty());
        m_screen->setQuery(u"zoning"_s);
        QCOMPARE(m_fixture->http.count(), 0);
        QVERIFY(m_screen->results().isEmpty());
        QVERIFY(!m_screen->hasSearched());
        QVERIFY(!m_screen->isBusy());
        QVERIFY(!m_screen->showsResults());
        QVERIFY(!m_screen->showsNoMatch());
        QCOMPARE(m_screen->path()->depth(), 0);
    }

    void whiteSpaceIsNotSearched_data()
    {
        rows<QString>({"query"}, {{"empty", {}},
                                  {"spaces", u"   "_s},
                                  {"line breaks", u"\n\r\n"_s},
                                  {"both", u" \t\n \u2028 "_s},
                                  {"wide spaces", u"\u00a0\u2003\u3000"_s}});
    }

    void whiteSpaceIsNotSearched()
    {
        QFETCH(const QString, query);
        QSignalSpy changed(m_screen.get(), &TapeSearchController::outcomeChanged);
        search(query);
        QCOMPARE(changed.count(), 0);
        QCOMPARE(m_fixture->http.count(), 0);
        QVERIFY(!m_screen->isBusy());
    }

    void whiteSpaceAfterResultKeepsResult()
    {
        find(u"zoning"_s, {u"Zoning"_s});
        search(u"  "_s);
        QVERIFY(m_screen->showsResults());
        QCOMPARE(m_fixture->http.count(), 1);
    }

    void trimmedQueryIsSearchedAndTypedQueryIsQuoted()
    {
        search(u"  council  "_s);
        m_fixture->answerTapes({}, request(u"council"_s));
        QTRY_VERIFY(m_screen->showsNoMatch());
        QCOMPARE(m_screen->noMatchLine(), u"No tapes match “  council  ”. Try a different word."_s);
        QCOMPARE(m_screen->query(), u"  council  "_s);
    }

    void searchUsesMarketOfShop()
    {
        m_fixture->store->setMarket(u"springfield"_s);
        search(u"zoning"_s);
        QVERIFY(m_fixture->http.waitingFor(u"/api/tv/tapes?page=1&per_page=200&market=springfield&q=zoning"_s) >= 0);
        m_fixture->store->setMarket({});
        search(u"zoning"_s);
        QVERIFY(m_fixture->http.waitingFor(request(u"zoning"_s)) >= 0);
    }

    void onePageIsRequestedAndFullyShown()
    {
        find(u"zoning"_s, QStringList(300, u"Zoning"_s));
        QCOMPARE(m_screen->results().size(), 300);
        QCOMPARE(m_screen->countLine(), u"300 tapes found"_s);
        QCOMPARE(m_fixture->http.count(), 1);
    }

    void spinnerIsShownUntilAnswer()
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

    void resultsAreInOrderOfHub()
    {
        find(u"o"_s, {u"Zoo"_s, u"Arbour"_s, u"Moor"_s});
        QCOMPARE(found(), (QStringList{u"Zoo"_s, u"Arbour"_s, u"Moor"_s}));
        QCOMPARE(m_screen->cassettes()->rowCount(), 3);
        QCOMPARE(m_screen->cassettes()->content().cover(1).title, u"Arbour"_s);
    }

    void resultsAreCounted_data()
    {
        rows<qsizetype, QString>({"tapes", "line"}, {{"one", 1, u"1 tape found"_s},
                                                     {"two", 2, u"2 tapes found"_s},
                                                     {"a dozen", 12, u"12 tapes found"_s},
                                                     {"no digit grouping", 1234, u"1234 tapes found"_s}});
    }

    void resultsAreCounted()
    {
        QFETCH(const qsizetype, tapes);
        QTEST(TapeSearchTexts::countLine(tapes), "line");
    }

    void failedSearchShowsNoMatch_data()
    {
        rows<int, QByteArray>({"status", "body"}, {{"no match", 200, R"({"items": []})"},
                                                   {"error status", 503, {}},
                                                   {"no JSON", 200, "<html>"},
                                                   {"no page", 200, "[]"},
                                                   {"no answer", 0, {}}});
    }

    void failedSearchShowsNoMatch()
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

    void nextSearchResetsCurrentRow()
    {
        find(u"zo"_s, {u"A"_s, u"B"_s, u"C"_s});
        m_screen->cassettes()->setCurrentRow(2);
        find(u"zoning"_s, {u"A"_s, u"B"_s, u"C"_s});
        QCOMPARE(m_screen->cassettes()->currentRow(), -1);
    }

    void onlyShownResultOpensAndBackReturns()
    {
        m_screen->path()->open(m_screen->cassettes(), 0);
        find(u"o"_s, {u"Zoo"_s, u"Arbour"_s});
        m_screen->path()->open(m_screen->cassettes(), -1);
        m_screen->path()->open(m_screen->cassettes(), 2);
        QCOMPARE(m_screen->path()->depth(), 0);
        m_screen->path()->open(m_screen->cassettes(), 1);
        QCOMPARE(m_screen->path()->depth(), 1);
        QCOMPARE(m_screen->path()->tapeAt(0).title, u"Arbour"_s);
        m_screen->path()->pop();
        m_screen->path()->pop();
        QCOMPARE(m_screen->path()->depth(), 0);
        QVERIFY(m_screen->showsResults());
    }
};

QUILLMERE_TEST(TapeSearchControllerTest, QCoreApplication)

} // namespace quillmere

#include "TapeSearchControllerTest.moc"
