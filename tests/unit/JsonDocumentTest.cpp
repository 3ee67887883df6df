#include "JsonDocument.h"
#include "JsonDocuments.h"
#include "JsonInteger.h"

#include <QTest>

#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

template<typename Documents>
void addDocuments(const Documents& documents)
{
    QTest::addColumn<QByteArray>("bytes");
    for (const std::string_view document : documents) {
        const QByteArray bytes(document.data(), qsizetype(document.size()));
        QTest::newRow(bytes.toPercentEncoding().constData()) << bytes;
    }
}

struct NumberText
{
    const char* text;
    std::optional<qint64> value; ///< what it says exactly, where that is an integer
};

constexpr qint64 largest = std::numeric_limits<qint64>::max();
constexpr qint64 smallest = std::numeric_limits<qint64>::min();

constexpr NumberText numberTexts[] = {
    {"0", 0},
    {"-0", 0},
    {"0.0", 0},
    {"-0.0e5", 0},
    {"0e999999999999999999999", 0},
    {"7", 7},
    {"-7", -7},
    {"1.0", 1},
    {"1e3", 1000},
    {"1E+3", 1000},
    {"1.5e1", 15},
    {"-2.50e1", -25},
    {"1200e-2", 12},
    {"0.00012e6", 120},
    {"9007199254740993", 9007199254740993},
    {"9007199254740993.0", 9007199254740993},
    {"9223372036854775807", largest},
    {"9223372036854775807.0", largest},
    {"9.223372036854775807e18", largest},
    {"922337203685477580700e-2", largest},
    {"-9223372036854775808", smallest},
    {"-9223372036854775808.000", smallest},
    {"1e18", 1'000'000'000'000'000'000},
    {"1.5", std::nullopt},
    {"0.1", std::nullopt},
    {"-0.5", std::nullopt},
    {"1e-1", std::nullopt},
    {"1e-400", std::nullopt},
    {"9007199254740992.5", std::nullopt},
    {"9223372036854775808", std::nullopt},
    {"9223372036854775808.0", std::nullopt},
    {"9223372036854775807.5", std::nullopt},
    {"-9223372036854775809", std::nullopt},
    {"-9223372036854775809.0", std::nullopt},
    {"18446744073709551615", std::nullopt},
    {"18446744073709551616", std::nullopt},
    {"1e19", std::nullopt},
    {"1e308", std::nullopt},
    {"123456789012345678901234567890", std::nullopt},
};

} // namespace

/** What counts as a JSON document, and what its values are. */
class JsonDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWellFormedDocumentIsTaken_data();
    void aWellFormedDocumentIsTaken();
    void aMalformedDocumentIsRefused_data();
    void aMalformedDocumentIsRefused();
    void aNumberBeyondAnyRangeIsNoIntegerAndHarmsNothingElse_data();
    void aNumberBeyondAnyRangeIsNoIntegerAndHarmsNothingElse();
    void depthIsBoundedAt512();
    void theNumberOfValuesIsBounded();
    void endlessNestingNeedsNoStack();
    void aTextIsReadAsWritten_data();
    void aTextIsReadAsWritten();
    void halfASurrogatePairIsAlsoReplacedInAKey();
    void aNumberIsAnIntegerWhenItsTextSaysExactlyOne_data();
    void aNumberIsAnIntegerWhenItsTextSaysExactlyOne();
    void theDecimalPointOfTheLocaleIsAPointToo();
    void ofMembersWithOneKeyTheLastCounts();
    void membersOfMembersAreNotMembers();
};

void JsonDocumentTest::aWellFormedDocumentIsTaken_data()
{
    addDocuments(wellFormedDocuments);
}

void JsonDocumentTest::aWellFormedDocumentIsTaken()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(JsonDocument::parse(bytes));
}

void JsonDocumentTest::aMalformedDocumentIsRefused_data()
{
    addDocuments(malformedDocuments);
}

void JsonDocumentTest::aMalformedDocumentIsRefused()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!JsonDocument::parse(bytes));
}

void JsonDocumentTest::aNumberBeyondAnyRangeIsNoIntegerAndHarmsNothingElse_data()
{
    QTest::addColumn<QByteArray>("number");
    const QByteArray numbers[] = {"1e400", "-1e400",    "1E+99999999999999999999",  "0.5e999",
                                  "1e309", "-1.25e309", '9' + QByteArray(400, '0'), '-' + QByteArray(310, '9')};
    for (const QByteArray& number : numbers)
        QTest::newRow(number.left(30).constData()) << number;
}

void JsonDocumentTest::aNumberBeyondAnyRangeIsNoIntegerAndHarmsNothingElse()
{
    QFETCH(QByteArray, number);
    const auto document =
        JsonDocument::parse("{\"a\":[" + number + "],\"b\":" + number + ",\"c\":\"say \\\"" + number + "\",\"d\":7}");
    QVERIFY(document);
    QVERIFY(document->root().member("a"));
    QVERIFY(!document->root().member("b")->toInteger());
    QCOMPARE(document->root().member("c")->toString(), QString::fromUtf8("say \"" + number));
    QCOMPARE(document->root().member("d")->toInteger(), 7);
}

void JsonDocumentTest::depthIsBoundedAt512()
{
    const auto nested = [](qsizetype depth) { return QByteArray(depth, '[') + QByteArray(depth, ']'); };
    QVERIFY(JsonDocument::parse(nested(512)));
    QVERIFY(!JsonDocument::parse(nested(513)));
    const auto nestedObjects = [](int depth) {
        return QByteArray("{\"a\":").repeated(depth - 1) + "{}" + QByteArray("}").repeated(depth - 1);
    };
    QVERIFY(JsonDocument::parse(nestedObjects(512)));
    QVERIFY(!JsonDocument::parse(nestedObjects(513)));
    QVERIFY(JsonDocument::parse('[' + (nested(511) + ',').repeated(3) + "0]"));
}

