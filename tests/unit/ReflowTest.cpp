#include "Reflow.h"

#include "Graphemes.h"
#include "Rows.h"
#include "TestMain.h"
#include "Text.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr qsizetype limit = 420;

/** The code points of random texts. Many are combining marks and joiners, since these decide where a character ends. */
constexpr char32_t codePoints[] = {
    U'a',          U'Z',          U'7',          U'-',          U' ',          U'\t',         U'\0',
    U'\u00A0',     U'\u00E9',     U'\u00DF',     U'\u0301',     U'\u0308',     U'\u0600',     U'\u06DD',
    U'\u0627',     U'\u0644',     U'\u05D0',     U'\u05B8',     U'\u0939',     U'\u093F',     U'\u094D',
    U'\u0E33',     U'\u0EB3',     U'\u1100',     U'\u1161',     U'\u11A8',     U'\uAC00',     U'\uAC01',
    U'\u200B',     U'\u200C',     U'\u200D',     U'\u202E',     U'\u2603',     U'\u3000',     U'\u3042',
    U'\u6E2F',     U'\uFE0F',     U'\uFFFD',     U'\U0001F1FA', U'\U0001F1F8', U'\U0001F44D', U'\U0001F3FD',
    U'\U0001F469', U'\U0001F3F3', U'\U000110BD', U'\U0001D400'};
constexpr char16_t lineBreaks[] = {u'\n', u'\v', u'\f', u'\r', u'\u0085', u'\u2028', u'\u2029'};

QString randomText(QRandomGenerator& random)
{
    QString text;
    const int length = random.bounded(400);
    for (int i = 0; i < length; ++i) {
        const int kind = random.bounded(40);
        if (kind == 0)
            text += QChar(lineBreaks[random.bounded(int(std::size(lineBreaks)))]);
        else if (kind == 1)
            text += QChar(char16_t(0xD800 + random.bounded(0x800))); // an unpaired surrogate
        else
            text += QString::fromUcs4(&codePoints[random.bounded(int(std::size(codePoints)))], 1);
    }
    return text;
}

/** The expected lines, computed by another algorithm than the reflow's. */
QStringList linesOf(QString text)
{
    for (const char16_t lineBreak : lineBreaks)
        text.replace(QChar(lineBreak), u"\n"_s);
    QStringList lines;
    for (const QString& piece : text.split(u'\n')) {
        const QString line = trimmedText(piece).toString();
        if (!line.isEmpty())
            lines.append(line);
    }
    return lines;
}

/** A simple and slow reflow: it counts the whole paragraph again after each line. */
QStringList slowParagraphs(const QStringList& lines, qsizetype limit)
{
    QStringList result;
    QString paragraph;
    for (const QString& line : lines) {
        paragraph = paragraph.isEmpty() ? line : paragraph + u' ' + line;
        if (Graphemes::count(paragraph) >= limit)
            result.append(std::exchange(paragraph, {}));
    }
    return paragraph.isEmpty() ? result : result << paragraph;
}

} // namespace

