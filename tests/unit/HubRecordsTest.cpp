#include "RecordDecoder.h"
#include "TVStatus.h"
#include "TestMain.h"
#include "TranscriptResult.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

template<typename Record>
Record decoded(const QByteArray& json)
{
    const auto record = decodeRecord<Record>(json);
    if (!record)
        qFatal("The record was refused: %s", json.constData());
    return *record;
}

} // namespace

/** Tests how each record is decoded from the hub's JSON. */
class HubRecordsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emptyObjectIsDecodedAsDefaults();
    void fieldIsDecodedFromItsKey();
    void valueThatIsNoObjectFails_data();
    void valueThatIsNoObjectFails();
    void malformedDocumentFails();
    void valueOfWrongTypeIsDecodedAsDefault_data();
    void valueOfWrongTypeIsDecodedAsDefault();
    void newsStreamIsReplacedOnlyByText_data();
    void newsStreamIsReplacedOnlyByText();
    void otherEmptyTextsStayEmpty();
    void longTextIsCut_data();
    void longTextIsCut();
    void addressAndTranscriptAreNotCut();
    void invalidElementEmptiesWholeList_data();
    void invalidElementEmptiesWholeList();
    void bodyIsDecodedOnlyFromObject();
    void marketThatIsNoObjectIsDefault();
    void pageHasDefaultsForMissingMembers();
    void lastChannelWithSameKeyIsUsed();
    void keysAreMatchedExactly();
    void idBeyond53BitsIsExact();
    void tapesAreEqualIfIdsAre();
    void otherRecordsAreEqualIfAllFieldsAre();
};

void HubRecordsTest::emptyObjectIsDecodedAsDefaults()
{
    const auto status = decoded<TVStatus>("{}");
    QVERIFY(status == TVStatus());
    QCOMPARE(status.news.towerLive, false);
    QCOMPARE(status.news.takeover, false);
    QCOMPARE(status.news.hlsURL, u"/live/news/index.m3u8"_s);
    QCOMPARE(status.news.mode, u"hls"_s);
    QVERIFY(status.news.ticker.isEmpty());
    QVERIFY(status.news.channels.isEmpty());
    QCOMPARE(status.rewindery.tapes, 0);
    QVERIFY(status.rewindery.markets.isEmpty());
    QCOMPARE(decoded<TranscriptResult>("{}").status, u"none"_s);
    const auto tape = decoded<Tape>("{}");
    QCOMPARE(tape.id, 0);
    QVERIFY(!tape.meetingDate);
    QVERIFY(!tape.body);
    QVERIFY(tape.market == TapeMarket());
    QVERIFY(tape.documents.isEmpty());
}

