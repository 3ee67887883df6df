#include "CassetteRenderer.h"
#include "SampleCover.h"
#include "TestMain.h"
#include "Typography.h"

#include <QFontMetricsF>
#include <QTest>

#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr int unit = 4; // pixels per unit of the box

QImage boxOf(const VHSCover& cover)
{
    const CassettePicture picture =
        CassetteRenderer{CassetteRenderer::Form::BoxFront, cover, 320, QSize(320, 500) * unit}.paint();
    return picture.image.copy(picture.box);
}

QRectF difference(const QImage& one, const QImage& other)
{
    QRect area;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (one.pixel(x, y) != other.pixel(x, y))
                area |= QRect(x, y, 1, 1);
        }
    }
    return {QPointF(area.topLeft()) / unit, QSizeF(area.size()) / unit};
}

/** The area that `change` alters on the sample cover, in units of the box. */
QRectF changedArea(const std::function<void(VHSCover&)>& change)
{
    VHSCover changed = sampleCover();
    change(changed);
    return difference(boxOf(sampleCover()), boxOf(changed));
}

using Change = std::function<void(VHSCover&)>;

/** Formats a rectangle for a failure message. QTest's own conversion leaks memory. */
QByteArray rectText(const QRectF& rect)
{
    const auto number = [](qreal value) { return QByteArray::number(value); };
    return number(rect.x()) + ' ' + number(rect.y()) + ' ' + number(rect.width()) + ' ' + number(rect.height());
}

} // namespace

/** Tests the position and size of every text on a box. */
class CassetteTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachTextIsInsideItsArea_data();
    void eachTextIsInsideItsArea();
    void fieldThatIsNotPrintedChangesNothing();
    void eachTextHasItsFontSize_data();
    void eachTextHasItsFontSize();
    void veryLongTitleIsPrintedAtHalfSize();
    void everyScriptIsDrawnWithItsGlyphs_data();
    void everyScriptIsDrawnWithItsGlyphs();
    void emojiIsDrawnInColour();
    void joinedEmojiIsOneGlyph_data();
    void joinedEmojiIsOneGlyph();
};

void CassetteTextsTest::eachTextIsInsideItsArea_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QRectF>("area");
    const QRectF strip(10, 306, 300, 24);
    const QRectF titleBlock(9.5, 336, 300.5, 108);
    const QRectF rating(10, 472, 174, 18);
    QTest::newRow("genre") << Change([](VHSCover& cover) { cover.genre = u"NOIR"_s; }) << strip;
    QTest::newRow("year") << Change([](VHSCover& cover) { cover.year = u"1999"_s; }) << strip;
    QTest::newRow("title") << Change([](VHSCover& cover) { cover.title = u"Budget"_s; }) << titleBlock;
    QTest::newRow("tagline") << Change([](VHSCover& cover) { cover.tagline = u"Every vote leaves a wake."_s; })
                             << titleBlock;
    QTest::newRow("rating") << Change([](VHSCover& cover) { cover.rating.code = u"F.O.I.A."_s; }) << rating;
    QTest::newRow("runtime") << Change([](VHSCover& cover) { cover.runtime = 214; }) << rating;
    QTest::newRow("speed") << Change([](VHSCover& cover) { cover.speed = u"EP"_s; }) << rating;
    QTest::newRow("catalogue number") << Change([](VHSCover& cover) { cover.catalogNo = u"RW 9998 · EP"_s; })
                                      << QRectF(190, 476, 120, 14);
    QTest::newRow("bar code") << Change([](VHSCover& cover) { cover.barcode.fill(2); }) << QRectF(190, 446, 120, 27);
    QTest::newRow("hue") << Change([](VHSCover& cover) { cover.hue = 145; }) << QRectF(10, 50, 300, 250);
}

void CassetteTextsTest::eachTextIsInsideItsArea()
{
    QFETCH(Change, change);
    QFETCH(QRectF, area);
    const QRectF seen = changedArea(change);
    QVERIFY(!seen.isEmpty());
    QVERIFY2(area.contains(seen), rectText(seen).constData());
}

void CassetteTextsTest::fieldThatIsNotPrintedChangesNothing()
{
    QVERIFY(changedArea([](VHSCover& cover) {
                cover.id = 7;
                cover.spineTitle = cover.bodyName = cover.shelf = cover.dateLabel = cover.synopsis = u"x"_s;
                cover.rating.full = u"x"_s;
                cover.hasAgenda = true;
                cover.hasTranscript = false;
            }).isEmpty());
}

void CassetteTextsTest::eachTextHasItsFontSize_data()
{
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<QFont>("font");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("left");
    QTest::newRow("brand") << QRectF(11, 11, 298, 32) << Typography::standard(17, QFont::Black, 1.5) << u"REWINDERY"_s
                           << 20.0;
    QTest::newRow("tagline") << QRectF(10, 401, 300, 16) << Typography::serif(12, QFont::Normal, true)
                             << sampleCover().tagline << 10.0;
    QTest::newRow("rating") << QRectF(10, 478, 170, 11) << Typography::standard(11, QFont::Bold)
                            << u"RATED P.G. · 49 MIN · SP"_s << 10.0;
    const double catalogWidth = QFontMetricsF(Typography::monospaced(10)).horizontalAdvance(sampleCover().catalogNo);
    QTest::newRow("catalogue number") << QRectF(190, 478, 120, 11) << Typography::monospaced(10)
                                      << sampleCover().catalogNo << 250 - catalogWidth / 2;
}

