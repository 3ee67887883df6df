#include "HubAPI.h"
#include "ScriptedHttpClient.h"

#include <QTest>
#include <QThread>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

template<typename T>
using Kept = std::shared_ptr<std::optional<T>>;

template<typename T>
QCoro::Task<> keep(QCoro::Task<T> task, Kept<T> kept)
{
    *kept = co_await task;
}

/** The task's result, once it is there. */
template<typename T>
Kept<T> kept(QCoro::Task<T> task)
{
    auto result = std::make_shared<std::optional<T>>();
    keep(std::move(task), result);
    return result;
}

template<typename T>
bool isThere(const Kept<T>& kept)
{
    return kept->has_value();
}

/** The viewer's text of a fetch that failed; empty when it did not. */
template<typename T>
QString failure(const Kept<HubResult<T>>& kept)
{
    return **kept ? QString() : (*kept)->error().errorDescription();
}

const QString unreadable = u"The hub sent something this app couldn't read."_s;
const QString calledOff = u"The request was called off."_s;
const QString statusPath = u"/api/tv/status"_s;

} // namespace

/** The hub's client on a network that answers late, out of order or not at all. */
class HubAPITest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyErrorHasItsText_data();
    void everyErrorHasItsText();
    void theStatusOfAnAnswerIsJudged_data();
    void theStatusOfAnAnswerIsJudged();
    void whatCannotBeReadSaysSo_data();
    void whatCannotBeReadSaysSo();
    void anAnswerIsDecodedLeniently();
    void noAnswerSaysWhy_data();
    void noAnswerSaysWhy();
    void aPathWithoutAddressAsksNobody();
    void anAbsoluteAddressIsAskedAsItIs();

    void aPageOfTapesIsAskedFor_data();
    void aPageOfTapesIsAskedFor();
    void aQueryReachesTheHubAsTyped_data();
    void aQueryReachesTheHubAsTyped();
    void oneTapeAndItsTranscriptAreAskedForById();
    void aFetchRevalidatesWithinItsLimits();

    void decodingDoesNotHoldTheScreen();
    void answersOutOfOrderReachTheirOwnCallers();
    void manyFetchesWaitAtOnce();

    void aFetchCancelledBeforehandAsksNobody();
    void aFetchCancelledWhileWaitingFailsAtOnce();
    void aFetchCancelledWhileDecodingFailsAtOnce();
    void cancellingAFinishedFetchChangesNothing();
    void aCallerThatForgotItsFetchHarmsNobody();
    void destroyingTheClientFailsWhatStillWaits();
    void destroyingTheClientWhileItDecodesFailsTheFetch();
    void aFetchStartedByAFailingOneFailsWithIt();

    void aProbeWantsStatus200Exactly_data();
    void aProbeWantsStatus200Exactly();
    void aProbeThatFailsIsAnsweredNo_data();
    void aProbeThatFailsIsAnsweredNo();
    void aProbeBypassesTheCacheAndLastsEightSeconds();
    void aProbeWithoutAddressIsAnsweredNo();
    void aCancelledProbeIsAnsweredNo();
    void destroyingTheClientAnswersAProbeNo();

private:
    const QUrl m_base{u"https://hub.test"_s};
    std::unique_ptr<ScriptedHttpClient> m_http;
    std::unique_ptr<HubAPI> m_hub;
};

void HubAPITest::init()
{
    m_http = std::make_unique<ScriptedHttpClient>();
    m_hub = std::make_unique<HubAPI>(*m_http, m_base);
}

void HubAPITest::cleanup()
{
    m_hub.reset();
    m_http.reset();
    // What the decoding thread still had to say arrives now, and finds nobody.
    QCoreApplication::processEvents();
}