void HubRecordsTest::fieldIsDecodedFromItsKey()
{
    const auto status = decoded<TVStatus>(R"({"news":{"tower_live":true,"takeover":true,"hls_url":"/a","mode":"b",
        "youtube_id":"c","tagline":"d","program_title":"e","program_note":"f","next_broadcast":"g",
        "next_broadcast_label":"h","ticker":["i","j"],"channels":{"7":{"label":"k","path":"l"}},"unknown":{}},
        "rewindery":{"tapes":3,"markets":[{"slug":"m","name":"n","state_code":"o","tapes":4}]}})");
    NewsStatus news{true,   true,   u"/a"_s, u"b"_s, u"c"_s,           u"d"_s,
                    u"e"_s, u"f"_s, u"g"_s,  u"h"_s, {u"i"_s, u"j"_s}, {{u"7"_s, {u"k"_s, u"l"_s}}}};
    QVERIFY(status.news == news);
    QVERIFY((status.rewindery == CatalogSummary{3, {{u"m"_s, u"n"_s, u"o"_s, 4}}}));

    const auto tape = decoded<Tape>(R"({"id":1,"title":"a","meeting_date":"2025-06-03","market":{"slug":"b"},
        "body":{"slug":"c","name":"d","kind":"e"},"stream_url":"f","size_bytes":2,"has_agenda":true,
        "has_transcript":true,"video_url":"g","location":"h",
        "documents":[{"id":3,"kind":"i","title":"j","mime_type":"k","url":"l"}]})");
    QCOMPARE(tape.id, 1);
    QCOMPARE(tape.title, u"a"_s);
    QCOMPARE(tape.meetingDate.value_or(u""_s), u"2025-06-03"_s);
    QCOMPARE(tape.market.slug, u"b"_s);
    QVERIFY((tape.body == TapeBody{u"c"_s, u"d"_s, u"e"_s}));
    QCOMPARE(tape.streamURLPath, u"f"_s);
    QCOMPARE(tape.sizeBytes, 2);
    QVERIFY(tape.hasAgenda);
    QVERIFY(tape.hasTranscript);
    QCOMPARE(tape.sourceURL, u"g"_s);
    QCOMPARE(tape.location, u"h"_s);
    QVERIFY((tape.documents == QList<TapeDocument>{{3, u"i"_s, u"j"_s, u"k"_s, u"l"_s}}));

    const auto page = decoded<TapePage>(R"({"total":5,"page":2,"per_page":200,"items":[{"id":8},{"id":9}]})");
    QCOMPARE(page.total, 5);
    QCOMPARE(page.page, 2);
    QCOMPARE(page.perPage, 200);
    QCOMPARE(page.items.size(), 2);
    QCOMPARE(page.items.at(1).id, 9);

    const TranscriptResult transcript{u"ready"_s, u"So moved."_s, 2};
    QVERIFY(decoded<TranscriptResult>(R"({"status":"ready","text":"So moved.","words":2})") == transcript);
}

void HubRecordsTest::valueThatIsNoObjectFails_data()
{
    QTest::addColumn<QByteArray>("json");
    for (const char* json : {"[]", "[{}]", "\"{}\"", "1", "1.5", "true", "null"})
        QTest::newRow(json) << QByteArray(json);
}

void HubRecordsTest::valueThatIsNoObjectFails()
{
    QFETCH(QByteArray, json);
    QCOMPARE(decodeRecord<TVStatus>(json).error(), DecodingFailure::NotAnObject);
    QCOMPARE(decodeRecord<NewsStatus>(json).error(), DecodingFailure::NotAnObject);
    QCOMPARE(decodeRecord<CatalogSummary>(json).error(), DecodingFailure::NotAnObject);
    QCOMPARE(decodeRecord<StationChannel>(json).error(), DecodingFailure::NotAnObject);
    QCOMPARE(decodeRecord<TapePage>(json).error(), DecodingFailure::NotAnObject);
    QCOMPARE(decodeRecord<Tape>(json).error(), DecodingFailure::NotAnObject);
    QCOMPARE(decodeRecord<TapeMarket>(json).error(), DecodingFailure::NotAnObject);
    QCOMPARE(decodeRecord<TapeBody>(json).error(), DecodingFailure::NotAnObject);
    QCOMPARE(decodeRecord<TapeDocument>(json).error(), DecodingFailure::NotAnObject);
    QCOMPARE(decodeRecord<TranscriptResult>(json).error(), DecodingFailure::NotAnObject);
}

void HubRecordsTest::malformedDocumentFails()
{
    QCOMPARE(decodeRecord<TVStatus>("<html></html>").error(), DecodingFailure::Malformed);
    QCOMPARE(decodeRecord<TVStatus>("").error(), DecodingFailure::Malformed);
    QCOMPARE(decodeRecord<Tape>("{\"id\":1").error(), DecodingFailure::Malformed);
    QCOMPARE(decodeRecord<Tape>("{\"title\":\"\xFF\"}").error(), DecodingFailure::Malformed);
}