/** Tests how caption lines are joined into paragraphs. */
class ReflowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesAreJoinedBySpaces_data()
    {
        rows<QString, QStringList>(
            {"text", "paragraphs"},
            {{"three short lines", u"a\nb\n\nc"_s, {u"a b c"_s}},
             {"empty", {}, {}},
             {"only white space", u" \t\u00A0\u3000\n\n \r\n\t"_s, {}},
             {"blank lines between", u"a\n \t \n\t\nb"_s, {u"a b"_s}},
             {"white space at line ends", u"  a \n\tb\t\n c"_s, {u"a b c"_s}},
             {"white space within a line", u"a  b\tc\nd"_s, {u"a  b\tc d"_s}},
             {"no line break at the end", u"a"_s, {u"a"_s}},
             {"a line break at the end", u"a\n"_s, {u"a"_s}},
             {"every line break", u"a\nb\vc\fd\re\r\nf\u0085g\u2028h\u2029i"_s, {u"a b c d e f g h i"_s}},
             {"separators that break no line", u"a\u001Cb\u001Fc"_s, {u"a\u001Cb\u001Fc"_s}}});
    }

    void linesAreJoinedBySpaces()
    {
        QFETCH(const QString, text);
        QTEST(Reflow::paragraphs(text, limit), "paragraphs");
    }

    void paragraphEndsWithLineThatReachesLimit()
    {
        const QString line = u"twenty characters it"_s;
        const QStringList paragraphs = Reflow::paragraphs((line + u'\n').repeated(30), limit);
        QCOMPARE(paragraphs.size(), 2);
        QCOMPARE(paragraphs.first(), QStringList(21, line).join(u' '));
        QCOMPARE(paragraphs.first().size(), 440);
        QCOMPARE(paragraphs.last(), QStringList(9, line).join(u' '));
    }

    void paragraphEndsExactlyAtLimit_data()
    {
        // A space and the second line add two characters; the third line adds two more.
        rows<qsizetype, QList<qsizetype>>({"first", "lengths"}, {{"one character short", limit - 3, {limit + 1}},
                                                                 {"exactly full", limit - 2, {limit, 1}},
                                                                 {"full by the first line", limit, {limit, 3}}});
    }

    void paragraphEndsExactlyAtLimit()
    {
        QFETCH(const qsizetype, first);
        QList<qsizetype> lengths;
        for (const QString& paragraph : Reflow::paragraphs(QString(first, u'x') + u"\ny\nz"_s, limit))
            lengths.append(paragraph.size());
        QTEST(lengths, "lengths");
    }

    void lineIsNeverCut()
    {
        const QString line(1000, u'x');
        QCOMPARE(Reflow::paragraphs(line, limit), QStringList{line});
        QCOMPARE(Reflow::paragraphs(u"a\n"_s + line + u"\nb"_s, limit), (QStringList{u"a "_s + line, u"b"_s}));
    }

    void graphemeClustersAreCountedNotCodeUnits()
    {
        const QString family = u"\U0001F469\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"_s;
        QCOMPARE(Reflow::paragraphs((family + u'\n').repeated(210), limit).size(), 1);
        // 211 families and the spaces between them are 421 characters.
        QCOMPARE(Reflow::paragraphs((family + u'\n').repeated(211), limit).size(), 1);
        QCOMPARE(Reflow::paragraphs((family + u'\n').repeated(212), limit).size(), 2);
    }

    void markJoinedWithSpaceIsOneCharacter()
    {
        const QString full(9, u'x');
        QCOMPARE(Reflow::paragraphs(full + u"\ny\nz"_s, 11), (QStringList{full + u" y"_s, u"z"_s}));
        // The first mark forms one character with the space after it, the second one with the space before it.
        QCOMPARE(Reflow::paragraphs(QString(8, u'x') + u"\u0600\ny\nz"_s, 11).size(), 1);
        QCOMPARE(Reflow::paragraphs(QString(8, u'x') + u"\U000110BD\ny\nz"_s, 11).size(), 1);
        QCOMPARE(Reflow::paragraphs(full + u"\n\u0301\nz"_s, 11).size(), 1);
    }

    void randomTextIsReflowedCorrectly()
    {
        QRandomGenerator random(20260612);
        for (int round = 0; round < 4000; ++round) {
            const QString text = randomText(random);
            const qsizetype full = 1 + random.bounded(60);
            const QStringList lines = linesOf(text);
            const QStringList paragraphs = Reflow::paragraphs(text, full);
            for (qsizetype i = 0; i + 1 < paragraphs.size(); ++i)
                QVERIFY(Graphemes::count(paragraphs[i]) >= full);
            // No line is cut, and only the spaces between lines are added.
            QCOMPARE(paragraphs.join(u' '), lines.join(u' '));
            QCOMPARE(paragraphs, slowParagraphs(lines, full));
        }
    }

    void reflowTimeIsLinear()
    {
        // With quadratic counting this would take hours.
        const QString text = u"é\n"_s.repeated(1'000'000);
        const QStringList paragraphs = Reflow::paragraphs(text, text.size());
        QCOMPARE(paragraphs.size(), 1);
        QCOMPARE(paragraphs.first().size(), text.size() - 1);
    }

    void tooLongParagraphIsSplitBetweenWords_data()
    {
        const QStringList shortParagraphs{u"one"_s, u"two words"_s, u"ten words."_s};
        rows<QStringList, QStringList>(
            {"paragraphs", "passages"},
            {{"empty", {}, {}},
             {"no long paragraph", shortParagraphs, shortParagraphs},
             {"words",
              {u"a"_s, u"an eleventh word follows"_s},
              {u"a"_s, u"an "_s, u"eleventh "_s, u"word "_s, u"follows"_s}},
             {"no spaces", {u"abcdefghijklmnopqrstuvwxyz"_s}, {u"abcdefghij"_s, u"klmnopqrst"_s, u"uvwxyz"_s}},
             {"surrogate pair at the cut", {u"abcdefghi\U0001F44Djk"_s}, {u"abcdefghi"_s, u"\U0001F44Djk"_s}}});
    }

    void tooLongParagraphIsSplitBetweenWords()
    {
        QFETCH(const QStringList, paragraphs);
        const QStringList passages = Reflow::passages(paragraphs, 10);
        QCOMPARE(passages.join(QString()), paragraphs.join(QString()));
        QTEST(passages, "passages");
    }
};

QUILLMERE_TEST(ReflowTest, QCoreApplication)

} // namespace quillmere

#include "ReflowTest.moc"