void HubAPITest::everyErrorHasItsText_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("text");
    QTest::newRow("404") << HubError::http(404).errorDescription() << u"The hub answered 404."_s;
    QTest::newRow("503") << HubError::http(503).errorDescription() << u"The hub answered 503."_s;
    QTest::newRow("transport") << HubError::transport(u"%1 No route."_s).errorDescription() << u"%1 No route."_s;
    QTest::newRow("bad address") << HubError::badURL().errorDescription() << u"That address didn't resolve."_s;
}

void HubAPITest::everyErrorHasItsText()
{
    QFETCH(QString, description);
    QTEST(description, "text");
}

void HubAPITest::theStatusOfAnAnswerIsJudged_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("text");
    QTest::newRow("199") << 199 << u"The hub answered 199."_s;
    QTest::newRow("200") << 200 << u""_s;
    QTest::newRow("206") << 206 << u""_s;
    QTest::newRow("299") << 299 << u""_s;
    QTest::newRow("300") << 300 << u"The hub answered 300."_s;
    QTest::newRow("304") << 304 << u"The hub answered 304."_s;
    QTest::newRow("404") << 404 << u"The hub answered 404."_s;
    QTest::newRow("503") << 503 << u"The hub answered 503."_s;
}

void HubAPITest::theStatusOfAnAnswerIsJudged()
{
    QFETCH(int, status);
    const auto result = kept(m_hub->get<TVStatus>(statusPath));
    m_http->answer(0, status, "{}");
    QTRY_VERIFY(isThere(result));
    QTEST(failure(result), "text");
    if (!**result)
        QCOMPARE((*result)->error() == HubError::http(status), true);
}

void HubAPITest::whatCannotBeReadSaysSo_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("an array") << "[]"_ba;
    QTest::newRow("null") << "null"_ba;
    QTest::newRow("a web page") << "<!DOCTYPE html><html><body>Welcome</body></html>"_ba;
    QTest::newRow("nothing") << ""_ba;
    QTest::newRow("cut short") << "{\"news\":{\"tower_live\":tr"_ba;
    QTest::newRow("not UTF-8") << "{\"news\":\"\xE9\"}"_ba;
    QTest::newRow("something behind it") << "{}{}"_ba;
    QTest::newRow("too deep") << "{\"a\":" + QByteArray(600, '[') + QByteArray(600, ']') + '}';
}

void HubAPITest::whatCannotBeReadSaysSo()
{
    QFETCH(QByteArray, body);
    const auto result = kept(m_hub->get<TVStatus>(statusPath));
    m_http->answer(0, 200, body);
    QTRY_VERIFY(isThere(result));
    QCOMPARE(failure(result), unreadable);
}

void HubAPITest::anAnswerIsDecodedLeniently()
{
    const auto result = kept(m_hub->get<TVStatus>(statusPath));
    m_http->answer(0, 200, R"({"news":{"tower_live":true,"weather":[1]},"rewindery":{"tapes":"many"}})");
    QTRY_VERIFY(isThere(result));
    QVERIFY(**result);
    TVStatus expected;
    expected.news.towerLive = true;
    QVERIFY((*result)->value() == expected);
}

void HubAPITest::noAnswerSaysWhy_data()
{
    QTest::addColumn<HttpFailure::Kind>("kind");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("text");
    using Kind = HttpFailure::Kind;
    QTest::newRow("network") << Kind::Network << u"Host hub.test not found"_s << u"Host hub.test not found"_s;
    QTest::newRow("without words") << Kind::Network << u""_s << u"The hub couldn't be reached."_s;
    QTest::newRow("late") << Kind::TimedOut << u"Timer 3"_s << u"The hub took too long to answer."_s;
    QTest::newRow("large") << Kind::TooLarge << u"Cap"_s << u"The hub's answer was too big to read."_s;
    QTest::newRow("cut short") << Kind::CutShort << u""_s << u"The hub's answer was cut short."_s;
    QTest::newRow("unreadable") << Kind::Unreadable << u""_s << unreadable;
    QTest::newRow("cancelled") << Kind::Cancelled << u""_s << calledOff;
}

