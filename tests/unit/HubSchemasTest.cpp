#include "RecordDecoder.h"
#include "TVStatus.h"
#include "TapePage.h"
#include "TranscriptResult.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <functional>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

// A record with one field more or less than stand here does not compile.

auto fieldsOf(const StationChannel& channel)
{
    const auto& [label, path] = channel;
    return std::tie(label, path);
}

auto fieldsOf(const NewsStatus& news)
{
    const auto& [towerLive, takeover, hlsURL, mode, youtubeID, tagline, programTitle, programNote, nextBroadcast,
                 nextBroadcastLabel, ticker, channels] = news;
    return std::tie(towerLive, takeover, hlsURL, mode, youtubeID, tagline, programTitle, programNote, nextBroadcast,
                    nextBroadcastLabel, ticker, channels);
}

auto fieldsOf(const TapeMarket& market)
{
    const auto& [slug, name, stateCode, tapes] = market;
    return std::tie(slug, name, stateCode, tapes);
}

auto fieldsOf(const CatalogSummary& summary)
{
    const auto& [tapes, markets] = summary;
    return std::tie(tapes, markets);
}

auto fieldsOf(const TVStatus& status)
{
    const auto& [news, rewindery] = status;
    return std::tie(news, rewindery);
}

auto fieldsOf(const TapeBody& body)
{
    const auto& [slug, name, kind] = body;
    return std::tie(slug, name, kind);
}

auto fieldsOf(const TapeDocument& document)
{
    const auto& [id, kind, title, mimeType, url] = document;
    return std::tie(id, kind, title, mimeType, url);
}

auto fieldsOf(const Tape& tape)
{
    const auto& [id, title, meetingDate, market, body, streamURLPath, sizeBytes, hasAgenda, hasTranscript, sourceURL,
                 location, documents] = tape;
    return std::tie(id, title, meetingDate, market, body, streamURLPath, sizeBytes, hasAgenda, hasTranscript, sourceURL,
                    location, documents);
}

auto fieldsOf(const TapePage& page)
{
    const auto& [total, number, perPage, items] = page;
    return std::tie(total, number, perPage, items);
}

auto fieldsOf(const TranscriptResult& transcript)
{
    const auto& [status, text, words] = transcript;
    return std::tie(status, text, words);
}

template<typename Record>
QList<bool> changedFields(const QByteArray& json)
{
    const auto record = decodeRecord<Record>(json);
    if (!record)
        qFatal("The record was refused: %s", json.constData());
    const Record untouched;
    const auto compare = [&untouched](const auto&... field) {
        return std::apply([&field...](const auto&... other) { return QList<bool>{!(field == other)...}; },
                          fieldsOf(untouched));
    };
    return std::apply(compare, fieldsOf(*record));
}

QJsonValue toJson(bool value)
{
    return value;
}

QJsonValue toJson(qint64 value)
{
    return value;
}

QJsonValue toJson(const QString& value)
{
    return value;
}

template<typename Value>
QJsonValue toJson(const std::optional<Value>& value)
{
    return value ? QJsonValue::Undefined : QJsonValue::Null;
}

template<typename Value>
QJsonValue toJson(const QList<Value>& list)
{
    return list.isEmpty() ? QJsonArray() : QJsonValue(QJsonValue::Undefined);
}

template<typename Value>
QJsonValue toJson(const QMap<QString, Value>& map)
{
    return map.isEmpty() ? QJsonObject() : QJsonValue(QJsonValue::Undefined);
}

/** A record within a record: an empty object is the record at its defaults. */
template<typename Record>
QJsonValue toJson(const Record& record) requires requires
{
    fieldsOf(record);
}
{
    return record == Record() ? QJsonObject() : QJsonValue(QJsonValue::Undefined);
}

template<typename Record>
QJsonArray defaultsOf()
{
    return std::apply([](const auto&... field) { return QJsonArray{toJson(field)...}; }, fieldsOf(Record()));
}

QJsonObject readSchema(const QString& file)
{
    QFile stored(u"" QUILLMERE_SCHEMAS "/"_s + file);
    if (!stored.open(QIODevice::ReadOnly))
        qFatal("%s is missing", qPrintable(stored.fileName()));
    return QJsonDocument::fromJson(stored.readAll()).object();
}

QJsonObject definition(const QString& name)
{
    static const QJsonObject definitions = readSchema(u"shared.json"_s).value("$defs"_L1).toObject();
    return definitions.value(name).toObject();
}

/** The schema with what it refers to, its own words first. */
QJsonObject resolved(QJsonObject schema)
{
    while (schema.contains("$ref"_L1)) {
        QJsonObject whole = definition(schema.take("$ref"_L1).toString().section(u"/$defs/"_s, 1));
        for (auto own = schema.constBegin(); own != schema.constEnd(); ++own)
            whole.insert(own.key(), own.value());
        schema = whole;
    }
    return schema;
}