void HubRecordsTest::valueOfWrongTypeIsDecodedAsDefault_data()
{
    QTest::addColumn<QByteArray>("value");
    for (const char* value : {"null", "[]", "[1]", "1.5", "1e30", "9223372036854775808", "-9223372036854775809"})
        QTest::newRow(value) << QByteArray(value);
}

void HubRecordsTest::valueOfWrongTypeIsDecodedAsDefault()
{
    QFETCH(QByteArray, value);
    const auto with = [&value](QByteArray json) { return json.replace('?', value); };
    const auto tape = decoded<Tape>(with(R"({"id":?,"title":?,"meeting_date":?,"market":?,"body":?,"stream_url":?,
        "size_bytes":?,"has_agenda":?,"has_transcript":?,"video_url":?,"location":?})"));
    QCOMPARE(tape.id, 0);
    QVERIFY(tape.title.isEmpty() && tape.streamURLPath.isEmpty() && tape.sourceURL.isEmpty() &&
            tape.location.isEmpty());
    QVERIFY(!tape.meetingDate && !tape.body && tape.market == TapeMarket());
    QVERIFY(tape.sizeBytes == 0 && !tape.hasAgenda && !tape.hasTranscript);
    QVERIFY(decoded<TVStatus>(with(R"({"news":?,"rewindery":?})")) == TVStatus());
    QVERIFY(decoded<NewsStatus>(with(R"({"tower_live":?,"hls_url":?,"mode":?,"channels":?})")) == NewsStatus());
    const auto page = decoded<TapePage>(with(R"({"total":?,"page":?,"per_page":?})"));
    QVERIFY(page.total == 0 && page.page == 1 && page.perPage == 60);
    QVERIFY(decoded<TranscriptResult>(with(R"({"status":?,"text":?,"words":?})")) == TranscriptResult());
    // Texts where other types are expected, and numbers where texts are expected.
    QVERIFY(!decoded<NewsStatus>(R"({"tower_live":"true"})").towerLive);
    QVERIFY(!decoded<NewsStatus>(R"({"tower_live":1})").towerLive);
    QCOMPARE(decoded<Tape>(R"({"id":"123"})").id, 0);
    QVERIFY(decoded<Tape>(R"({"title":123})").title.isEmpty());
    QCOMPARE(decoded<Tape>(R"({"id":true})").id, 0);
}

void HubRecordsTest::newsStreamIsReplacedOnlyByText_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("stream");
    QTest::addColumn<QString>("mode");
    QTest::newRow("empty") << "\"\""_ba << u"/live/news/index.m3u8"_s << u"hls"_s;
    QTest::newRow("null") << "null"_ba << u"/live/news/index.m3u8"_s << u"hls"_s;
    QTest::newRow("number") << "5"_ba << u"/live/news/index.m3u8"_s << u"hls"_s;
    QTest::newRow("text") << "\"x\""_ba << u"x"_s << u"x"_s;
    QTest::newRow("space") << "\" \""_ba << u" "_s << u" "_s;
}

void HubRecordsTest::newsStreamIsReplacedOnlyByText()
{
    QFETCH(QByteArray, value);
    const auto news = decoded<NewsStatus>("{\"hls_url\":" + value + ",\"mode\":" + value + '}');
    QTEST(news.hlsURL, "stream");
    QTEST(news.mode, "mode");
}

void HubRecordsTest::otherEmptyTextsStayEmpty()
{
    QCOMPARE(decoded<TranscriptResult>(R"({"status":""})").status, u""_s);
    const auto tape = decoded<Tape>(R"({"meeting_date":""})");
    QVERIFY(tape.meetingDate);
    QCOMPARE(*tape.meetingDate, u""_s);
}