void JsonDocumentTest::theNumberOfValuesIsBounded()
{
    const auto list = [](int elements) { return '[' + QByteArray("1,").repeated(elements - 1) + "1]"; };
    QVERIFY(JsonDocument::parse(list(JsonDocument::maxValues - 1)));
    QVERIFY(!JsonDocument::parse(list(JsonDocument::maxValues)));
    QVERIFY(!JsonDocument::parse('[' + QByteArray("\"\",").repeated(JsonDocument::maxValues) + "{}]"));
}

void JsonDocumentTest::endlessNestingNeedsNoStack()
{
    QVERIFY(!JsonDocument::parse(QByteArray(10'000'000, '[')));
    QVERIFY(!JsonDocument::parse(QByteArray("{\"a\":").repeated(1'000'000)));
}

void JsonDocumentTest::aTextIsReadAsWritten_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const QString half(QChar::ReplacementCharacter);
    QTest::newRow("empty") << "\"\""_ba << u""_s;
    QTest::newRow("escapes") << "\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u00e9\""_ba << u"\"\\/\b\f\n\r\té"_s;
    QTest::newRow("raw bytes") << "\"\xC3\xA9\xF0\x9F\x93\xBC\""_ba << u"é📼"_s;
    QTest::newRow("pair") << "\"\\uD83D\\uDCFC\""_ba << u"📼"_s;
    QTest::newRow("pair in small letters") << "\"\\ud83d\\udcfc\""_ba << u"📼"_s;
    QTest::newRow("high alone") << "\"a\\uD83Db\""_ba << u"a"_s + half + u"b"_s;
    QTest::newRow("high at the end") << "\"\\uDBFF\""_ba << half;
    QTest::newRow("low alone") << "\"\\udc00x\""_ba << half + u"x"_s;
    QTest::newRow("wrong way round") << "\"\\uDCFC\\uD83D\""_ba << half + half;
    QTest::newRow("high before a pair") << "\"\\uD83D\\uD83D\\uDCFC\""_ba << half + u"📼"_s;
    QTest::newRow("high before a letter's escape") << "\"\\uD83D\\u0041\""_ba << half + u"A"_s;
    QTest::newRow("high before another escape") << "\"\\uD83D\\n\""_ba << half + u"\n"_s;
    QTest::newRow("not an escape") << "\"\\\\uD83D\""_ba << u"\\uD83D"_s;
    QTest::newRow("zero") << "\"a\\u0000b\""_ba << QString(u"a\0b"_s);
    QTest::newRow("byte order mark") << "\"\xEF\xBB\xBF\\uFEFFa\""_ba << u"\uFEFF\uFEFFa"_s;
    QTest::newRow("not a character") << "\"\\uFFFF\""_ba << QString(QChar(0xFFFF));
}

void JsonDocumentTest::aTextIsReadAsWritten()
{
    QFETCH(QByteArray, bytes);
    const auto document = JsonDocument::parse(bytes);
    QVERIFY(document);
    QTEST(document->root().toString().value_or(u"no text"_s), "text");
}

void JsonDocumentTest::halfASurrogatePairIsAlsoReplacedInAKey()
{
    const auto document = JsonDocument::parse("{\"\\uD83D\":1}");
    QVERIFY(document);
    QVERIFY(document->root().member("\xEF\xBF\xBD"));
}

void JsonDocumentTest::aNumberIsAnIntegerWhenItsTextSaysExactlyOne_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isInteger");
    QTest::addColumn<qint64>("value");
    for (const NumberText& number : numberTexts)
        QTest::newRow(number.text) << QByteArray(number.text) << number.value.has_value() << number.value.value_or(0);
}

void JsonDocumentTest::aNumberIsAnIntegerWhenItsTextSaysExactlyOne()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isInteger);
    const auto document = JsonDocument::parse(bytes);
    QVERIFY(document);
    const auto value = document->root().toInteger();
    QCOMPARE(value.has_value(), isInteger);
    QTEST(value.value_or(0), "value");
    const auto fromText = exactJsonInteger({bytes.constData(), size_t(bytes.size())});
    QCOMPARE(fromText.has_value(), isInteger);
    QTEST(fromText.value_or(0), "value");
}

void JsonDocumentTest::theDecimalPointOfTheLocaleIsAPointToo()
{
    QCOMPARE(exactJsonInteger("1,0").value_or(-1), 1);
    QVERIFY(!exactJsonInteger("1,5"));
}

void JsonDocumentTest::ofMembersWithOneKeyTheLastCounts()
{
    const auto document = JsonDocument::parse(R"({"a":1,"b":2,"a":{"a":4},"a":3})");
    QVERIFY(document);
    QCOMPARE(document->root().member("a")->toInteger().value_or(0), 3);
    QCOMPARE(document->root().count(), 4);
}

void JsonDocumentTest::membersOfMembersAreNotMembers()
{
    const auto document = JsonDocument::parse(R"({"a":{"b":1,"c":[{"b":2}]},"d":3})");
    QVERIFY(document);
    QVERIFY(!document->root().member("b"));
    QCOMPARE(document->root().member("d")->toInteger().value_or(0), 3);
    QCOMPARE(document->root().member("a")->member("c")->count(), 1);
}

QTEST_APPLESS_MAIN(JsonDocumentTest)
#include "JsonDocumentTest.moc"
