#include "TickerRenderer.h"
#include "BroadcastTexts.h"
#include "Rows.h"
#include "StationPalette.h"
#include "TestMain.h"
#include "TextLines.h"

#include <QPainter>
#include <QTest>
#include <QTextLayout>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

const QString arabic = u"نشرة أخبار الساعة الخامسة "_s;
const QString hebrew = u"חדשות השעה חמש "_s;
const QString families = u"👨‍👩‍👧‍👦"_s;

QString words(qsizetype length)
{
    QString text;
    for (int number = 0; text.size() < length; ++number)
        text += u"Item %1 on the agenda. "_s.arg(number);
    return text.first(length);
}

TickerPicture paint(const QString& text, std::stop_token stop = {})
{
    return TickerRenderer{text, 1920, 1}.paint(stop);
}

/** The tiles joined into one picture on the ticker's background. */
QImage joined(const TickerPicture& picture)
{
    int width = 0;
    for (const QImage& tile : picture.tiles)
        width += tile.width();
    QImage whole(width, picture.tiles.isEmpty() ? 0 : picture.tiles.constFirst().height(), QImage::Format_RGB32);
    whole.fill(StationPalette::soot());
    QPainter painter(&whole);
    int left = 0;
    for (const QImage& tile : picture.tiles) {
        painter.drawImage(left, 0, tile);
        left += tile.width();
    }
    return whole;
}

/** Lays out the whole line and draws its left edge, in the size of `reference`. */
QImage wholeLine(const QString& text, double scale, const TickerPicture& reference)
{
    QImage image(joined(reference).size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const TextLines::FormattedText letters = TextLines::withEmojiFont(text + tickerSeparator() + text);
    QTextLayout layout(letters.text, TickerRenderer::font());
    layout.setFormats(letters.formats);
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(Qt::LayoutDirectionAuto);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(10'000'000);
    layout.endLayout();
    QPainter painter(&image);
    painter.translate(0, reference.baseline);
    painter.scale(scale, scale);
    painter.setPen(StationPalette::parchment());
    layout.draw(&painter, QPointF(0, -line.ascent()));
    painter.end();
    return joined({0, 0, {image}});
}

} // namespace