void HubAPITest::noAnswerSaysWhy()
{
    QFETCH(HttpFailure::Kind, kind);
    QFETCH(QString, description);
    const auto result = kept(m_hub->get<TVStatus>(statusPath));
    m_http->fail(0, description, kind);
    QTRY_VERIFY(isThere(result));
    QTEST(failure(result), "text");
}

void HubAPITest::aPathWithoutAddressAsksNobody()
{
    for (const QString& path : {u""_s, u"https://"_s, u"file:///etc/passwd"_s}) {
        const auto result = kept(m_hub->get<TVStatus>(path));
        QTRY_VERIFY(isThere(result));
        QCOMPARE(failure(result), u"That address didn't resolve."_s);
    }
    QCOMPARE(m_http->count(), 0);
}

void HubAPITest::anAbsoluteAddressIsAskedAsItIs()
{
    const auto result = kept(m_hub->get<TVStatus>(u"https://elsewhere.test/status"_s));
    QCOMPARE(m_http->request(0).url, QUrl(u"https://elsewhere.test/status"_s));
}

void HubAPITest::aPageOfTapesIsAskedFor_data()
{
    QTest::addColumn<QString>("market");
    QTest::addColumn<QString>("query");
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("perPage");
    QTest::addColumn<QByteArray>("address");
    const auto row = [](const char* name, const QString& market, const QString& query, const QByteArray& rest) {
        QTest::newRow(name) << market << query << 1 << 200
                            << "https://hub.test/api/tv/tapes?page=1&per_page=200" + rest;
    };
    row("nothing", u""_s, u""_s, "");
    row("not given", QString(), QString(), "");
    row("market", u"springfield"_s, u""_s, "&market=springfield");
    row("market and query", u"springfield"_s, u"zoning"_s, "&market=springfield&q=zoning");
    row("query", u""_s, u"zoning"_s, "&q=zoning");
    row("spaces around", u"springfield"_s, u" zoning "_s, "&market=springfield&q=%20zoning%20");
    row("only spaces", u""_s, u"   "_s, "");
    row("tabs and other spaces", u""_s, u"\t\u00A0\u2003\u3000\u1680\u202F\u205F "_s, "");
    row("a line break", u""_s, u"\n"_s, "&q=%0A");
    row("a line break in spaces", u""_s, u" \r\n "_s, "&q=%20%0D%0A%20");
    row("line and paragraph separators", u""_s, u"\u2028\u2029"_s, "&q=%E2%80%A8%E2%80%A9");
    row("an odd market", u"st. john's&co"_s, u""_s, "&market=st.%20john%27s%26co");
    row("a market of spaces", u" "_s, u""_s, "&market=%20");
    QTest::newRow("other pages") << u""_s << u""_s << 7 << 60 << "https://hub.test/api/tv/tapes?page=7&per_page=60"_ba;
}

void HubAPITest::aPageOfTapesIsAskedFor()
{
    QFETCH(QString, market);
    QFETCH(QString, query);
    QFETCH(int, page);
    QFETCH(int, perPage);
    const auto result = kept(m_hub->tapes(market, query, page, perPage));
    QCOMPARE(m_http->count(), 1);
    QTEST(m_http->request(0).url.toEncoded(), "address");
    m_http->answer(0, 200, R"({"total":1,"items":[{"id":3}]})");
    QTRY_VERIFY(isThere(result));
    QCOMPARE((*result)->value().items.at(0).id, 3);
}

