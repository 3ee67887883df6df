#include "RecordDecoder.h"
#include "TVStatus.h"
#include "TestMain.h"
#include "TranscriptResult.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <concepts>
#include <tuple>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

// These functions do not compile if a record gains or loses a field.

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

template<std::convertible_to<QJsonValue> Value>
QJsonValue toJson(const Value& value)
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

/** For a record inside a record: its default is the empty object. */
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
    QFile schemaFile(u"" QUILLMERE_SCHEMAS "/"_s + file);
    if (!schemaFile.open(QIODevice::ReadOnly))
        qFatal("%s is missing", qPrintable(schemaFile.fileName()));
    return QJsonDocument::fromJson(schemaFile.readAll()).object();
}

QJsonObject definition(const QString& name)
{
    static const QJsonObject definitions = readSchema(u"shared.json"_s).value("$defs"_L1).toObject();
    return definitions.value(name).toObject();
}

/** Resolves the schema's reference. The schema's own members override the referenced ones. */
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

/** Returns a value of the schema's type that differs from the schema's default. */
QJsonValue otherThanDefault(const QJsonObject& unresolved)
{
    const QJsonObject schema = resolved(unresolved);
    const QJsonValue types = schema.value("type"_L1);
    const QString type = types.isArray() ? types.toArray().first().toString() : types.toString();
    const QJsonValue defaultValue = schema.value("default"_L1);
    if (type == "boolean"_L1)
        return !defaultValue.toBool();
    if (type == "integer"_L1)
        return defaultValue.toInteger() + 1;
    if (type == "string"_L1)
        return defaultValue.toString() + u"other"_s;
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

} // namespace

/** Tests that docs/schema, which is published for hub authors, matches the decoder. */
class HubSchemasTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void statusMatchesSchema() { compare<TVStatus>(readSchema(u"status.json"_s)); }
    void pageMatchesSchema() { compare<TapePage>(readSchema(u"tape-page.json"_s)); }
    void tapeMatchesSchema() { compare<Tape>(readSchema(u"tape.json"_s)); }
    void transcriptMatchesSchema() { compare<TranscriptResult>(readSchema(u"transcript.json"_s)); }
    void newsMatchesSchema() { compare<NewsStatus>(definition(u"news"_s)); }
    void channelMatchesSchema() { compare<StationChannel>(definition(u"channel"_s)); }
    void rewinderyMatchesSchema() { compare<CatalogSummary>(definition(u"rewindery"_s)); }
    void marketMatchesSchema() { compare<TapeMarket>(definition(u"market"_s)); }
    void bodyMatchesSchema() { compare<TapeBody>(definition(u"body"_s)); }
    void documentMatchesSchema() { compare<TapeDocument>(definition(u"document"_s)); }

private:
    /**
     * Each property of the schema sets exactly one field of the record, has that field's default and a description.
     * Each field is set by a property.
     */
    template<typename Record>
    void compare(const QJsonObject& schema)
    {
        const QJsonArray defaults = defaultsOf<Record>();
        QSet<qsizetype> fields;
        const QJsonObject properties = resolved(schema).value("properties"_L1).toObject();
        for (auto property = properties.constBegin(); property != properties.constEnd(); ++property) {
            const QJsonObject document{{property.key(), otherThanDefault(property->toObject())}};
            const QList<bool> changed = changedFields<Record>(QJsonDocument(document).toJson());
            QVERIFY2(changed.count(true) == 1, qPrintable(property.key()));
            const qsizetype field = changed.indexOf(true);
            fields.insert(field);
            QVERIFY2((*property)["default"_L1] == defaults.at(field), qPrintable(property.key()));
            QVERIFY2(!(*property)["description"_L1].toString().isEmpty(), qPrintable(property.key()));
        }
        QCOMPARE(fields.size(), defaults.size());
    }
};

QUILLMERE_TEST(HubSchemasTest, TestMain::NoApplication)

} // namespace quillmere

#include "HubSchemasTest.moc"
