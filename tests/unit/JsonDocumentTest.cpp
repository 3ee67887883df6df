#include "JsonDocument.h"
#include "JsonNumbers.h"
#include "Rows.h"
#include "TestMain.h"

#include <QTest>

#include <array>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

namespace quillmere {

namespace {

constexpr std::array wellFormedDocuments{
    // empty containers and single values
    "{}"sv, "[]"sv, "null"sv, "true"sv, "false"sv, "0"sv, "-0"sv, "-0.0"sv, "1E+2"sv, "1e-2"sv, "\"\""sv,
    // white space and nesting
    " \t\r\n{ } \n"sv, "[1,2,3]"sv, "[\"a\",null,true,{}]"sv, "{\"\":0}"sv, "{\"a\":{\"b\":[{}]}}"sv,
    "{\"a\":1,\"a\":2}"sv,
    // strings
    "\"\\u0000\""sv, "\"\\\"\\\\\\/\\b\\f\\n\\r\\t\""sv, "\"\xF0\x9F\x93\xBC\""sv, "\"\\uD83D\\uDCFC\""sv,
    "\"\\uD800\""sv, "\"\\uDC00\\uD800\""sv, "\"\x7F\""sv, "\"\xE2\x80\xA8\""sv,
    // numbers
    "123456789012345678901234567890"sv, "0.1e1"sv, "1.5"sv, "-1"sv, "[-1e-400]"sv,
    // a byte order mark and noncharacters
    "\xEF\xBB\xBF{}"sv, "\"\xF4\x8F\xBF\xBF\""sv, "\"\xEF\xBF\xBF\""sv};

constexpr std::array malformedDocuments{
    // not closed or not opened
    ""sv, " "sv, "{"sv, "}"sv, "["sv, "]"sv, "{]"sv, "[}"sv, "{\"a\""sv, "{\"a\":"sv, "{\"a\":1"sv, "{\"a\":1,"sv,
    // wrong separators and keys
    "{\"a\":1,}"sv, "{,}"sv, "{1:1}"sv, "{a:1}"sv, "{'a':1}"sv, "{\"a\" 1}"sv, "{\"a\":1 \"b\":2}"sv, "{\"a\"::1}"sv,
    "{null:1}"sv, "[1,]"sv, "[,1]"sv, "[1 2]"sv, "[1,,2]"sv,
    // wrong strings
    "\""sv, "\"a"sv, "a\""sv, "\"\\\""sv, "\"\\x41\""sv, "\"\\u\""sv, "\"\\u12\""sv, "\"\\uD80\""sv, "\"\\uZZZZ\""sv,
    "\"\\a\""sv, "\"\\uD83D\\\""sv, "\"a\nb\""sv, "\"\x01\""sv, "\"\t\""sv,
    // wrong words and numbers
    "nul"sv, "NULL"sv, "True"sv, "nan"sv, "NaN"sv, "Infinity"sv, "-Infinity"sv, "-"sv, "+1"sv, "01"sv, "-01"sv, "1."sv,
    ".1"sv, "1.e1"sv, "1e"sv, "1e+"sv, "0x10"sv, "1_000"sv, "--1"sv,
    // text around the document
    "1 2"sv, "{} {}"sv, "{}x"sv, "{},"sv, "{}]"sv, "null null"sv, "// no\n{}"sv, "{}/* no */"sv,
    "<html><body>404</body></html>"sv,
    // invalid UTF-8
    "\"\x80\""sv, "\"\xC0\xAF\""sv, "\"\xE0\x80\x80\""sv, "\"\xED\xA0\x80\""sv, "\"\xF4\x90\x80\x80\""sv,
    "\"\xF8\x88\x80\x80\x80\""sv, "\"\xC3\""sv, "\"\xFF\""sv, "\xFF\xFE{\0}\0"sv, "{\"\xFF\":1}"sv,
    // other white space
    "\xC2\xA0{}"sv, "\xE2\x81\xA0[]"sv, "\v[]"sv, "\f[]"sv,
    // beside or inside a huge number
    "[1e400,]"sv, "[01e400]"sv, "[1e400e1]"sv, "[1e400 1]"sv, "[1e400-1]"sv, "[-1.e400]"sv, "[1e400,\"\xFF\"]"sv,
    // NUL characters
    "{}\0"sv, "{}\0trailing"sv, "\0{}"sv, "\"a\0b\""sv, "[1\0]"sv,
    // escapes outside a string
    "\\uD800"sv, "[\\uD800]"sv, "{\"a\":\\uD800}"sv};

void addRows(std::span<const std::string_view> documents, bool isWellFormed)
{
    for (const std::string_view document : documents) {
        const QByteArray bytes(document.data(), qsizetype(document.size()));
        QTest::newRow(bytes.toPercentEncoding().constData()) << bytes << isWellFormed;
    }
}

} // namespace

/** Tests which bytes are a JSON document, and how values are read from it. */
class JsonDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyWellFormedDocumentIsAccepted_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("isWellFormed");
        addRows(wellFormedDocuments, true);
        addRows(malformedDocuments, false);
    }

    void onlyWellFormedDocumentIsAccepted()
    {
        QFETCH(QByteArray, bytes);
        QTEST(JsonDocument::parse(bytes).has_value(), "isWellFormed");
    }

    void hugeNumberIsNoIntegerAndOtherValuesAreRead_data()
    {
        QTest::addColumn<QByteArray>("number");
        const QByteArray numbers[] = {"1e400", "-1e400",    "1E+99999999999999999999",  "0.5e999",
                                      "1e309", "-1.25e309", '9' + QByteArray(400, '0'), '-' + QByteArray(310, '9')};
        for (const QByteArray& number : numbers)
            QTest::newRow(number.left(30).constData()) << number;
    }

    void hugeNumberIsNoIntegerAndOtherValuesAreRead()
    {
        QFETCH(QByteArray, number);
        const auto document = JsonDocument::parse("{\"a\":[" + number + "],\"b\":" + number + ",\"c\":\"say \\\"" +
                                                  number + "\",\"d\":7}");
        QVERIFY(document);
        QVERIFY(document->root().member("a"));
        QVERIFY(!document->root().member("b")->toInteger());
        QCOMPARE(document->root().member("c")->toString(), QString::fromUtf8("say \"" + number));
        QCOMPARE(document->root().member("d")->toInteger(), 7);
    }

    void depthIsLimitedTo512()
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

    void numberOfValuesIsLimited()
    {
        const auto list = [](int elements) { return '[' + QByteArray("1,").repeated(elements - 1) + "1]"; };
        QVERIFY(JsonDocument::parse(list(JsonDocument::maxValues - 1)));
        QVERIFY(!JsonDocument::parse(list(JsonDocument::maxValues)));
        QVERIFY(!JsonDocument::parse('[' + QByteArray("\"\",").repeated(JsonDocument::maxValues) + "{}]"));
    }

    void deepNestingDoesNotOverflowStack()
    {
        QVERIFY(!JsonDocument::parse(QByteArray(10'000'000, '[')));
        QVERIFY(!JsonDocument::parse(QByteArray("{\"a\":").repeated(1'000'000)));
    }

    void textIsDecoded_data()
    {
        rows<QByteArray, QString>({"bytes", "text"},
                                  {{"empty", "\"\"", u""_s},
                                   {"escapes", "\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u00e9\"", u"\"\\/\b\f\n\r\té"_s},
                                   {"raw bytes", "\"\xC3\xA9\xF0\x9F\x93\xBC\"", u"é📼"_s},
                                   {"surrogate pair", "\"\\uD83D\\uDCFC\"", u"📼"_s},
                                   {"surrogate pair in lower case", "\"\\ud83d\\udcfc\"", u"📼"_s},
                                   {"high surrogate alone", "\"a\\uD83Db\"", u"a\uFFFDb"_s},
                                   {"high surrogate at the end", "\"\\uDBFF\"", u"\uFFFD"_s},
                                   {"low surrogate alone", "\"\\udc00x\"", u"\uFFFDx"_s},
                                   {"low surrogate before high", "\"\\uDCFC\\uD83D\"", u"\uFFFD\uFFFD"_s},
                                   {"high surrogate before a pair", "\"\\uD83D\\uD83D\\uDCFC\"", u"\uFFFD📼"_s},
                                   {"high surrogate before an escaped letter", "\"\\uD83D\\u0041\"", u"\uFFFDA"_s},
                                   {"high surrogate before another escape", "\"\\uD83D\\n\"", u"\uFFFD\n"_s},
                                   {"escaped backslash", "\"\\\\uD83D\"", u"\\uD83D"_s},
                                   {"NUL character", "\"a\\u0000b\"", u"a\0b"_s},
                                   {"byte order mark", "\"\xEF\xBB\xBF\\uFEFFa\"", u"\uFEFF\uFEFFa"_s},
                                   {"noncharacter", "\"\\uFFFF\"", u"\uFFFF"_s}});
    }

    void textIsDecoded()
    {
        QFETCH(QByteArray, bytes);
        const auto document = JsonDocument::parse(bytes);
        QVERIFY(document);
        QTEST(document->root().toString().value_or(u"no text"_s), "text");
    }

    void unpairedSurrogateInKeyIsReplaced()
    {
        const auto document = JsonDocument::parse("{\"\\uD83D\":1}");
        QVERIFY(document);
        QVERIFY(document->root().member("\xEF\xBF\xBD"));
    }

    void numberIsIntegerIfItsExactValueIs_data()
    {
        constexpr qint64 largest = std::numeric_limits<qint64>::max();
        constexpr qint64 smallest = std::numeric_limits<qint64>::min();
        const std::pair<std::optional<qint64>, QByteArrayList> numbers[] = {
            {0, {"0", "-0", "0.0", "-0.0e5", "0e999999999999999999999"}},
            {7, {"7"}},
            {-7, {"-7"}},
            {1, {"1.0"}},
            {1000, {"1e3", "1E+3"}},
            {15, {"1.5e1"}},
            {-25, {"-2.50e1"}},
            {12, {"1200e-2"}},
            {120, {"0.00012e6"}},
            {9007199254740993, {"9007199254740993", "9007199254740993.0"}},
            {largest,
             {"9223372036854775807", "9223372036854775807.0", "9.223372036854775807e18", "922337203685477580700e-2"}},
            {smallest, {"-9223372036854775808", "-9223372036854775808.000"}},
            {1'000'000'000'000'000'000, {"1e18"}},
            {std::nullopt, {"1.5", "0.1", "-0.5", "1e-1", "1e-400", "9007199254740992.5"}},
            {std::nullopt,
             {// greater than the largest integer or less than the smallest
              "9223372036854775808", "9223372036854775808.0", "9223372036854775807.5", "-9223372036854775809",
              "-9223372036854775809.0", "18446744073709551615", "18446744073709551616", "1e19", "1e308",
              "123456789012345678901234567890"}}};
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<std::optional<qint64>>("value");
        for (const auto& [value, texts] : numbers) {
            for (const QByteArray& text : texts)
                QTest::newRow(text.constData()) << text << value;
        }
    }

    void numberIsIntegerIfItsExactValueIs()
    {
        QFETCH(QByteArray, bytes);
        const auto document = JsonDocument::parse(bytes);
        QVERIFY(document);
        QTEST(document->root().toInteger(), "value");
        QTEST(exactJsonInteger({bytes.constData(), size_t(bytes.size())}), "value");
    }

    void decimalCommaIsReadAsPoint()
    {
        QCOMPARE(exactJsonInteger("1,0").value_or(-1), 1);
        QVERIFY(!exactJsonInteger("1,5"));
    }

    void lastMemberWithSameKeyIsUsed()
    {
        const auto document = JsonDocument::parse(R"({"a":1,"b":2,"a":{"a":4},"a":3})");
        QVERIFY(document);
        QCOMPARE(document->root().member("a")->toInteger().value_or(0), 3);
        QCOMPARE(document->root().count(), 4);
    }

    void nestedMembersAreNotMembers()
    {
        const auto document = JsonDocument::parse(R"({"a":{"b":1,"c":[{"b":2}]},"d":3})");
        QVERIFY(document);
        QVERIFY(!document->root().member("b"));
        QCOMPARE(document->root().member("d")->toInteger().value_or(0), 3);
        QCOMPARE(document->root().member("a")->member("c")->count(), 1);
    }
};

QUILLMERE_TEST(JsonDocumentTest, TestMain::NoApplication)

} // namespace quillmere

#include "JsonDocumentTest.moc"