void HubAPITest::aQueryReachesTheHubAsTyped_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("received");
    const auto row = [](const QString& query) {
        QTest::newRow(query.toUtf8().toPercentEncoding().constData()) << query << query;
    };
    for (char16_t character = u'!'; character <= u'~'; ++character)
        row(QString(QChar(character)));
    row(u"a+b & c=d #e? f/g"_s);
    row(u"100%"_s);
    row(u"%41%zz%2B%"_s);
    row(u"café 市議会 📼"_s);
    row(u"a\tb\nc\rd"_s);
    row(u"e\u0301"_s);
    row(QString(u"a\0b"_s));
    row(u"\u007F\u0080\uFEFF\uFFFF"_s);
    QTest::newRow("half a pair") << u"a"_s + QChar(0xD83D) + u"b"_s << u"a\uFFFDb"_s;
}

void HubAPITest::aQueryReachesTheHubAsTyped()
{
    QFETCH(QString, query);
    kept(m_hub->tapes(u"m"_s, query, 1, 200));
    // As a server takes an address apart: at "&", at the first "=", then byte by byte.
    const QByteArray sent = m_http->request(0).url.query(QUrl::FullyEncoded).toLatin1();
    const QList<QByteArray> items = sent.split('&');
    QCOMPARE(items.size(), 4);
    QVERIFY(items.at(3).startsWith("q="));
    QVERIFY(!items.at(3).contains('+'));
    QTEST(QString::fromUtf8(QByteArray::fromPercentEncoding("x" + items.at(3).mid(2))).mid(1), "received");
    QVERIFY(!m_http->request(0).url.hasFragment());
}

void HubAPITest::oneTapeAndItsTranscriptAreAskedForById()
{
    const auto tape = kept(m_hub->tape(9007199254740993));
    const auto transcript = kept(m_hub->transcript(9007199254740993));
    const auto negative = kept(m_hub->tape(-1));
    QCOMPARE(m_http->request(0).url, QUrl(u"https://hub.test/api/tv/tape/9007199254740993"_s));
    QCOMPARE(m_http->request(1).url, QUrl(u"https://hub.test/api/meetings/9007199254740993/transcript"_s));
    QCOMPARE(m_http->request(2).url, QUrl(u"https://hub.test/api/tv/tape/-1"_s));
    m_http->answer(0, 200, R"({"id":9007199254740993})");
    m_http->answer(1, 200, R"({"text":"So moved."})");
    QTRY_VERIFY(isThere(tape) && isThere(transcript));
    QCOMPARE((*tape)->value().id, 9007199254740993);
    QCOMPARE((*transcript)->value().text, u"So moved."_s);
}

void HubAPITest::aFetchRevalidatesWithinItsLimits()
{
    kept(m_hub->get<TVStatus>(statusPath));
    const HttpRequest& request = m_http->request(0);
    QCOMPARE(request.cache, HttpRequest::Cache::Revalidate);
    QVERIFY(request.inactivityLimit == 20s);
    QVERIFY(request.overallLimit == 60s);
    QCOMPARE(request.maxBytes, 16 * 1024 * 1024);
}

void HubAPITest::decodingDoesNotHoldTheScreen()
{
    const auto result = kept(m_hub->get<TVStatus>(statusPath));
    m_http->answer(0, 200, "{}");
    QVERIFY(!isThere(result));
    QTRY_VERIFY(isThere(result));
    QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
}

void HubAPITest::answersOutOfOrderReachTheirOwnCallers()
{
    const auto first = kept(m_hub->tape(1));
    const auto second = kept(m_hub->tape(2));
    const auto third = kept(m_hub->tape(3));
    m_http->answer(2, 200, R"({"id":3})");
    QTRY_VERIFY(isThere(third));
    m_http->answer(1, 404);
    QTRY_VERIFY(isThere(second));
    QVERIFY(!isThere(first));
    m_http->answer(0, 200, R"({"id":1})");
    QTRY_VERIFY(isThere(first));
    QCOMPARE((*first)->value().id, 1);
    QCOMPARE(failure(second), u"The hub answered 404."_s);
    QCOMPARE((*third)->value().id, 3);
}

