#include "TextLines.h"
#include "TestMain.h"
#include "Typography.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QRawFont>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr int size = 26;

QFont plainFont()
{
    return Typography::standard(size);
}

QImage draw(const TextLines& lines)
{
    QImage image(700, 300, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(20, 20);
    painter.setPen(Qt::black);
    lines.draw(painter);
    return image;
}

/** A text laid out on one line. */
struct OneLine
{
    explicit OneLine(const QString& text, const QFont& font = plainFont()) : lines(text, font)
    {
        lines.breakLines(TextLines::unbounded, QTextOption::NoWrap, 1);
    }

    TextLines lines;
};

/** The width of every emoji: the emoji font draws each whole cluster as one glyph of this width. */
double emojiWidth()
{
    return OneLine(u"\U0001F6A2"_s).lines.maximumLineWidth();
}

} // namespace

/** Tests texts on lines of equal height, in all scripts. */
class TextLinesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyLineIsAsTallAsPlainFont_data();
    void everyLineIsAsTallAsPlainFont();
    void lettersOfEveryFontAreOnBaseline();
    void emojiSequenceIsOneGlyph_data();
    void emojiSequenceIsOneGlyph();
    void textSymbolKeepsTextFont_data();
    void textSymbolKeepsTextFont();
    void textIsCutAtLastLineThatFits_data();
    void textIsCutAtLastLineThatFits();
    void cutTextFillsLastLine();
    void emojiSequenceIsNeverCut();
    void textThatFitsIsNotCut();
};

void TextLinesTest::everyLineIsAsTallAsPlainFont_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("Latin") << u"The council meets. "_s.repeated(9);
    QTest::newRow("Arabic") << u"اجتماع مجلس المدينة حول الميزانية "_s.repeated(9);
    QTest::newRow("Devanagari") << u"नगर परिषद की बैठक "_s.repeated(9);
    QTest::newRow("Thai") << u"การประชุมสภาเมือง "_s.repeated(9);
    QTest::newRow("Chinese") << u"市議會定期會議"_s.repeated(9);
    QTest::newRow("emoji") << u"\U0001F6A2\U0001F4FC "_s.repeated(20);
    QTest::newRow("stacked marks") << u"Z\u0338\u0322\u0313\u0351a\u0336\u0301\u0302\u0303\u0304lg\u0337o "_s.repeated(
        20);
    QTest::newRow("all scripts mixed") << u"Council اجتماع परिषद สภา 市議會 \U0001F6A2 "_s.repeated(5);
}

void TextLinesTest::everyLineIsAsTallAsPlainFont()
{
    QFETCH(QString, text);
    TextLines lines(text, plainFont());
    QVERIFY(lines.breakLines(300, QTextOption::WrapAtWordBoundaryOrAnywhere, 1000));
    QVERIFY(lines.count() > 1);
    const QFontMetricsF metrics(plainFont());
    QCOMPARE(lines.height(), metrics.height());
    QCOMPARE(lines.ascent(), metrics.ascent());
}

void TextLinesTest::lettersOfEveryFontAreOnBaseline()
{
    // Each line has a word in a different fallback font. Arabic letters are much taller than the others.
    const QString mixed = u"HH اجتماع"_s + QChar::LineSeparator + u"HH परिषद"_s + QChar::LineSeparator + u"HH"_s;
    TextLines lines(mixed, plainFont());
    QVERIFY(lines.breakLines(600, QTextOption::WordWrap, 3));
    QCOMPARE(lines.count(), 3);
    const QImage image = draw(lines);
    for (int line = 0; line < 3; ++line) {
        // The left stem of the first letter H must end on the baseline.
        const double baseline = 20 + line * lines.height() + lines.ascent();
        int stem = 20;
        while (stem < 40 && qGray(image.pixel(stem, int(baseline) - 8)) > 100)
            ++stem;
        QVERIFY(stem < 40);
        QVERIFY(qGray(image.pixel(stem, int(baseline - 2))) < 100);
        QVERIFY(qGray(image.pixel(stem, int(baseline + 2))) > 200);
    }
}

void TextLinesTest::emojiSequenceIsOneGlyph_data()
{
    QTest::addColumn<QString>("sign");
    QTest::newRow("judge") << u"\U0001F469\U0001F3FD\u200D\u2696\uFE0F"_s;
    QTest::newRow("judge without a selector") << u"\U0001F469\U0001F3FD\u200D\u2696"_s;
    QTest::newRow("family") << u"\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"_s;
    QTest::newRow("kiss") << u"\U0001F469\u200D\u2764\uFE0F\u200D\U0001F48B\u200D\U0001F468"_s;
    QTest::newRow("flag of regional indicators") << u"\U0001F1EB\U0001F1F7"_s;
    QTest::newRow("flag of tags") << u"\U0001F3F4\U000E0067\U000E0062\U000E0065\U000E006E\U000E0067\U000E007F"_s;
    QTest::newRow("rainbow flag") << u"\U0001F3F3\uFE0F\u200D\U0001F308"_s;
    QTest::newRow("pirates' flag") << u"\U0001F3F4\u200D\u2620\uFE0F"_s;
    QTest::newRow("keycap of a digit") << u"1\uFE0F\u20E3"_s;
    QTest::newRow("keycap of a symbol") << u"#\uFE0F\u20E3"_s;
    QTest::newRow("skin tone") << u"\U0001F44D\U0001F3FD"_s;
    QTest::newRow("skin tone of a BMP emoji") << u"\u261D\U0001F3FD"_s;
    QTest::newRow("heart in emoji style") << u"\u2764\uFE0F"_s;
    QTest::newRow("scales in emoji style") << u"\u2696\uFE0F"_s;
    QTest::newRow("anchor") << u"\u2693"_s;
}

