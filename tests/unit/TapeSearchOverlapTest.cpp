#include "Rows.h"
#include "TapeSearchControllerFixture.h"
#include "TestMain.h"

namespace quillmere {

/** Tests overlapping searches and late answers. */
class TapeSearchOverlapTest : public TapeSearchControllerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void lastAnsweredSearchIsShown_data()
    {
        rows<QStringList, QString>({"answers", "last"},
                                   {{"in order", {u"zo"_s, u"zoning"_s}, u"zoning"_s},
                                    {"first search answered last", {u"zoning"_s, u"zo"_s}, u"zo"_s}});
    }

    void lastAnsweredSearchIsShown()
    {
        QFETCH(const QStringList, answers);
        QFETCH(const QString, last);
        search(u"zo"_s);
        search(u"zoning"_s);
        QCOMPARE(m_fixture->http.count(), 2);
        for (const QString& query : answers)
            m_fixture->answerTapes({query + u" A"_s, query + u" B"_s}, request(query));
        m_fixture->waitForDecoding();
        QCOMPARE(found(), (QStringList{last + u" A"_s, last + u" B"_s}));
        QVERIFY(!m_screen->isBusy());
    }

    void firstAnswerIsShownUntilSecondAndOpenTapeStays()
    {
        search(u"zo"_s);
        find(u"zoning"_s, {u"Zoning"_s});
        QCOMPARE(found(), QStringList{u"Zoning"_s});
        QVERIFY(!m_screen->isBusy());
        m_screen->path()->open(m_screen->cassettes(), 0);
        m_fixture->fail(request(u"zo"_s), u"The network is down."_s);
        QTRY_VERIFY(m_screen->showsNoMatch());
        QCOMPARE(m_screen->path()->depth(), 1);
        QCOMPARE(m_screen->path()->tapeAt(0).title, u"Zoning"_s);
    }

    void lateAnswerKeepsCurrentTape()
    {
        search(u"zo"_s);
        find(u"zoning"_s, {u"A"_s, u"B"_s, u"C"_s});
        m_screen->cassettes()->setCurrentRow(1);
        m_fixture->answer(request(u"zo"_s), R"({"items": [{"id": 9}, {"id": 8}, {"id": 2}]})");
        QTRY_COMPARE(m_screen->results().first().id, 9);
        QCOMPARE(m_screen->cassettes()->currentRow(), 2);
    }

    void answerAfterLeavingIsIgnored_data()
    {
        rows<bool>({"isDecoding"}, {{"waiting for the answer", false}, {"being decoded", true}});
    }

    void answerAfterLeavingIsIgnored()
    {
        QFETCH(const bool, isDecoding);
        search(u"zoning"_s);
        if (isDecoding)
            m_fixture->answerTapes({u"Zoning"_s});
        m_screen->disappear();
        QCOMPARE(m_fixture->http.wasCancelled(0), !isDecoding);
        m_fixture->waitForDecoding();
        QVERIFY(!m_screen->hasSearched());
        QVERIFY(m_screen->results().isEmpty());
    }

    void screenMayBeDestroyedWhileSearching()
    {
        search(u"zo"_s);
        search(u"zoning"_s);
        m_fixture->answerTapes({u"Zoning"_s}, request(u"zoning"_s));
        m_screen.reset();
        m_fixture->waitForDecoding();
        QVERIFY(m_fixture->http.wasCancelled(0));
    }
};

QUILLMERE_TEST(TapeSearchOverlapTest, QCoreApplication)

} // namespace quillmere

#include "TapeSearchOverlapTest.moc"