/** Tests the picture of the ticker's line. */
class TickerRendererTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pictureIsLeftEdgeOfWholeLine_data()
    {
        rows<QString>(
            {"text"},
            {{"short", u"THE COUNCIL MEETS TONIGHT"_s},
             {"long", words(20'000)},
             {"right to left", arabic.repeated(4)},
             {"right to left, long", arabic.repeated(800)},
             {"right to left, another script", hebrew.repeated(1000)},
             {"right to left with numbers", (arabic + u"2025 - 17:00 "_s).repeated(200)},
             {"right to left with names", (arabic + u"Channel 5 (News) "_s).repeated(200)},
             {"left to right with names", (u"Channel 5 (News) "_s + arabic).repeated(200)},
             {"a long right-to-left run", u"5 NEWS · "_s + arabic.repeated(200) + words(3000)},
             {"a long left-to-right run in right-to-left text", arabic + words(6000) + hebrew.repeated(20)},
             {"right-to-left override", u"5 NEWS \u202E"_s + words(3000) + u"\u202C"_s + words(3000)},
             {"isolated", u"5 NEWS \u2067"_s + (words(100) + arabic).repeated(20) + u"\u2069"_s + words(3000)},
             {"emoji", (families + u" ✓ 📺 "_s).repeated(50)},
             {"emoji, long", (families + u" ✓ 📺 "_s).repeated(400)},
             {"emoji from the right, long", arabic + (families + u" ✓ 📺 "_s).repeated(400) + arabic},
             {"punctuation in a right-to-left run", u"5 NEWS "_s + (arabic + u"!? · "_s).repeated(200) + words(3000)},
             {"embedding, then punctuation",
              u"5 NEWS \u202B"_s + arabic.repeated(60) + u"\u202C"_s + u"!? · "_s.repeated(100) + arabic},
             {"a long number from the right", arabic + u"0123456789"_s.repeated(500) + u" "_s + arabic},
             {"Arabic digits", u"5 NEWS "_s + u"٠١٢٣٤٥ "_s.repeated(500) + words(2000)},
             {"Chinese", u"五点钟新闻"_s.repeated(300)},
             {"many marks", (u"e"_s + QString(40, QChar(0x301))).repeated(400)},
             {"empty", QString()}});
    }

    void pictureIsLeftEdgeOfWholeLine()
    {
        QFETCH(QString, text);
        for (const double scale : {1.0, 2.0 / 3}) {
            const TickerPicture picture = TickerRenderer{text, 1920, scale}.paint();
            QVERIFY(!picture.tiles.isEmpty());
            QCOMPARE(joined(picture), wholeLine(text, scale, picture));
        }
    }

    void atMostTwoScreenWidthsArePainted_data()
    {
        rows<double, double, QList<int>>({"width", "scale", "widths"},
                                         {{"720p", 1920.0, 2.0 / 3, QList<int>{2561}},
                                          {"1080p", 1920.0, 1.0, QList<int>{3841}},
                                          {"2160p", 1920.0, 2.0, QList<int>{4096, 3585}},
                                          {"a wide display", 2580.0, 4.0 / 3, QList<int>{4096, 2785}}});
    }

    void atMostTwoScreenWidthsArePainted()
    {
        QFETCH(double, width);
        QFETCH(double, scale);
        const TickerPicture picture = TickerRenderer{words(20'000), width, scale}.paint();
        QList<int> painted;
        for (const QImage& tile : picture.tiles)
            painted.append(tile.width());
        QTEST(painted, "widths");
    }

    void shortLineIsPaintedCompletely()
    {
        const TickerPicture picture = paint(u"5"_s);
        QCOMPARE(picture.tiles.size(), 1);
        QVERIFY(picture.tiles.constFirst().width() < 200);
        QVERIFY(picture.baseline > 20 && picture.baseline < picture.tiles.constFirst().height());
    }

    void tileIsAtMost4096PixelsWide()
    {
        const TickerPicture picture = TickerRenderer{words(4000), 5000, 2}.paint();
        QCOMPARE(picture.tiles.size(), 5);
        for (const QImage& tile : picture.tiles)
            QVERIFY(tile.width() <= 4096);
        QCOMPARE(joined(picture), wholeLine(words(4000), 2, picture));
    }

    void controlCharactersAreSpaces()
    {
        const TickerPicture picture = paint(u"One\nTwo\tThree\u2028Four\u2029Five\u0001Six\r"_s);
        QCOMPARE(joined(picture), joined(paint(u"One Two Three Four Five Six "_s)));
    }

    void joinedEmojiIsOneGlyph()
    {
        const auto widthOf = [](const QString& text) { return joined(paint(text)).width(); };
        const int ship = widthOf(u"\U0001F6A2"_s);
        QCOMPARE(widthOf(u"\U0001F469\U0001F3FD\u200D\u2696\uFE0F"_s), ship);
        QCOMPARE(widthOf(u"1\uFE0F\u20E3"_s), ship);
    }

    void periodIsComputedFromGraphemeClusters()
    {
        QCOMPARE(paint(families.repeated(330)).period, 30.0);
        QCOMPARE(paint(u"e\u0301"_s.repeated(330)).period, 30.0);
        QCOMPARE(paint(QString(100, u'x')).period, 24.0);
    }

    void lineOfOnlyCombiningMarksIsPainted() { QCOMPARE(paint(QString(60'000, QChar(0x301))).tiles.size(), 1); }

    void stoppedRendererPaintsNothing()
    {
        std::stop_source stopSource;
        stopSource.request_stop();
        QVERIFY(paint(words(1000), stopSource.get_token()).tiles.isEmpty());
    }
};

QUILLMERE_TEST(TickerRendererTest, QGuiApplication)

} // namespace quillmere

#include "TickerRendererTest.moc"
