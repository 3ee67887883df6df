#include "TextLines.h"
#include "Rows.h"
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

    double width() const { return lines.maximumLineWidth(); }

    TextLines lines;
};

} // namespace

/** Tests texts on lines of equal height, in all scripts. */
class TextLinesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyLineIsAsTallAsPlainFont_data()
    {
        rows<QString>({"text"}, {{"Latin", u"The council meets. "_s.repeated(9)},
                                 {"Arabic", u"اجتماع مجلس المدينة حول الميزانية "_s.repeated(9)},
                                 {"Devanagari", u"नगर परिषद की बैठक "_s.repeated(9)},
                                 {"Thai", u"การประชุมสภาเมือง "_s.repeated(9)},
                                 {"Chinese", u"市議會定期會議"_s.repeated(9)},
                                 {"emoji", u"\U0001F6A2\U0001F4FC "_s.repeated(20)},
                                 {"stacked marks",
                                  u"Z\u0338\u0322\u0313\u0351a\u0336\u0301\u0302\u0303\u0304lg\u0337o "_s.repeated(20)},
                                 {"all scripts mixed", u"Council اجتماع परिषद สภา 市議會 \U0001F6A2 "_s.repeated(5)}});
    }

    void everyLineIsAsTallAsPlainFont()
    {
        QFETCH(QString, text);
        TextLines lines(text, plainFont());
        QVERIFY(lines.breakLines(300, QTextOption::WrapAtWordBoundaryOrAnywhere, 1000));
        QVERIFY(lines.count() > 1);
        const QFontMetricsF metrics(plainFont());
        QCOMPARE(lines.height(), metrics.height());
        QCOMPARE(lines.ascent(), metrics.ascent());
    }

    void lettersOfEveryFontAreOnBaseline()
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

    void emojiSequenceIsOneGlyph_data()
    {
        rows<QString>({"sign"},
                      {{"judge", u"\U0001F469\U0001F3FD\u200D\u2696\uFE0F"_s},
                       {"judge without a selector", u"\U0001F469\U0001F3FD\u200D\u2696"_s},
                       {"family", u"\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"_s},
                       {"kiss", u"\U0001F469\u200D\u2764\uFE0F\u200D\U0001F48B\u200D\U0001F468"_s},
                       {"flag of regional indicators", u"\U0001F1EB\U0001F1F7"_s},
                       {"flag of tags", u"\U0001F3F4\U000E0067\U000E0062\U000E0065\U000E006E\U000E0067\U000E007F"_s},
                       {"rainbow flag", u"\U0001F3F3\uFE0F\u200D\U0001F308"_s},
                       {"pirates' flag", u"\U0001F3F4\u200D\u2620\uFE0F"_s},
                       {"keycap of a digit", u"1\uFE0F\u20E3"_s},
                       {"keycap of a symbol", u"#\uFE0F\u20E3"_s},
                       {"skin tone", u"\U0001F44D\U0001F3FD"_s},
                       {"skin tone of a BMP emoji", u"\u261D\U0001F3FD"_s},
                       {"heart in emoji style", u"\u2764\uFE0F"_s},
                       {"scales in emoji style", u"\u2696\uFE0F"_s},
                       {"anchor", u"\u2693"_s}});
    }

    void emojiSequenceIsOneGlyph()
    {
        // The emoji font draws each whole cluster as one glyph. All glyphs are of equal width.
        QFETCH(QString, sign);
        for (const QString& text : {sign, u"Mayor "_s + sign, u"مجلس "_s + sign}) {
            const OneLine line(text);
            const QString other = text.chopped(sign.size());
            QVERIFY(std::abs(line.width() - OneLine(other).width() - OneLine(u"\U0001F6A2"_s).width()) < 0.01);
            QCOMPARE(line.lines.laidOutText().formats.size(), 1);
            const QImage image = draw(line.lines);
            int coloured = 0;
            for (int y = 0; y < 80; ++y) {
                for (int x = 0; x < 400; ++x)
                    coloured += image.pixelColor(x, y) != QColor(Qt::white);
            }
            QVERIFY(coloured > 50);
        }
    }

    void textSymbolKeepsTextFont()
    {
        for (const QString& text : {u"▶\uFE0E"_s, u"\u2764\uFE0E"_s, u"\u2764"_s, u"\u2693\uFE0E"_s,
                                    u"◈ AGENDA ENCLOSED"_s, u"10 # * ©™"_s}) {
            const TextLines::FormattedText laidOut = OneLine(text).lines.laidOutText();
            QVERIFY2(laidOut.formats.isEmpty(), qPrintable(text));
            QCOMPARE(laidOut.text, text);
        }
    }

    void textIsCutAtLastLineThatFits_data()
    {
        rows<QString>({"text"}, {{"words", u"Special joint meeting of zoning "_s.repeated(30)},
                                 {"one token", QString(600, u'W')},
                                 {"Arabic", u"اجتماع مجلس المدينة "_s.repeated(30)},
                                 {"Chinese", u"市議會定期會議"_s.repeated(30)},
                                 {"emoji", u"\U0001F469\U0001F3FD\u200D\u2696\uFE0F"_s.repeated(90)},
                                 {"separate lines", QString(u"one"_s + QChar::LineSeparator).repeated(30)}});
    }

    void textIsCutAtLastLineThatFits()
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

    void cutTextFillsLastLine()
    {
        const QString text = u"Harbor Day Parade and Regatta of the whole County"_s;
        TextLines lines(text, plainFont());
        QVERIFY(lines.elide(200, 1));
        QVERIFY(lines.maximumLineWidth() > 170);
        const QString oneLetterMore = text.first(lines.laidOutText().text.size()) + u'…';
        QVERIFY(OneLine(oneLetterMore).width() > 200);
    }

    void emojiSequenceIsNeverCut()
    {
        const QString sign = u"\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"_s;
        for (double width = 30; width < 300; width += 7) {
            TextLines lines(sign.repeated(20), plainFont());
            QVERIFY(lines.elide(width, 1));
            QCOMPARE(lines.laidOutText().text, sign.repeated(lines.laidOutText().text.count(sign)) + u'…');
            QCOMPARE(lines.laidOutText().formats.size(), lines.laidOutText().text.count(sign));
        }
    }

    void textThatFitsIsNotCut()
    {
        TextLines lines(u"Harbor Day"_s, plainFont());
        QVERIFY(!lines.elide(1000, 1));
        QCOMPARE(lines.laidOutText().text, u"Harbor Day"_s);
        QVERIFY(!lines.elide(OneLine(u"Harbor Day"_s).width() + 0.01, 1));
    }
};

QUILLMERE_TEST(TextLinesTest, QGuiApplication)

} // namespace quillmere

#include "TextLinesTest.moc"
