#include "HubFixture.h"
#include "Rows.h"
#include "TestMain.h"

namespace quillmere {

/** Tests the addresses of requests for tapes. */
class HubTapesTest : public HubFixture
{
    Q_OBJECT

private Q_SLOTS:
    void pageRequestHasExpectedAddress_data()
    {
        rows<QString, QString, QByteArray>(
            {"market", "query", "sent"},
            {{"empty", u""_s, u""_s, ""},
             {"null strings", QString(), QString(), ""},
             {"market", u"springfield"_s, u""_s, "&market=springfield"},
             {"market and query", u"springfield"_s, u"zoning"_s, "&market=springfield&q=zoning"},
             {"query", u""_s, u"zoning"_s, "&q=zoning"},
             {"spaces around", u"springfield"_s, u" zoning "_s, "&market=springfield&q=%20zoning%20"},
             {"only spaces", u""_s, u"   "_s, ""},
             {"tabs and other spaces", u""_s, u"\t\u00A0\u2003\u3000\u1680\u202F\u205F "_s, ""},
             {"a line break", u""_s, u"\n"_s, "&q=%0A"},
             {"a line break in spaces", u""_s, u" \r\n "_s, "&q=%20%0D%0A%20"},
             {"line and paragraph separators", u""_s, u"\u2028\u2029"_s, "&q=%E2%80%A8%E2%80%A9"},
             {"a market with special characters", u"st. john's&co"_s, u""_s, "&market=st.%20john%27s%26co"},
             {"a market of spaces", u" "_s, u""_s, "&market=%20"}});
    }

    void pageRequestHasExpectedAddress()
    {
        QFETCH(QString, market);
        QFETCH(QString, query);
        QFETCH(QByteArray, sent);
        const auto result = pendingResult(m_hub->tapes(market, query, 7, 60));
        QCOMPARE(m_http->count(), 1);
        QCOMPARE(m_http->request(0).url.toEncoded(), "https://hub.test/api/tv/tapes?page=7&per_page=60" + sent);
        m_http->answer(0, 200, R"({"total":1,"items":[{"id":3}]})");
        QTRY_VERIFY(isFinished(result));
        QCOMPARE((*result)->value().items.at(0).id, 3);
    }

    void queryReachesHubUnchanged_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("received");
        QStringList queries{u"a+b & c=d #e? f/g"_s, u"100%"_s,    u"%41%zz%2B%"_s, u"café 市議会 📼"_s,
                            u"a\tb\nc\rd"_s,        u"e\u0301"_s, u"a\0b"_s,       u"\u007F\u0080\uFEFF\uFFFF"_s};
        for (char16_t character = u'!'; character <= u'~'; ++character)
            queries.append(QChar(character));
        for (const QString& query : std::as_const(queries))
            QTest::newRow(query.toUtf8().toPercentEncoding().constData()) << query << query;
        QTest::newRow("unpaired surrogate") << u"a"_s + QChar(0xD83D) + u"b"_s << u"a\uFFFDb"_s;
    }

    void queryReachesHubUnchanged()
    {
        QFETCH(QString, query);
        pendingResult(m_hub->tapes(u"m"_s, query, 1, 200));
        // Splits the query as a server does: at "&", at the first "=", then percent-decodes the value.
        const QByteArray sent = m_http->request(0).url.query(QUrl::FullyEncoded).toLatin1();
        const QList<QByteArray> items = sent.split('&');
        QCOMPARE(items.size(), 4);
        QVERIFY(items.at(3).startsWith("q="));
        QVERIFY(!items.at(3).contains('+'));
        QTEST(QString::fromUtf8(QByteArray::fromPercentEncoding("x" + items.at(3).mid(2))).mid(1), "received");
        QVERIFY(!m_http->request(0).url.hasFragment());
    }

    void tapeAndTranscriptAreRequestedById()
    {
        const auto tape = pendingResult(m_hub->tape(9007199254740993));
        const auto transcript = pendingResult(m_hub->transcript(9007199254740993));
        const auto negative = pendingResult(m_hub->tape(-1));
        QCOMPARE(m_http->request(0).url, QUrl(u"https://hub.test/api/tv/tape/9007199254740993"_s));
        QCOMPARE(m_http->request(1).url, QUrl(u"https://hub.test/api/meetings/9007199254740993/transcript"_s));
        QCOMPARE(m_http->request(2).url, QUrl(u"https://hub.test/api/tv/tape/-1"_s));
        m_http->answer(0, 200, R"({"id":9007199254740993})");
        m_http->answer(1, 200, R"({"text":"So moved."})");
        QTRY_VERIFY(isFinished(tape) && isFinished(transcript));
        QCOMPARE((*tape)->value().id, 9007199254740993);
        QCOMPARE((*transcript)->value().text, u"So moved."_s);
    }
};

QUILLMERE_TEST(HubTapesTest, QCoreApplication)

} // namespace quillmere

#include "HubTapesTest.moc"