void HubAPITest::manyFetchesWaitAtOnce()
{
    QList<Kept<HubResult<Tape>>> results;
    for (int id = 0; id < 50; ++id)
        results.append(kept(m_hub->tape(id)));
    QCOMPARE(m_http->count(), 50);
    for (int id = 49; id >= 0; --id)
        m_http->answer(id, 200, "{\"id\":" + QByteArray::number(id) + '}');
    for (int id = 0; id < 50; ++id) {
        QTRY_VERIFY(isThere(results.at(id)));
        QCOMPARE((*results.at(id))->value().id, id);
    }
}

void HubAPITest::aFetchCancelledBeforehandAsksNobody()
{
    TaskScope screen;
    const CancelToken token = screen.token();
    screen.cancel();
    const auto result = kept(m_hub->get<TVStatus>(statusPath, token));
    QVERIFY(isThere(result));
    QCOMPARE(failure(result), calledOff);
    QCOMPARE(m_http->count(), 0);
}

void HubAPITest::aFetchCancelledWhileWaitingFailsAtOnce()
{
    TaskScope screen;
    const auto result = kept(m_hub->get<TVStatus>(statusPath, screen.token()));
    const auto other = kept(m_hub->get<TVStatus>(statusPath));
    screen.cancel();
    QVERIFY(isThere(result));
    QCOMPARE(failure(result), calledOff);
    QVERIFY(m_http->wasCancelled(0));
    QVERIFY(!m_http->wasCancelled(1));
    m_http->answer(1, 200, "{}");
    QTRY_VERIFY(isThere(other));
    QVERIFY(**other);
}

void HubAPITest::aFetchCancelledWhileDecodingFailsAtOnce()
{
    TaskScope screen;
    const auto result = kept(m_hub->get<TVStatus>(statusPath, screen.token()));
    m_http->answer(0, 200, "{}");
    QVERIFY(!isThere(result));
    screen.cancel();
    QVERIFY(isThere(result));
    QCOMPARE(failure(result), calledOff);
    // The client goes on: the next one is decoded behind the one that nobody wants.
    const auto next = kept(m_hub->get<TVStatus>(statusPath));
    m_http->answer(1, 200, "{}");
    QTRY_VERIFY(isThere(next));
    QVERIFY(**next);
    QCOMPARE(failure(result), calledOff);
}

void HubAPITest::cancellingAFinishedFetchChangesNothing()
{
    TaskScope screen;
    const auto result = kept(m_hub->get<TVStatus>(statusPath, screen.token()));
    m_http->answer(0, 200, "{}");
    QTRY_VERIFY(isThere(result));
    screen.cancel();
    QVERIFY(**result);
    QVERIFY(!m_http->wasCancelled(0));
}

void HubAPITest::aCallerThatForgotItsFetchHarmsNobody()
{
    (void)m_hub->get<TVStatus>(statusPath);
    (void)m_hub->probe(u"/live/news/index.m3u8"_s);
    m_http->answer(0, 200, "{}");
    m_http->answer(1, 200);
    const auto result = kept(m_hub->get<TVStatus>(statusPath));
    m_http->answer(2, 200, "{}");
    QTRY_VERIFY(isThere(result));
}

void HubAPITest::destroyingTheClientFailsWhatStillWaits()
{
    TaskScope screen;
    const auto first = kept(m_hub->get<TVStatus>(statusPath));
    const auto second = kept(m_hub->tapes(u""_s, u""_s, 1, 200, screen.token()));
    m_hub.reset();
    QVERIFY(isThere(first) && isThere(second));
    QCOMPARE(failure(first), calledOff);
    QCOMPARE(failure(second), calledOff);
    QVERIFY(m_http->wasCancelled(0) && m_http->wasCancelled(1));
    screen.cancel();
}

