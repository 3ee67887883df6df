#include "RecordDecoder.h"
#include "Rows.h"
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

/** The table of a test that runs once for each JSON value; the values name the rows. */
void rowsOfValues(std::initializer_list<const char*> values)
{
    QTest::addColumn<QByteArray>("value");
    for (const char* const value : values)
        QTest::newRow(value) << QByteArray(value);
}

} // namespace

/** Tests how each record is decoded from the hub's JSON. */
class HubRecordsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emptyObjectIsDecodedAsDefaults()
    {
        const auto status = decoded<TVStatus>("{}");
        QVERIFY(status == TVStatus());
        QCOMPARE(status.news.hlsURL, u"/live/news/index.m3u8"_s);
        QCOMPARE(status.news.mode, u"hls"_s);
        QCOMPARE(decoded<TranscriptResult>("{}").status, u"none"_s);
        const auto tape = decoded<Tape>("{}");
        QCOMPARE(tape.id, 0);
        QVERIFY(!tape.meetingDate && !tape.body && tape.market == TapeMarket() && tape.documents.isEmpty());
        const auto page = decoded<TapePage>("{}");
        QVERIFY(page.total == 0 && page.page == 1 && page.perPage == 60 && page.items.isEmpty());
    }

    void fieldIsDecodedFromItsKey()
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

    void valueThatIsNoObjectFails_data() { rowsOfValues({"[]", "[{}]", "\"{}\"", "1", "1.5", "true", "null"}); }

    void valueThatIsNoObjectFails()
    {
        QFETCH(QByteArray, value);
        for (const DecodingFailure failure :
             {decodeRecord<TVStatus>(value).error(), decodeRecord<NewsStatus>(value).error(),
              decodeRecord<CatalogSummary>(value).error(), decodeRecord<StationChannel>(value).error(),
              decodeRecord<TapePage>(value).error(), decodeRecord<Tape>(value).error(),
              decodeRecord<TapeMarket>(value).error(), decodeRecord<TapeBody>(value).error(),
              decodeRecord<TapeDocument>(value).error(), decodeRecord<TranscriptResult>(value).error()})
            QCOMPARE(failure, DecodingFailure::NotAnObject);
    }

    void malformedDocumentFails()
    {
        QCOMPARE(decodeRecord<TVStatus>("<html></html>").error(), DecodingFailure::Malformed);
        QCOMPARE(decodeRecord<TVStatus>("").error(), DecodingFailure::Malformed);
        QCOMPARE(decodeRecord<Tape>("{\"id\":1").error(), DecodingFailure::Malformed);
        QCOMPARE(decodeRecord<Tape>("{\"title\":\"\xFF\"}").error(), DecodingFailure::Malformed);
    }

    void valueOfWrongTypeIsDecodedAsDefault_data()
    {
        rowsOfValues({"null", "[]", "[1]", "1.5", "1e30", "9223372036854775808", "-9223372036854775809"});
    }

    void valueOfWrongTypeIsDecodedAsDefault()
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

    void newsStreamIsReplacedOnlyByText_data()
    {
        rows<QByteArray, QString, QString>({"value", "stream", "mode"},
                                           {{"empty", "\"\"", u"/live/news/index.m3u8"_s, u"hls"_s},
                                            {"null", "null", u"/live/news/index.m3u8"_s, u"hls"_s},
                                            {"number", "5", u"/live/news/index.m3u8"_s, u"hls"_s},
                                            {"text", "\"x\"", u"x"_s, u"x"_s},
                                            {"space", "\" \"", u" "_s, u" "_s}});
    }

    void newsStreamIsReplacedOnlyByText()
    {
        QFETCH(QByteArray, value);
        const auto news = decoded<NewsStatus>("{\"hls_url\":" + value + ",\"mode\":" + value + '}');
        QTEST(news.hlsURL, "stream");
        QTEST(news.mode, "mode");
    }

    void otherEmptyTextsStayEmpty()
    {
        QCOMPARE(decoded<TranscriptResult>(R"({"status":""})").status, u""_s);
        QVERIFY(decoded<Tape>(R"({"meeting_date":""})").meetingDate == u""_s);
    }

    void longTextIsCut_data()
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

    void longTextIsCut()
    {
        QFETCH(qsizetype, length);
        QFETCH(QString, end);
        QFETCH(qsizetype, kept);
        const QString text = QString(length, u'a') + end;
        QStringList read;
        if (length < 100'000) {
            QByteArray json = R"({"meeting_date": "@", "location": "@", "market": {"name": "@"},
                "body": {"kind": "@"}, "documents": [{"title": "@", "kind": "@"}]})";
            const auto tape = decoded<Tape>(json.replace('@', text.toUtf8()));
            read << tape.meetingDate.value() << tape.location << tape.market.name << tape.body->kind
                 << tape.documents[0].title << tape.documents[0].kind;
        } else {
            // These texts may be longer, as the art of a cassette is computed from hashes of them.
            QByteArray json = R"({"title": "@", "body": {"slug": "@", "name": "@"}})";
            const auto tape = decoded<Tape>(json.replace('@', text.toUtf8()));
            read << tape.title << tape.body->slug << tape.body->name;
        }
        for (const QString& field : std::as_const(read)) {
            QCOMPARE(field.size(), kept);
            QVERIFY(field == text.first(kept));
        }
    }

    void addressAndTranscriptAreNotCut()
    {
        const QByteArray endless(30000, 'a');
        QCOMPARE(decoded<Tape>(R"({"stream_url": ")" + endless + R"("})").streamURLPath.size(), endless.size());
        QCOMPARE(decoded<TranscriptResult>(R"({"text": ")" + endless + R"("})").text.size(), endless.size());
    }

    void invalidElementEmptiesWholeList_data() { rowsOfValues({"null", "7", "true", "[]", "[{}]"}); }

    void invalidElementEmptiesWholeList()
    {
        QFETCH(QByteArray, value);
        const auto with = [&value](QByteArray json) { return json.replace('?', value); };
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

    void bodyAndMarketAreDecodedOnlyFromObjects()
    {
        QVERIFY(!decoded<Tape>(R"({"body":"Council"})").body);
        QVERIFY(decoded<Tape>(R"({"body":{}})").body == TapeBody());
        QVERIFY(decoded<Tape>(R"({"body":{"name":7}})").body == TapeBody());
        const auto tape = decoded<Tape>(R"({"id":4,"market":7})");
        QCOMPARE(tape.id, 4);
        QVERIFY(tape.market == TapeMarket());
    }

    void lastChannelWithSameKeyIsUsed()
    {
        const auto news = decoded<NewsStatus>(R"({"channels":{"3":"no channel","4":{},"3":{"path":"a"}}})");
        QCOMPARE(news.channels.size(), 2);
        QCOMPARE(news.channels.value(u"3"_s).path, u"a"_s);
        QCOMPARE(decoded<Tape>(R"({"id":1,"id":"two"})").id, 0);
    }

    void keysAreMatchedExactly()
    {
        const auto tape =
            decoded<Tape>(R"({"ID":1,"meetingDate":"a","streamURLPath":"b","sourceURL":"c","Title":"d"})");
        QCOMPARE(tape.id, 0);
        QVERIFY(!tape.meetingDate);
        QVERIFY(tape.streamURLPath.isEmpty() && tape.sourceURL.isEmpty() && tape.title.isEmpty());
    }

    void idBeyond53BitsIsExact()
    {
        QCOMPARE(decoded<Tape>(R"({"id":9007199254740993})").id, 9007199254740993);
        QCOMPARE(decoded<Tape>(R"({"id":9007199254740993.0})").id, 9007199254740993);
        QCOMPARE(decoded<Tape>(R"({"id":-9223372036854775808})").id, std::numeric_limits<qint64>::min());
    }

    void tapesAreEqualIfIdsAre()
    {
        const auto first = decoded<Tape>(R"({"id":1,"title":"a"})");
        const auto fresher = decoded<Tape>(R"({"id":1,"title":"b"})");
        const auto other = decoded<Tape>(R"({"id":2,"title":"a"})");
        QVERIFY(first == fresher);
        QCOMPARE(qHash(first), qHash(fresher));
        QVERIFY(!(first == other));
    }

    void otherRecordsAreEqualIfAllFieldsAre()
    {
        const TapeMarket market{u"a"_s, u"b"_s, u"c"_s, 1};
        QVERIFY((market == TapeMarket{u"a"_s, u"b"_s, u"c"_s, 1}));
        QVERIFY(!(market == TapeMarket{u"a"_s, u"b"_s, u"c"_s, 2}));
        QVERIFY(qHash(market) != qHash(TapeMarket{u"a"_s, u"b"_s, u"c"_s, 2}));
        const TapeDocument document{1, u"a"_s, u"b"_s, u"c"_s, u"d"_s};
        QVERIFY(!(document == TapeDocument{1, u"a"_s, u"b"_s, u"c"_s, u"e"_s}));
        QVERIFY(qHash(document) != qHash(TapeDocument{1, u"a"_s, u"b"_s, u"c"_s, u"e"_s}));
    }
};

QUILLMERE_TEST(HubRecordsTest, TestMain::NoApplication)

} // namespace quillmere

#include "HubRecordsTest.moc"
