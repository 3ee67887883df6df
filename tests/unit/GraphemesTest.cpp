#include "Graphemes.h"

#include <QFile>
#include <QTest>

#include <thread>

using namespace Qt::StringLiterals;

class GraphemesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void charactersAreCountedAsAReaderDoes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qsizetype>("characters");
        QTest::newRow("nothing") << QString() << qsizetype(0);
        QTest::newRow("plain letters") << u"Council"_s << qsizetype(7);
        QTest::newRow("a line break of two units") << u"a\r\nb"_s << qsizetype(3);
        QTest::newRow("a line break the wrong way round") << u"\n\r"_s << qsizetype(2);
        QTest::newRow("a line break of two units among accents") << u"é\r\né"_s << qsizetype(3);
        QTest::newRow("a carriage return at the end") << u"a\r"_s << qsizetype(2);
        QTest::newRow("a letter with a mark") << u"e\u0301"_s << qsizetype(1);
        QTest::newRow("a mark alone") << u"\u0301"_s << qsizetype(1);
        QTest::newRow("a supplementary letter") << u"\U00010400"_s << qsizetype(1);
        QTest::newRow("a family") << u"\U0001F469\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"_s << qsizetype(1);
        QTest::newRow("a skin tone") << u"\U0001F44D\U0001F3FD"_s << qsizetype(1);
        QTest::newRow("two flags") << u"\U0001F1FA\U0001F1F8\U0001F1E8\U0001F1E6"_s << qsizetype(2);
        QTest::newRow("half a flag more") << u"\U0001F1FA\U0001F1F8\U0001F1E8"_s << qsizetype(2);
        QTest::newRow("Hangul in parts") << u"\u1112\u1161\u11AB"_s << qsizetype(1);
        QTest::newRow("Devanagari with a vowel sign") << u"\u0928\u093F"_s << qsizetype(1);
        QTest::newRow("half a surrogate pair") << QString(QChar(0xD83D)) << qsizetype(1);
    }

    void charactersAreCountedAsAReaderDoes()
    {
        QFETCH(QString, text);
        QFETCH(qsizetype, characters);
        QCOMPARE(Graphemes::count(text), characters);
        QVERIFY(Graphemes::lengthOf(text, characters) == text.size());
        QVERIFY(!Graphemes::lengthOf(text, characters + 1));
        QVERIFY(Graphemes::lengthOf(text, 0) == 0);
    }

    void theFirstCharactersEndBetweenCharacters()
    {
        QVERIFY(Graphemes::lengthOf(u"e\u0301a", 1) == 2);
        QVERIFY(Graphemes::lengthOf(u"\r\na", 1) == 2);
        QVERIFY(Graphemes::lengthOf(u"abc", 2) == 2);
    }

    void emojiAreFoundWithAllThatBelongsToThem_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qsizetype>("length"); // of the one emoji that begins after two letters; 0 for none
        QTest::newRow("letters") << u"abcd"_s << qsizetype(0);
        QTest::newRow("Chinese") << u"ab市議會"_s << qsizetype(0);
        QTest::newRow("a picture") << u"ab\U0001F6A2cd"_s << qsizetype(2);
        QTest::newRow("an old picture") << u"ab\u2693cd"_s << qsizetype(1);
        QTest::newRow("an old picture as a text") << u"ab\u2693\uFE0Ecd"_s << qsizetype(0);
        QTest::newRow("a sign") << u"ab\u2764cd"_s << qsizetype(0);
        QTest::newRow("a sign as a picture") << u"ab\u2764\uFE0Fcd"_s << qsizetype(2);
        QTest::newRow("a judge") << u"ab\U0001F469\U0001F3FD\u200D\u2696\uFE0Fcd"_s << qsizetype(7);
        QTest::newRow("a family") << u"ab\U0001F469\u200D\U0001F469\u200D\U0001F467cd"_s << qsizetype(8);
        QTest::newRow("a skin tone") << u"ab\U0001F44D\U0001F3FDcd"_s << qsizetype(4);
        QTest::newRow("a flag") << u"ab\U0001F1FA\U0001F1F8cd"_s << qsizetype(4);
        QTest::newRow("a keycap") << u"ab1\uFE0F\u20E3cd"_s << qsizetype(3);
        QTest::newRow("a digit in a frame") << u"ab1\u20E3cd"_s << qsizetype(0);
        QTest::newRow("a corner") << u"ab\u231Ccd"_s << qsizetype(0);
        QTest::newRow("half a pair") << u"ab"_s + QChar(0xD83D) << qsizetype(0);
    }

    void emojiAreFoundWithAllThatBelongsToThem()
    {
        QFETCH(QString, text);
        QFETCH(qsizetype, length);
        QList<Graphemes::Range> wanted;
        if (length > 0)
            wanted = {{2, length}};
        QCOMPARE(Graphemes::emoji(text), wanted);
        if (length > 0)
            QCOMPARE(Graphemes::emoji(text + text).size(), 2);
    }

    void aHyphenIsACharacterUnlessSomethingJoinsIt_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isWhole");
        QTest::newRow("between letters") << u"a-b"_s << true;
        QTest::newRow("at the end") << u"a-"_s << true;
        QTest::newRow("between accents") << u"é-é"_s << true;
        QTest::newRow("behind half a pair") << QString(QChar(0xD83D)) + u'-' << true;
        QTest::newRow("with a mark") << u"a-\u0301"_s << false;
        QTest::newRow("with a joiner") << u"a-\u200D"_s << false;
        QTest::newRow("behind a sign that joins what follows") << u"\u0600-"_s << false;
    }

    void aHyphenIsACharacterUnlessSomethingJoinsIt()
    {
        QFETCH(QString, text);
        QFETCH(bool, isWhole);
        QCOMPARE(Graphemes::isWholeCharacter(text, 1), isWhole);
    }

    void theOfficialCasesOfUnicodeAreCountedRight()
    {
        QFile file(QStringLiteral(QUILLMERE_GRAPHEME_CASES));
        QVERIFY(file.open(QIODevice::ReadOnly));
        int cases = 0;
        while (!file.atEnd()) {
            // Of the form "÷ 0020 × 0308 ÷ 0020 ÷ # why".
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
                QVERIFY2(Graphemes::lengthOf(text, i + 1) == ends[i], qPrintable(line));
        }
        QVERIFY2(cases >= 602, qPrintable(QString::number(cases))); // of Unicode 15; later ones have more
    }

    void threadsDoNotDisturbEachOther()
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

QTEST_GUILESS_MAIN(GraphemesTest)
#include "GraphemesTest.moc"
