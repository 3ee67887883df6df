#include "TapeSearchOnScript.h"

/** Searches that overlap, and answers that come late. */
class TapeSearchLateTest : public TapeSearchOnScript
{
    Q_OBJECT

private Q_SLOTS:
    void theSearchThatEndsLastShowsItsResults_data();
    void theSearchThatEndsLastShowsItsResults();
    void theFirstAnswerOfTwoIsShownUntilTheSecond();
    void aLateAnswerLeavesTheViewerOnTheSameTape();
    void anOpenTapeStaysThoughTheResultsChange();
    void anAnswerAfterTheScreenIsGoneChangesNothing_data();
    void anAnswerAfterTheScreenIsGoneChangesNothing();
    void aScreenDestroyedWhileItSearchesHarmsNobody();
};

void TapeSearchLateTest::theSearchThatEndsLastShowsItsResults_data()
{
    QTest::addColumn<QStringList>("answers");
    QTest::addColumn<QString>("last");
    QTest::newRow("in order") << QStringList{u"zo"_s, u"zoning"_s} << u"zoning"_s;
    QTest::newRow("the first one late") << QStringList{u"zoning"_s, u"zo"_s} << u"zo"_s;
}

void TapeSearchLateTest::theSearchThatEndsLastShowsItsResults()
{
    QFETCH(const QStringList, answers);
    QFETCH(const QString, last);
    search(u"zo"_s);
    search(u"zoning"_s);
    QCOMPARE(m_house->http.count(), 2);
    for (const QString& query : answers)
        m_house->answerTapes({query + u" A"_s, query + u" B"_s}, request(query));
    m_house->settle();
    QCOMPARE(found(), (QStringList{last + u" A"_s, last + u" B"_s}));
    QVERIFY(!m_screen->isBusy());
}

void TapeSearchLateTest::theFirstAnswerOfTwoIsShownUntilTheSecond()
{
    search(u"zo"_s);
    search(u"zoning"_s);
    m_house->answerTapes({u"Zoning"_s}, request(u"zoning"_s));
    QTRY_COMPARE(found(), QStringList{u"Zoning"_s});
    QVERIFY(!m_screen->isBusy());
    QVERIFY(m_screen->showsResults());
    m_house->fail(request(u"zo"_s), u"The network is down."_s);
    QTRY_VERIFY(m_screen->showsNoMatch());
}

void TapeSearchLateTest::aLateAnswerLeavesTheViewerOnTheSameTape()
{
    search(u"zo"_s);
    search(u"zoning"_s);
    m_house->answerTapes({u"A"_s, u"B"_s, u"C"_s}, request(u"zoning"_s));
    QTRY_VERIFY(m_screen->showsResults());
    m_screen->cassettes()->setPlace(1);
    m_house->answer(request(u"zo"_s), R"({"items": [{"id": 9}, {"id": 8}, {"id": 2}]})");
    QTRY_COMPARE(m_screen->results().first().id, 9);
    QCOMPARE(m_screen->cassettes()->place(), 2);
}

void TapeSearchLateTest::anOpenTapeStaysThoughTheResultsChange()
{
    search(u"zo"_s);
    search(u"zoning"_s);
    m_house->answerTapes({u"Zoning"_s}, request(u"zoning"_s));
    QTRY_VERIFY(m_screen->showsResults());
    m_screen->path()->open(m_screen->cassettes(), 0);
    m_house->answerTapes({}, request(u"zo"_s));
    QTRY_VERIFY(m_screen->showsNoMatch());
    QCOMPARE(m_screen->path()->depth(), 1);
    QCOMPARE(m_screen->path()->tapeAt(0).title, u"Zoning"_s);
}

void TapeSearchLateTest::anAnswerAfterTheScreenIsGoneChangesNothing_data()
{
    QTest::addColumn<bool>("isDecoding");
    QTest::newRow("on its way") << false;
    QTest::newRow("being decoded") << true;
}

void TapeSearchLateTest::anAnswerAfterTheScreenIsGoneChangesNothing()
{
    QFETCH(const bool, isDecoding);
    search(u"zoning"_s);
    if (isDecoding)
        m_house->answerTapes({u"Zoning"_s});
    m_screen->leave();
    QCOMPARE(m_house->http.wasCancelled(0), !isDecoding);
    m_house->settle();
    QVERIFY(!m_screen->hasSearched());
    QVERIFY(m_screen->results().isEmpty());
}

void TapeSearchLateTest::aScreenDestroyedWhileItSearchesHarmsNobody()
{
    search(u"zo"_s);
    search(u"zoning"_s);
    m_house->answerTapes({u"Zoning"_s}, request(u"zoning"_s));
    m_screen.reset();
    m_house->settle();
    QVERIFY(m_house->http.wasCancelled(0));
}

QTEST_GUILESS_MAIN(TapeSearchLateTest)
#include "TapeSearchLateTest.moc"