void HubRecordsTest::longTextIsCut_data()
{
    QTest::addColumn<qsizetype>("length");
    QTest::addColumn<QString>("end");
    QTest::addColumn<qsizetype>("kept");
    for (const qsizetype longest : {20'000, 1'000'000}) {
        QTest::addRow("%d", int(longest)) << longest << u""_s << longest;
        QTest::addRow("%d, one longer", int(longest)) << longest << u"b"_s << longest;
        QTest::addRow("%d, a million longer", int(longest)) << longest << QString(1'000'000, u'b') << longest;
        QTest::addRow("%d, surrogate pair across the limit", int(longest))
            << longest - 1 << u"\U0001F4FC"_s << longest - 1;
        QTest::addRow("%d, surrogate pair before the limit", int(longest))
            << longest - 2 << u"\U0001F4FCb"_s << longest;
    }
}

void HubRecordsTest::longTextIsCut()
{
    QFETCH(qsizetype, length);
    QFETCH(QString, end);
    QFETCH(qsizetype, kept);
    const QString text = QString(length, u'a') + end;
    QStringList read;
    if (length < 100'000) {
        const QByteArray json = R"({"meeting_date": "@", "location": "@", "market": {"name": "@"},
            "body": {"kind": "@"}, "documents": [{"title": "@", "kind": "@"}]})";
        const auto tape = decoded<Tape>(QByteArray(json).replace('@', text.toUtf8()));
        read = {tape.meetingDate.value(), tape.location,           tape.market.name,
                tape.body->kind,          tape.documents[0].title, tape.documents[0].kind};
    } else {
        // These texts may be longer, as the art of a cassette is computed from hashes of them.
        const QByteArray json = R"({"title": "@", "body": {"slug": "@", "name": "@"}})";
        const auto tape = decoded<Tape>(QByteArray(json).replace('@', text.toUtf8()));
        read = {tape.title, tape.body->slug, tape.body->name};
    }
    for (const QString& field : std::as_const(read)) {
        QCOMPARE(field.size(), kept);
        QVERIFY(field == text.first(kept));
    }
}

void HubRecordsTest::addressAndTranscriptAreNotCut()
{
    const QByteArray endless(30000, 'a');
    QCOMPARE(decoded<Tape>(R"({"stream_url": ")" + endless + R"("})").streamURLPath.size(), endless.size());
    QCOMPARE(decoded<TranscriptResult>(R"({"text": ")" + endless + R"("})").text.size(), endless.size());
}

void HubRecordsTest::invalidElementEmptiesWholeList_data()
{
    QTest::addColumn<QByteArray>("bad");
    for (const char* bad : {"null", "7", "true", "[]", "[{}]"})
        QTest::newRow(bad) << QByteArray(bad);
}

void HubRecordsTest::invalidElementEmptiesWholeList()
{
    QFETCH(QByteArray, bad);
    const auto with = [&bad](QByteArray json) { return json.replace('?', bad); };
    QVERIFY(decoded<NewsStatus>(with(R"({"ticker":["a",?]})")).ticker.isEmpty());
    QVERIFY(decoded<NewsStatus>(with(R"({"channels":{"3":{"path":"a"},"4":?}})")).channels.isEmpty());
    QVERIFY(decoded<CatalogSummary>(with(R"({"markets":[{"slug":"a"},?]})")).markets.isEmpty());
    QVERIFY(decoded<Tape>(with(R"({"documents":[?,{"id":1}]})")).documents.isEmpty());
    QVERIFY(decoded<TapePage>(with(R"({"items":[{"id":1},?]})")).items.isEmpty());
    QVERIFY(decoded<Tape>(R"({"documents":[{"id":1},"agenda"]})").documents.isEmpty());
    QVERIFY(decoded<NewsStatus>(R"({"ticker":["a",{}]})").ticker.isEmpty());
    // An invalid value inside an element changes only that element.
    QCOMPARE(decoded<Tape>(with(R"({"documents":[{"id":?},{"id":2}]})")).documents.size(), 2);
    QCOMPARE(decoded<TapePage>(with(R"({"items":[{"documents":?},{"id":2}]})")).items.size(), 2);
}

