#include "TickerRenderer.h"
#include "BroadcastTexts.h"
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
    void pictureIsLeftEdgeOfWholeLine_data();
    void pictureIsLeftEdgeOfWholeLine();
    void atMostTwoScreenWidthsArePainted_data();
    void atMostTwoScreenWidthsArePainted();
    void shortLineIsPaintedCompletely();
    void tileIsAtMost4096PixelsWide();
    void controlCharactersAreSpaces();
    void joinedEmojiIsOneGlyph();
    void periodIsComputedFromGraphemeClusters();
    void lineOfOnlyCombiningMarksIsPainted();
    void stoppedRendererPaintsNothing();
};

void TickerRendererTest::pictureIsLeftEdgeOfWholeLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("short") << u"THE COUNCIL MEETS TONIGHT"_s;
    QTest::newRow("long") << words(20'000);
    QTest::newRow("right to left") << arabic.repeated(4);
    QTest::newRow("right to left, long") << arabic.repeated(800);
    QTest::newRow("right to left, another script") << hebrew.repeated(1000);
    QTest::newRow("right to left with numbers") << (arabic + u"2025 - 17:00 "_s).repeated(200);
    QTest::newRow("right to left with names") << (arabic + u"Channel 5 (News) "_s).repeated(200);
    QTest::newRow("left to right with names") << (u"Channel 5 (News) "_s + arabic).repeated(200);
    QTest::newRow("a long right-to-left run") << u"5 NEWS · "_s + arabic.repeated(200) + words(3000);
    QTest::newRow("a long left-to-right run in right-to-left text") << arabic + words(6000) + hebrew.repeated(20);
    QTest::newRow("right-to-left override") << u"5 NEWS \u202E"_s + words(3000) + u"\u202C"_s + words(3000);
    QTest::newRow("isolated") << u"5 NEWS \u2067"_s + (words(100) + arabic).repeated(20) + u"\u2069"_s + words(3000);
    QTest::newRow("emoji") << (families + u" ✓ 📺 "_s).repeated(50);
    QTest::newRow("emoji, long") << (families + u" ✓ 📺 "_s).repeated(400);
    QTest::newRow("emoji from the right, long") << arabic + (families + u" ✓ 📺 "_s).repeated(400) + arabic;
    QTest::newRow("punctuation in a right-to-left run")
        << u"5 NEWS "_s + (arabic + u"!? · "_s).repeated(200) + words(3000);
    QTest::newRow("embedding, then punctuation")
        << u"5 NEWS \u202B"_s + arabic.repeated(60) + u"\u202C"_s + u"!? · "_s.repeated(100) + arabic;
    QTest::newRow("a long number from the right") << arabic + u"0123456789"_s.repeated(500) + u" "_s + arabic;
    QTest::newRow("Arabic digits") << u"5 NEWS "_s + u"٠١٢٣٤٥ "_s.repeated(500) + words(2000);
    QTest::newRow("Chinese") << u"五点钟新闻"_s.repeated(300);
    QTest::newRow("many marks") << (u"e"_s + QString(40, QChar(0x301))).repeated(400);
    QTest::newRow("empty") << QString();
}

void TickerRendererTest::pictureIsLeftEdgeOfWholeLine()
{
    QFETCH(QString, text);
    for (const double scale : {1.0, 2.0 / 3}) {
        const TickerPicture picture = TickerRenderer{text, 1920, scale}.paint();
        QVERIFY(!picture.tiles.isEmpty());
        QCOMPARE(joined(picture), wholeLine(text, scale, picture));
    }
}

void TickerRendererTest::atMostTwoScreenWidthsArePainted_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QList<int>>("widths");
    QTest::newRow("720p") << 1920.0 << 2.0 / 3 << QList<int>{2561};
    QTest::newRow("1080p") << 1920.0 << 1.0 << QList<int>{3841};
    QTest::newRow("2160p") << 1920.0 << 2.0 << QList<int>{4096, 3585};
    QTest::newRow("a wide display") << 2580.0 << 4.0 / 3 << QList<int>{4096, 2785};
}

void TickerRendererTest::atMostTwoScreenWidthsArePainted()
{
    QFETCH(double, width);
    QFETCH(double, scale);
    QFETCH(QList<int>, widths);
    const TickerPicture picture = TickerRenderer{words(20'000), width, scale}.paint();
    QList<int> painted;
    for (const QImage& tile : picture.tiles)
        painted.append(tile.width());
    QCOMPARE(painted, widths);
}

void TickerRendererTest::shortLineIsPaintedCompletely()
{
    const TickerPicture picture = TickerRenderer{u"5"_s, 1920, 1}.paint();
    QCOMPARE(picture.tiles.size(), 1);
    QVERIFY(picture.tiles.constFirst().width() < 200);
    QVERIFY(picture.baseline > 20 && picture.baseline < picture.tiles.constFirst().height());
}

void TickerRendererTest::tileIsAtMost4096PixelsWide()
{
    const TickerPicture picture = TickerRenderer{words(4000), 5000, 2}.paint();
    QCOMPARE(picture.tiles.size(), 5);
    for (const QImage& tile : picture.tiles)
        QVERIFY(tile.width() <= 4096);
    QCOMPARE(joined(picture), wholeLine(words(4000), 2, picture));
}

void TickerRendererTest::joinedEmojiIsOneGlyph()
{
    const auto widthOf = [](const QString& text) { return joined(TickerRenderer{text, 1920, 1}.paint({})).width(); };
    const int ship = widthOf(u"\U0001F6A2"_s);
    QCOMPARE(widthOf(u"\U0001F469\U0001F3FD\u200D\u2696\uFE0F"_s), ship);
    QCOMPARE(widthOf(u"1\uFE0F\u20E3"_s), ship);
}

void TickerRendererTest::controlCharactersAreSpaces()
{
    const TickerPicture picture = TickerRenderer{u"One\nTwo\tThree\u2028Four\u2029Five\u0001Six\r"_s, 1920, 1}.paint();
    QCOMPARE(joined(picture), joined(TickerRenderer{u"One Two Three Four Five Six "_s, 1920, 1}.paint()));
}

void TickerRendererTest::periodIsComputedFromGraphemeClusters()
{
    QCOMPARE((TickerRenderer{families.repeated(330), 1920, 1}.paint().period), 30.0);
    QCOMPARE((TickerRenderer{u"e\u0301"_s.repeated(330), 1920, 1}.paint().period), 30.0);
    QCOMPARE((TickerRenderer{QString(100, u'x'), 1920, 1}.paint().period), 24.0);
}

void TickerRendererTest::lineOfOnlyCombiningMarksIsPainted()
{
    const TickerPicture picture = TickerRenderer{QString(60'000, QChar(0x301)), 1920, 1}.paint();
    QCOMPARE(picture.tiles.size(), 1);
}

void TickerRendererTest::stoppedRendererPaintsNothing()
{
    std::stop_source stopSource;
    stopSource.request_stop();
    const TickerPicture picture = TickerRenderer{words(1000), 1920, 1}.paint(stopSource.get_token());
    QVERIFY(picture.tiles.isEmpty());
}

QUILLMERE_TEST(TickerRendererTest, QGuiApplication)

} // namespace quillmere

#include "TickerRendererTest.moc"