void HubAPITest::destroyingTheClientWhileItDecodesFailsTheFetch()
{
    QList<Kept<HubResult<TapePage>>> results;
    const QByteArray large = "{\"items\":[" + QByteArray("{\"id\":1},").repeated(100'000) + "{}]}";
    for (int call = 0; call < 20; ++call) {
        results.append(kept(m_hub->tapes(u""_s, u""_s, 1, 200)));
        m_http->answer(call, 200, large);
    }
    m_hub.reset();
    for (const auto& result : results) {
        QVERIFY(isThere(result));
        QCOMPARE(failure(result), calledOff);
    }
}

void HubAPITest::aFetchStartedByAFailingOneFailsWithIt()
{
    HubAPI& hub = *m_hub;
    const auto twice = [](HubAPI& client) -> QCoro::Task<HubResult<TVStatus>> {
        auto result = co_await client.get<TVStatus>(statusPath);
        if (!result)
            result = co_await client.get<TVStatus>(statusPath);
        co_return result;
    };
    const auto result = kept(twice(hub));
    m_hub.reset();
    QVERIFY(isThere(result));
    QCOMPARE(failure(result), calledOff);
    QCOMPARE(m_http->count(), 1);
}

void HubAPITest::aProbeWantsStatus200Exactly_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {199, 200, 201, 204, 206, 299, 301, 304, 404, 500})
        QTest::addRow("%d", status) << status;
}

void HubAPITest::aProbeWantsStatus200Exactly()
{
    QFETCH(int, status);
    const auto result = kept(m_hub->probe(u"/live/news/index.m3u8"_s));
    m_http->answer(0, status, "#EXTM3U\n");
    QTRY_VERIFY(isThere(result));
    QCOMPARE(result->value(), status == 200);
}

void HubAPITest::aProbeThatFailsIsAnsweredNo_data()
{
    QTest::addColumn<HttpFailure::Kind>("kind");
    using Kind = HttpFailure::Kind;
    QTest::newRow("network") << Kind::Network;
    QTest::newRow("late") << Kind::TimedOut;
    QTest::newRow("large") << Kind::TooLarge;
    QTest::newRow("cut short") << Kind::CutShort;
    QTest::newRow("unreadable") << Kind::Unreadable;
    QTest::newRow("cancelled") << Kind::Cancelled;
}

void HubAPITest::aProbeThatFailsIsAnsweredNo()
{
    QFETCH(HttpFailure::Kind, kind);
    const auto result = kept(m_hub->probe(u"/live/news/index.m3u8"_s));
    m_http->fail(0, u"No"_s, kind);
    QTRY_VERIFY(isThere(result));
    QCOMPARE(result->value(), false);
}

void HubAPITest::aProbeBypassesTheCacheAndLastsEightSeconds()
{
    kept(m_hub->probe(u"council/index.m3u8"_s));
    const HttpRequest& request = m_http->request(0);
    QCOMPARE(request.url, QUrl(u"https://hub.test/council/index.m3u8"_s));
    QCOMPARE(request.cache, HttpRequest::Cache::Bypass);
    QVERIFY(request.inactivityLimit == 8s);
    QVERIFY(request.overallLimit == 8s);
}

void HubAPITest::aProbeWithoutAddressIsAnsweredNo()
{
    const auto result = kept(m_hub->probe(u""_s));
    QTRY_VERIFY(isThere(result));
    QCOMPARE(result->value(), false);
    QCOMPARE(m_http->count(), 0);
}

void HubAPITest::aCancelledProbeIsAnsweredNo()
{
    TaskScope screen;
    const auto result = kept(m_hub->probe(u"/a"_s, screen.token()));
    screen.cancel();
    QVERIFY(isThere(result));
    QCOMPARE(result->value(), false);
    QVERIFY(m_http->wasCancelled(0));
}

void HubAPITest::destroyingTheClientAnswersAProbeNo()
{
    const auto result = kept(m_hub->probe(u"/a"_s));
    m_hub.reset();
    QVERIFY(isThere(result));
    QCOMPARE(result->value(), false);
}

QTEST_GUILESS_MAIN(HubAPITest)
#include "HubAPITest.moc"
