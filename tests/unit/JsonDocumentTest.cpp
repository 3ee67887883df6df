#include "JsonDocument.h"
#include "JsonDocuments.h"
#include "JsonNumbers.h"
#include "TestMain.h"

#include <QTest>

#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace quillmere {

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
    std::optional<qint64> value; ///< the exact integer value of the text; none if it is not an integer
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

/** Tests which bytes are a JSON document, and how values are read from it. */
class JsonDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wellFormedDocumentIsAccepted_data();
    void wellFormedDocumentIsAccepted();
    void malformedDocumentIsRejected_data();
    void malformedDocumentIsRejected();
    void hugeNumberIsNoIntegerAndOtherValuesAreRead_data();
    void hugeNumberIsNoIntegerAndOtherValuesAreRead();
    void depthIsLimitedTo512();
    void numberOfValuesIsLimited();
    void deepNestingDoesNotOverflowStack();
    void textIsDecoded_data();
    void textIsDecoded();
    void unpairedSurrogateInKeyIsReplaced();
    void numberIsIntegerIfItsExactValueIs_data();
    void numberIsIntegerIfItsExactValueIs();
    void decimalCommaIsReadAsPoint();
    void lastMemberWithSameKeyIsUsed();
    void nestedMembersAreNotMembers();
};

void JsonDocumentTest::wellFormedDocumentIsAccepted_data()
{
    addDocuments(wellFormedDocuments);
}

void JsonDocumentTest::wellFormedDocumentIsAccepted()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(JsonDocument::parse(bytes));
}

void JsonDocumentTest::malformedDocumentIsRejected_data()
{
    addDocuments(malformedDocuments);
}

void JsonDocumentTest::malformedDocumentIsRejected()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!JsonDocument::parse(bytes));
}

void JsonDocumentTest::hugeNumberIsNoIntegerAndOtherValuesAreRead_data()
{
    QTest::addColumn<QByteArray>("number");
    const QByteArray numbers[] = {"1e400", "-1e400",    "1E+99999999999999999999",  "0.5e999",
                                  "1e309", "-1.25e309", '9' + QByteArray(400, '0'), '-' + QByteArray(310, '9')};
    for (const QByteArray& number : numbers)
        QTest::newRow(number.left(30).constData()) << number;
}

void JsonDocumentTest::hugeNumberIsNoIntegerAndOtherValuesAreRead()
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

void JsonDocumentTest::depthIsLimitedTo512()
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

void JsonDocumentTest::numberOfValuesIsLimited()
{
    const auto list = [](int elements) { return '[' + QByteArray("1,").repeated(elements - 1) + "1]"; };
    QVERIFY(JsonDocument::parse(list(JsonDocument::maxValues - 1)));
    QVERIFY(!JsonDocument::parse(list(JsonDocument::maxValues)));
    QVERIFY(!JsonDocument::parse('[' + QByteArray("\"\",").repeated(JsonDocument::maxValues) + "{}]"));
}

void JsonDocumentTest::deepNestingDoesNotOverflowStack()
{
    QVERIFY(!JsonDocument::parse(QByteArray(10'000'000, '[')));
    QVERIFY(!JsonDocument::parse(QByteArray("{\"a\":").repeated(1'000'000)));
}

void JsonDocumentTest::textIsDecoded_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const QString replacement(QChar::ReplacementCharacter);
    QTest::newRow("empty") << "\"\""_ba << u""_s;
    QTest::newRow("escapes") << "\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u00e9\""_ba << u"\"\\/\b\f\n\r\té"_s;
    QTest::newRow("raw bytes") << "\"\xC3\xA9\xF0\x9F\x93\xBC\""_ba << u"é📼"_s;
    QTest::newRow("surrogate pair") << "\"\\uD83D\\uDCFC\""_ba << u"📼"_s;
    QTest::newRow("surrogate pair in lower case") << "\"\\ud83d\\udcfc\""_ba << u"📼"_s;
    QTest::newRow("high surrogate alone") << "\"a\\uD83Db\""_ba << u"a"_s + replacement + u"b"_s;
    QTest::newRow("high surrogate at the end") << "\"\\uDBFF\""_ba << replacement;
    QTest::newRow("low surrogate alone") << "\"\\udc00x\""_ba << replacement + u"x"_s;
    QTest::newRow("low surrogate before high") << "\"\\uDCFC\\uD83D\""_ba << replacement + replacement;
    QTest::newRow("high surrogate before a pair") << "\"\\uD83D\\uD83D\\uDCFC\""_ba << replacement + u"📼"_s;
    QTest::newRow("high surrogate before an escaped letter") << "\"\\uD83D\\u0041\""_ba << replacement + u"A"_s;
    QTest::newRow("high surrogate before another escape") << "\"\\uD83D\\n\""_ba << replacement + u"\n"_s;
    QTest::newRow("escaped backslash") << "\"\\\\uD83D\""_ba << u"\\uD83D"_s;
    QTest::newRow("NUL character") << "\"a\\u0000b\""_ba << QString(u"a\0b"_s);
    QTest::newRow("byte order mark") << "\"\xEF\xBB\xBF\\uFEFFa\""_ba << u"\uFEFF\uFEFFa"_s;
    QTest::newRow("noncharacter") << "\"\\uFFFF\""_ba << QString(QChar(0xFFFF));
}

void JsonDocumentTest::textIsDecoded()
{
    QFETCH(QByteArray, bytes);
    const auto document = JsonDocument::parse(bytes);
    QVERIFY(document);
    QTEST(document->root().toString().value_or(u"no text"_s), "text");
}

void JsonDocumentTest::unpairedSurrogateInKeyIsReplaced()
{
    const auto document = JsonDocument::parse("{\"\\uD83D\":1}");
    QVERIFY(document);
    QVERIFY(document->root().member("\xEF\xBF\xBD"));
}

void JsonDocumentTest::numberIsIntegerIfItsExactValueIs_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isInteger");
    QTest::addColumn<qint64>("value");
    for (const NumberText& number : numberTexts)
        QTest::newRow(number.text) << QByteArray(number.text) << number.value.has_value() << number.value.value_or(0);
}

void JsonDocumentTest::numberIsIntegerIfItsExactValueIs()
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

void JsonDocumentTest::decimalCommaIsReadAsPoint()
{
    QCOMPARE(exactJsonInteger("1,0").value_or(-1), 1);
    QVERIFY(!exactJsonInteger("1,5"));
}

void JsonDocumentTest::lastMemberWithSameKeyIsUsed()
{
    const auto document = JsonDocument::parse(R"({"a":1,"b":2,"a":{"a":4},"a":3})");
    QVERIFY(document);
    QCOMPARE(document->root().member("a")->toInteger().value_or(0), 3);
    QCOMPARE(document->root().count(), 4);
}

void JsonDocumentTest::nestedMembersAreNotMembers()
{
    const auto document = JsonDocument::parse(R"({"a":{"b":1,"c":[{"b":2}]},"d":3})");
    QVERIFY(document);
    QVERIFY(!document->root().member("b"));
    QCOMPARE(document->root().member("d")->toInteger().value_or(0), 3);
    QCOMPARE(document->root().member("a")->member("c")->count(), 1);
}

QUILLMERE_TEST(JsonDocumentTest, TestMain::NoApplication)

} // namespace quillmere

#include "JsonDocumentTest.moc"