void CassetteTextsTest::eachTextHasItsFontSize()
{
    QFETCH(QRectF, area);
    QFETCH(QFont, font);
    QFETCH(QString, text);
    QFETCH(double, left);
    const QImage box = boxOf(sampleCover());
    const QRect pixels = QRectF(area.topLeft() * unit, area.size() * unit).toRect();
    const QRgb background = box.pixel(pixels.topLeft());
    QRect ink;
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            if (box.pixel(x, y) != background)
                ink |= QRect(x, y, 1, 1);
        }
    }
    const QRectF tight = QFontMetricsF(font).tightBoundingRect(text);
    QVERIFY2(std::abs(double(ink.width()) / unit - tight.width()) < 2, rectText(ink).constData());
    QVERIFY2(std::abs(double(ink.left()) / unit - left - tight.left()) < 1, rectText(ink).constData());
}

void CassetteTextsTest::veryLongTitleIsPrintedAtHalfSize()
{
    const auto firstLine = [](const QString& title) {
        VHSCover cover = sampleCover();
        cover.tagline.clear();
        cover.title = title;
        const QImage box = boxOf(cover);
        const auto isBlank = [&](int y) {
            for (int x = 10 * unit; x < 310 * unit; ++x) {
                if (box.pixel(x, y) != box.pixel(7 * unit, y))
                    return false;
            }
            return true;
        };
        int top = 336 * unit;
        while (isBlank(top))
            ++top;
        int bottom = top;
        while (!isBlank(bottom))
            ++bottom;
        return bottom - top;
    };
    const int whole = firstLine(u"HH"_s);
    const int half = firstLine(u"HHHHH "_s.repeated(50));
    QVERIFY(whole > 60);
    QVERIFY2(std::abs(half * 2 - whole) <= 3, qPrintable(u"%1 and %2"_s.arg(half).arg(whole)));
}

void CassetteTextsTest::everyScriptIsDrawnWithItsGlyphs_data()
{
    QTest::addColumn<QString>("one");
    QTest::addColumn<QString>("other");
    QTest::newRow("Chinese") << u"議"_s << u"會"_s;
    QTest::newRow("Japanese") << u"の"_s << u"ス"_s;
    QTest::newRow("Korean") << u"시"_s << u"의"_s;
    QTest::newRow("Arabic") << u"جلسة"_s << u"مجلس"_s;
    QTest::newRow("Hebrew") << u"א"_s << u"ש"_s;
    QTest::newRow("emoji") << u"\U0001F6A2"_s << u"\U0001F389"_s;
}

void CassetteTextsTest::everyScriptIsDrawnWithItsGlyphs()
{
    QFETCH(QString, one);
    QFETCH(QString, other);
    const auto titled = [](const QString& title) {
        VHSCover cover = sampleCover();
        cover.title = title;
        return boxOf(cover);
    };
    // Glyphs that are missing in the font would all be drawn as the same box.
    QVERIFY(titled(one) != titled(other));
    QVERIFY(titled(one) != titled(u""_s));
}

void CassetteTextsTest::emojiIsDrawnInColour()
{
    VHSCover cover = sampleCover();
    cover.title = u"\U0001F389"_s;
    const QImage box = boxOf(cover);
    int coloured = 0;
    for (int y = 337 * unit; y < 370 * unit; ++y) {
        for (int x = 10 * unit; x < 60 * unit; ++x) {
            const QColor pixel = box.pixelColor(x, y);
            coloured += pixel.saturation() > 100 && pixel.value() > 100;
        }
    }
    QVERIFY(coloured > 1000);
}

void CassetteTextsTest::joinedEmojiIsOneGlyph_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("judge") << u"\U0001F469\U0001F3FD\u200D\u2696\uFE0F"_s;
    QTest::newRow("pirates' flag") << u"\U0001F3F4\u200D\u2620\uFE0F"_s;
    QTest::newRow("keycap") << u"1\uFE0F\u20E3"_s;
}

void CassetteTextsTest::joinedEmojiIsOneGlyph()
{
    QFETCH(QString, title);
    const auto inkOf = [](const QString& words) {
        VHSCover cover = sampleCover();
        cover.title.clear();
        cover.tagline.clear();
        const QImage empty = boxOf(cover);
        cover.title = words;
        return difference(empty, boxOf(cover)).width();
    };
    QVERIFY(inkOf(title) > 15);
    QVERIFY(std::abs(inkOf(title) - inkOf(u"\U0001F6A2"_s)) < 6);
}

QUILLMERE_TEST(CassetteTextsTest, QGuiApplication)

} // namespace quillmere

#include "CassetteTextsTest.moc"