void TextLinesTest::emojiSequenceIsOneGlyph()
{
    QFETCH(QString, sign);
    for (const QString& text : {sign, u"Mayor "_s + sign, u"مجلس "_s + sign}) {
        const OneLine line(text);
        const QString other = text.chopped(sign.size());
        QVERIFY(std::abs(line.lines.maximumLineWidth() - OneLine(other).lines.maximumLineWidth() - emojiWidth()) <
                0.01);
        QCOMPARE(line.lines.laidOutText().formats.size(), 1);
        QImage image = draw(line.lines);
        int coloured = 0;
        for (int y = 0; y < 80; ++y) {
            for (int x = 0; x < 400; ++x)
                coloured += image.pixelColor(x, y) != QColor(Qt::white);
        }
        QVERIFY(coloured > 50);
    }
}

void TextLinesTest::textSymbolKeepsTextFont_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("play") << u"▶\uFE0E"_s;
    QTest::newRow("heart in text style") << u"\u2764\uFE0E"_s;
    QTest::newRow("heart alone") << u"\u2764"_s;
    QTest::newRow("anchor in text style") << u"\u2693\uFE0E"_s;
    QTest::newRow("agenda") << u"◈ AGENDA ENCLOSED"_s;
    QTest::newRow("digits") << u"10 # * ©™"_s;
}

void TextLinesTest::textSymbolKeepsTextFont()
{
    QFETCH(QString, text);
    const OneLine line(text);
    QVERIFY(line.lines.laidOutText().formats.isEmpty());
    QCOMPARE(line.lines.laidOutText().text, text);
}

void TextLinesTest::textIsCutAtLastLineThatFits_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("words") << u"Special joint meeting of zoning "_s.repeated(30);
    QTest::newRow("one token") << QString(600, u'W');
    QTest::newRow("Arabic") << u"اجتماع مجلس المدينة "_s.repeated(30);
    QTest::newRow("Chinese") << u"市議會定期會議"_s.repeated(30);
    QTest::newRow("emoji") << u"\U0001F469\U0001F3FD\u200D\u2696\uFE0F"_s.repeated(90);
    QTest::newRow("separate lines") << QString(u"one"_s + QChar::LineSeparator).repeated(30);
}

void TextLinesTest::textIsCutAtLastLineThatFits()
{
    QFETCH(QString, text);
    for (const int atMost : {1, 2, 5}) {
        for (const double width : {60.0, 200.0, 333.3}) {
            TextLines lines(text, plainFont());
            QVERIFY(lines.elide(width, atMost));
            QCOMPARE(lines.count(), atMost);
            QVERIFY(lines.laidOutText().text.endsWith(u'…'));
            QVERIFY2(lines.maximumLineWidth() <= width + 0.01,
                     qPrintable(u"%1 of %2"_s.arg(lines.maximumLineWidth()).arg(width)));
        }
    }
}

void TextLinesTest::cutTextFillsLastLine()
{
    TextLines lines(u"Harbor Day Parade and Regatta of the whole County"_s, plainFont());
    QVERIFY(lines.elide(200, 1));
    const double cut = lines.maximumLineWidth();
    QVERIFY(cut > 170);
    // One more letter does not fit.
    const qsizetype kept = lines.laidOutText().text.size() - 1;
    const QString more = u"Harbor Day Parade and Regatta of the whole County"_s.first(kept + 1) + u'…';
    QVERIFY(OneLine(more).lines.maximumLineWidth() > 200);
}

void TextLinesTest::emojiSequenceIsNeverCut()
{
    const QString sign = u"\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"_s;
    for (double width = 30; width < 300; width += 7) {
        TextLines lines(sign.repeated(20), plainFont());
        QVERIFY(lines.elide(width, 1));
        QCOMPARE(lines.laidOutText().text, sign.repeated(lines.laidOutText().text.count(sign)) + u'…');
        QCOMPARE(lines.laidOutText().formats.size(), lines.laidOutText().text.count(sign));
    }
}

void TextLinesTest::textThatFitsIsNotCut()
{
    TextLines lines(u"Harbor Day"_s, plainFont());
    QVERIFY(!lines.elide(1000, 1));
    QCOMPARE(lines.laidOutText().text, u"Harbor Day"_s);
    QVERIFY(!lines.elide(OneLine(u"Harbor Day"_s).lines.maximumLineWidth() + 0.01, 1));
}

QUILLMERE_TEST(TextLinesTest, QGuiApplication)

} // namespace quillmere

#include "TextLinesTest.moc"