/** A value of the schema's type that is not its default. */
QJsonValue otherThanDefault(const QJsonObject& given)
{
    const QJsonObject schema = resolved(given);
    const QJsonValue types = schema.value("type"_L1);
    const QString type = types.isArray() ? types.toArray().first().toString() : types.toString();
    const QJsonValue usual = schema.value("default"_L1);
    if (type == "boolean"_L1)
        return !usual.toBool();
    if (type == "integer"_L1)
        return usual.toInteger() + 1;
    if (type == "string"_L1)
        return usual.toString() + u"other"_s;
    if (type == "array"_L1)
        return QJsonArray{otherThanDefault(schema.value("items"_L1).toObject())};
    if (schema.contains("additionalProperties"_L1))
        return QJsonObject{{u"7"_s, otherThanDefault(schema.value("additionalProperties"_L1).toObject())}};
    QJsonObject object;
    const QJsonObject properties = schema.value("properties"_L1).toObject();
    for (auto property = properties.constBegin(); property != properties.constEnd(); ++property)
        object.insert(property.key(), otherThanDefault(property->toObject()));
    return object;
}

/** A record and the schema that describes it. */
struct Pair
{
    QJsonObject properties;
    std::function<QList<bool>(const QByteArray&)> changedFields;
    QJsonArray defaults; ///< of the record's fields
};

template<typename Record>
Pair pairOf(const QJsonObject& schema)
{
    return {resolved(schema).value("properties"_L1).toObject(), &changedFields<Record>, defaultsOf<Record>()};
}

/** Which field of the record the property fills; -1 when it is not exactly one. */
qsizetype fieldOf(const Pair& pair, const QString& property)
{
    const QJsonObject document{{property, otherThanDefault(pair.properties.value(property).toObject())}};
    const QList<bool> changed = pair.changedFields(QJsonDocument(document).toJson());
    return changed.count(true) == 1 ? changed.indexOf(true) : -1;
}

} // namespace

Q_DECLARE_METATYPE(Pair)

/** Whether docs/schema, which is for those who write a hub, says what the decoder reads. */
class HubSchemasTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachPropertyOfTheSchemaIsAFieldOfTheRecord_data() { pairs(); }
    void eachPropertyOfTheSchemaIsAFieldOfTheRecord();
    void eachFieldOfTheRecordIsAPropertyOfTheSchema_data() { pairs(); }
    void eachFieldOfTheRecordIsAPropertyOfTheSchema();
    void theDefaultsOfTheSchemaAreTheRecords_data() { pairs(); }
    void theDefaultsOfTheSchemaAreTheRecords();
    void everyPropertyIsDescribed_data() { pairs(); }
    void everyPropertyIsDescribed();

private:
    void pairs();
};

void HubSchemasTest::pairs()
{
    QTest::addColumn<Pair>("pair");
    QTest::newRow("status") << pairOf<TVStatus>(readSchema(u"status.json"_s));
    QTest::newRow("page") << pairOf<TapePage>(readSchema(u"tape-page.json"_s));
    QTest::newRow("tape") << pairOf<Tape>(readSchema(u"tape.json"_s));
    QTest::newRow("transcript") << pairOf<TranscriptResult>(readSchema(u"transcript.json"_s));
    QTest::newRow("news") << pairOf<NewsStatus>(definition(u"news"_s));
    QTest::newRow("channel") << pairOf<StationChannel>(definition(u"channel"_s));
    QTest::newRow("rewindery") << pairOf<CatalogSummary>(definition(u"rewindery"_s));
    QTest::newRow("market") << pairOf<TapeMarket>(definition(u"market"_s));
    QTest::newRow("body") << pairOf<TapeBody>(definition(u"body"_s));
    QTest::newRow("document") << pairOf<TapeDocument>(definition(u"document"_s));
}

void HubSchemasTest::eachPropertyOfTheSchemaIsAFieldOfTheRecord()
{
    QFETCH(Pair, pair);
    const QStringList properties = pair.properties.keys();
    QVERIFY(!properties.isEmpty());
    for (const QString& property : properties)
        QVERIFY2(fieldOf(pair, property) >= 0, qPrintable(property));
}

void HubSchemasTest::eachFieldOfTheRecordIsAPropertyOfTheSchema()
{
    QFETCH(Pair, pair);
    QSet<qsizetype> fields;
    const QStringList properties = pair.properties.keys();
    for (const QString& property : properties)
        fields.insert(fieldOf(pair, property));
    for (qsizetype field = 0; field < pair.defaults.size(); ++field)
        QVERIFY2(fields.contains(field), qPrintable(u"the field at place %1"_s.arg(field)));
}

void HubSchemasTest::theDefaultsOfTheSchemaAreTheRecords()
{
    QFETCH(Pair, pair);
    const QStringList properties = pair.properties.keys();
    for (const QString& property : properties) {
        const QJsonValue told = pair.properties.value(property)["default"_L1];
        QVERIFY2(told == pair.defaults.at(fieldOf(pair, property)), qPrintable(property));
    }
}

void HubSchemasTest::everyPropertyIsDescribed()
{
    QFETCH(Pair, pair);
    for (auto property = pair.properties.constBegin(); property != pair.properties.constEnd(); ++property)
        QVERIFY2(!property->toObject().value("description"_L1).toString().isEmpty(), qPrintable(property.key()));
}

QTEST_APPLESS_MAIN(HubSchemasTest)
#include "HubSchemasTest.moc"
