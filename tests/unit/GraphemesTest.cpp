#include "Graphemes.h"
#include "Rows.h"
#include "TestMain.h"

#include <QFile>
#include <QTest>

#include <thread>

using namespace Qt::StringLiterals;

namespace quillmere {

class GraphemesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void graphemeClustersAreCounted_data()
    {
        rows<QString, qsizetype>({"text", "characters"},
                                 {{"empty", QString(), 0},
                                  {"plain letters", u"Council"_s, 7},
                                  {"CR LF", u"a\r\nb"_s, 3},
                                  {"LF CR", u"\n\r"_s, 2},
                                  {"CR LF between accented letters", u"é\r\né"_s, 3},
                                  {"CR at the end", u"a\r"_s, 2},
                                  {"a letter with a combining mark", u"e\u0301"_s, 1},
                                  {"a combining mark alone", u"\u0301"_s, 1},
                                  {"a supplementary letter", u"\U00010400"_s, 1},
                                  {"a family", u"\U0001F469\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"_s, 1},
                                  {"a skin tone", u"\U0001F44D\U0001F3FD"_s, 1},
                                  {"two flags", u"\U0001F1FA\U0001F1F8\U0001F1E8\U0001F1E6"_s, 2},
                                  {"a flag and one regional indicator", u"\U0001F1FA\U0001F1F8\U0001F1E8"_s, 2},
                                  {"Hangul as jamo", u"\u1112\u1161\u11AB"_s, 1},
                                  {"Devanagari with a vowel sign", u"\u0928\u093F"_s, 1},
                                  {"an unpaired surrogate", QString(QChar(0xD83D)), 1}});
    }

    void graphemeClustersAreCounted()
    {
        QFETCH(QString, text);
        QFETCH(qsizetype, characters);
        QCOMPARE(Graphemes::count(text), characters);
        QVERIFY(Graphemes::prefixLength(text, characters) == text.size());
        QVERIFY(!Graphemes::prefixLength(text, characters + 1));
        QVERIFY(Graphemes::prefixLength(text, 0) == 0);
    }

    void emojiIsFoundAsWholeSequence_data()
    {
        // "length" is that of the only emoji, which starts at index 2; 0 if there is none.
        rows<QString, qsizetype>({"text", "length"},
                                 {{"letters", u"abcd"_s, 0},
                                  {"Chinese", u"ab市議會"_s, 0},
                                  {"a pictograph", u"ab\U0001F6A2cd"_s, 2},
                                  {"a BMP pictograph", u"ab\u2693cd"_s, 1},
                                  {"a BMP pictograph in text style", u"ab\u2693\uFE0Ecd"_s, 0},
                                  {"a text symbol", u"ab\u2764cd"_s, 0},
                                  {"a text symbol in emoji style", u"ab\u2764\uFE0Fcd"_s, 2},
                                  {"a judge", u"ab\U0001F469\U0001F3FD\u200D\u2696\uFE0Fcd"_s, 7},
                                  {"a family", u"ab\U0001F469\u200D\U0001F469\u200D\U0001F467cd"_s, 8},
                                  {"a skin tone", u"ab\U0001F44D\U0001F3FDcd"_s, 4},
                                  {"a flag", u"ab\U0001F1FA\U0001F1F8cd"_s, 4},
                                  {"a keycap", u"ab1\uFE0F\u20E3cd"_s, 3},
                                  {"a keycap without emoji style", u"ab1\u20E3cd"_s, 0},
                                  {"a corner bracket", u"ab\u231Ccd"_s, 0},
                                  {"an unpaired surrogate", u"ab"_s + QChar(0xD83D), 0}});
    }

    void emojiIsFoundAsWholeSequence()
    {
        QFETCH(QString, text);
        QFETCH(qsizetype, length);
        QList<Graphemes::Range> expected;
        if (length > 0)
            expected = {{2, length}};
        QCOMPARE(Graphemes::emoji(text), expected);
        if (length > 0)
            QCOMPARE(Graphemes::emoji(text + text).size(), 2);
    }

    void hyphenIsWholeCharacterUnlessJoined_data()
    {
        rows<QString, bool>({"text", "isWhole"}, {{"between letters", u"a-b"_s, true},
                                                  {"at the end", u"a-"_s, true},
                                                  {"between accented letters", u"é-é"_s, true},
                                                  {"after an unpaired surrogate", QString(QChar(0xD83D)) + u'-', true},
                                                  {"before a combining mark", u"a-\u0301"_s, false},
                                                  {"before a joiner", u"a-\u200D"_s, false},
                                                  {"after a prepended mark", u"\u0600-"_s, false}});
    }

    void hyphenIsWholeCharacterUnlessJoined()
    {
        QFETCH(QString, text);
        QFETCH(bool, isWhole);
        QCOMPARE(Graphemes::isWholeCharacter(text, 1), isWhole);
    }

    void officialUnicodeCasesAreCountedCorrectly()
    {
        QFile file(QStringLiteral(QUILLMERE_GRAPHEME_CASES));
        QVERIFY(file.open(QIODevice::ReadOnly));
        int cases = 0;
        while (!file.atEnd()) {
            // The format is "÷ 0020 × 0308 ÷ 0020 ÷ # comment".
            const QString line = QString::fromUtf8(file.readLine()).section(u'#', 0, 0).trimmed();
            if (line.isEmpty())
                continue;
            ++cases;
            QString text;
            QList<qsizetype> ends;
            for (const QString& word : line.split(u' ')) {
                const char32_t point = word.toUInt(nullptr, 16);
                if (point != 0)
                    text += QString::fromUcs4(&point, 1);
                else if (word == u"÷"_s && !text.isEmpty())
                    ends.append(text.size());
            }
            QVERIFY2(Graphemes::count(text) == ends.size(), qPrintable(line));
            for (qsizetype i = 0; i < ends.size(); ++i)
                QVERIFY2(Graphemes::prefixLength(text, i + 1) == ends[i], qPrintable(line));
        }
        // the number of cases in Unicode 15; later versions have more
        QVERIFY2(cases >= 602, qPrintable(QString::number(cases)));
    }

    void countingWorksInSeveralThreads()
    {
        const auto countOften = [](const QString& text, qsizetype characters, bool& isRight) {
            isRight = true;
            for (int i = 0; i < 2000; ++i)
                isRight = isRight && Graphemes::count(text) == characters;
        };
        bool isRightHere = false;
        bool isRightThere = false;
        std::thread there(countOften, u"éa"_s.repeated(10), qsizetype(20), std::ref(isRightThere));
        countOften(u"e\u0301"_s.repeated(7), qsizetype(7), isRightHere);
        there.join();
        QVERIFY(isRightHere);
        QVERIFY(isRightThere);
    }
};

QUILLMERE_TEST(GraphemesTest, QCoreApplication)

} // namespace quillmere

#include "GraphemesTest.moc"