void HubRecordsTest::bodyIsDecodedOnlyFromObject()
{
    QVERIFY(!decoded<Tape>(R"({"id":1})").body);
    QVERIFY(!decoded<Tape>(R"({"body":null})").body);
    QVERIFY(!decoded<Tape>(R"({"body":"Council"})").body);
    QVERIFY(decoded<Tape>(R"({"body":{}})").body == TapeBody());
    QVERIFY(decoded<Tape>(R"({"body":{"name":7}})").body == TapeBody());
}

void HubRecordsTest::marketThatIsNoObjectIsDefault()
{
    const auto tape = decoded<Tape>(R"({"id":4,"market":7})");
    QCOMPARE(tape.id, 4);
    QVERIFY(tape.market.slug.isEmpty());
}

void HubRecordsTest::pageHasDefaultsForMissingMembers()
{
    const auto page = decoded<TapePage>(R"({"total":7,"items":[]})");
    QCOMPARE(page.total, 7);
    QCOMPARE(page.page, 1);
    QCOMPARE(page.perPage, 60);
}

void HubRecordsTest::lastChannelWithSameKeyIsUsed()
{
    const auto news = decoded<NewsStatus>(R"({"channels":{"3":"no channel","4":{},"3":{"path":"a"}}})");
    QCOMPARE(news.channels.size(), 2);
    QCOMPARE(news.channels.value(u"3"_s).path, u"a"_s);
    QCOMPARE(decoded<Tape>(R"({"id":1,"id":"two"})").id, 0);
}

void HubRecordsTest::keysAreMatchedExactly()
{
    const auto tape = decoded<Tape>(R"({"ID":1,"meetingDate":"a","streamURLPath":"b","sourceURL":"c","Title":"d"})");
    QCOMPARE(tape.id, 0);
    QVERIFY(!tape.meetingDate);
    QVERIFY(tape.streamURLPath.isEmpty() && tape.sourceURL.isEmpty() && tape.title.isEmpty());
}

void HubRecordsTest::idBeyond53BitsIsExact()
{
    QCOMPARE(decoded<Tape>(R"({"id":9007199254740993})").id, 9007199254740993);
    QCOMPARE(decoded<Tape>(R"({"id":9007199254740993.0})").id, 9007199254740993);
    QCOMPARE(decoded<Tape>(R"({"id":-9223372036854775808})").id, std::numeric_limits<qint64>::min());
}

void HubRecordsTest::tapesAreEqualIfIdsAre()
{
    const auto first = decoded<Tape>(R"({"id":1,"title":"a"})");
    const auto fresher = decoded<Tape>(R"({"id":1,"title":"b"})");
    const auto other = decoded<Tape>(R"({"id":2,"title":"a"})");
    QVERIFY(first == fresher);
    QCOMPARE(qHash(first), qHash(fresher));
    QVERIFY(!(first == other));
}

void HubRecordsTest::otherRecordsAreEqualIfAllFieldsAre()
{
    const TapeMarket market{u"a"_s, u"b"_s, u"c"_s, 1};
    QVERIFY((market == TapeMarket{u"a"_s, u"b"_s, u"c"_s, 1}));
    QVERIFY(!(market == TapeMarket{u"a"_s, u"b"_s, u"c"_s, 2}));
    QVERIFY(qHash(market) != qHash(TapeMarket{u"a"_s, u"b"_s, u"c"_s, 2}));
    const TapeDocument document{1, u"a"_s, u"b"_s, u"c"_s, u"d"_s};
    QVERIFY(!(document == TapeDocument{1, u"a"_s, u"b"_s, u"c"_s, u"e"_s}));
    QVERIFY(qHash(document) != qHash(TapeDocument{1, u"a"_s, u"b"_s, u"c"_s, u"e"_s}));
}

QUILLMERE_TEST(HubRecordsTest, TestMain::NoApplication)

} // namespace quillmere

#include "HubRecordsTest.moc"
