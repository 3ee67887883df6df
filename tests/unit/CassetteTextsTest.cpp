#include "CassetteRenderer.h"
#include "PixelBounds.h"
#include "Rows.h"
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

QImage boxTitled(const QString& title, const QString& tagline = sampleCover().tagline)
{
    VHSCover cover = sampleCover();
    cover.title = title;
    cover.tagline = tagline;
    return boxOf(cover);
}

QRectF difference(const QImage& one, const QImage& other)
{
    const QRect area = boundsOfPixels(one.rect(), [&](QPoint at) { return one.pixel(at) != other.pixel(at); });
    return {QPointF(area.topLeft()) / unit, QSizeF(area.size()) / unit};
}

using Change = std::function<void(VHSCover&)>;

/** The area that `change` alters on the sample cover, in units of the box. */
QRectF changedArea(const Change& change)
{
    VHSCover changed = sampleCover();
    change(changed);
    return difference(boxOf(sampleCover()), boxOf(changed));
}

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
    void eachTextIsInsideItsArea_data()
    {
        const QRectF strip(10, 306, 300, 24);
        const QRectF titleBlock(9.5, 336, 300.5, 108);
        const QRectF rating(10, 472, 174, 18);
        rows<Change, QRectF>(
            {"change", "area"},
            {{"genre", [](VHSCover& cover) { cover.genre = u"NOIR"_s; }, strip},
             {"year", [](VHSCover& cover) { cover.year = u"1999"_s; }, strip},
             {"title", [](VHSCover& cover) { cover.title = u"Budget"_s; }, titleBlock},
             {"tagline", [](VHSCover& cover) { cover.tagline = u"Every vote leaves a wake."_s; }, titleBlock},
             {"rating", [](VHSCover& cover) { cover.rating.code = u"F.O.I.A."_s; }, rating},
             {"runtime", [](VHSCover& cover) { cover.runtime = 214; }, rating},
             {"speed", [](VHSCover& cover) { cover.speed = u"EP"_s; }, rating},
             {"catalogue number", [](VHSCover& cover) { cover.catalogNo = u"RW 9998 · EP"_s; }, {190, 476, 120, 14}},
             {"bar code", [](VHSCover& cover) { cover.barcode.fill(2); }, {190, 446, 120, 27}},
             {"hue", [](VHSCover& cover) { cover.hue = 145; }, {10, 50, 300, 250}}});
    }

    void eachTextIsInsideItsArea()
    {
        QFETCH(Change, change);
        QFETCH(QRectF, area);
        const QRectF seen = changedArea(change);
        QVERIFY(!seen.isEmpty());
        QVERIFY2(area.contains(seen), rectText(seen).constData());
    }

    void fieldThatIsNotPrintedChangesNothing()
    {
        QVERIFY(changedArea([](VHSCover& cover) {
                    cover.id = 7;
                    cover.spineTitle = cover.bodyName = cover.shelf = cover.dateLabel = cover.synopsis = u"x"_s;
                    cover.rating.full = u"x"_s;
                    cover.hasAgenda = true;
                    cover.hasTranscript = false;
                }).isEmpty());
    }

    void eachTextHasItsFontSize_data()
    {
        const VHSCover cover = sampleCover();
        const QFont small = Typography::monospaced(10);
        const double catalogueLeft = 250 - QFontMetricsF(small).horizontalAdvance(cover.catalogNo) / 2;
        rows<QRectF, QFont, QString, double>(
            {"area", "font", "text", "left"},
            {{"brand", {11, 11, 298, 32}, Typography::standard(17, QFont::Black, 1.5), u"REWINDERY"_s, 20},
             {"tagline", {10, 401, 300, 16}, Typography::serif(12, QFont::Normal, true), cover.tagline, 10},
             {"rating", {10, 478, 170, 11}, Typography::standard(11, QFont::Bold), u"RATED P.G. · 49 MIN · SP"_s, 10},
             {"catalogue number", {190, 478, 120, 11}, small, cover.catalogNo, catalogueLeft}});
    }

    void eachTextHasItsFontSize()
    {
        QFETCH(QRectF, area);
        QFETCH(QFont, font);
        QFETCH(QString, text);
        QFETCH(double, left);
        const QImage box = boxOf(sampleCover());
        const QRect pixels = QRectF(area.topLeft() * unit, area.size() * unit).toRect();
        const QRgb background = box.pixel(pixels.topLeft());
        const QRect ink = boundsOfPixels(pixels, [&](QPoint at) { return box.pixel(at) != background; });
        const QRectF tight = QFontMetricsF(font).tightBoundingRect(text);
        QVERIFY2(std::abs(double(ink.width()) / unit - tight.width()) < 2, rectText(ink).constData());
        QVERIFY2(std::abs(double(ink.left()) / unit - left - tight.left()) < 1, rectText(ink).constData());
    }

    void veryLongTitleIsPrintedAtHalfSize()
    {
        const auto firstLine = [](const QString& title) {
            const QImage box = boxTitled(title, {});
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

    void everyScriptIsDrawnWithItsGlyphs_data()
    {
        rows<QString, QString>({"one", "other"}, {{"Chinese", u"議"_s, u"會"_s},
                                                  {"Japanese", u"の"_s, u"ス"_s},
                                                  {"Korean", u"시"_s, u"의"_s},
                                                  {"Arabic", u"جلسة"_s, u"مجلس"_s},
                                                  {"Hebrew", u"א"_s, u"ש"_s},
                                                  {"emoji", u"\U0001F6A2"_s, u"\U0001F389"_s}});
    }

    void everyScriptIsDrawnWithItsGlyphs()
    {
        QFETCH(QString, one);
        QFETCH(QString, other);
        // Glyphs that are missing in the font would all be drawn as the same box.
        QVERIFY(boxTitled(one) != boxTitled(other));
        QVERIFY(boxTitled(one) != boxTitled(u""_s));
    }

    void emojiIsDrawnInColour()
    {
        const QImage box = boxTitled(u"\U0001F389"_s);
        int coloured = 0;
        for (int y = 337 * unit; y < 370 * unit; ++y) {
            for (int x = 10 * unit; x < 60 * unit; ++x) {
                const QColor pixel = box.pixelColor(x, y);
                coloured += pixel.saturation() > 100 && pixel.value() > 100;
            }
        }
        QVERIFY(coloured > 1000);
    }

    void joinedEmojiIsOneGlyph_data()
    {
        rows<QString>({"title"}, {{"judge", u"\U0001F469\U0001F3FD\u200D\u2696\uFE0F"_s},
                                  {"pirates' flag", u"\U0001F3F4\u200D\u2620\uFE0F"_s},
                                  {"keycap", u"1\uFE0F\u20E3"_s}});
    }

    void joinedEmojiIsOneGlyph()
    {
        QFETCH(QString, title);
        const auto inkOf = [](const QString& words) {
            return difference(boxTitled({}, {}), boxTitled(words, {})).width();
        };
        QVERIFY(inkOf(title) > 15);
        QVERIFY(std::abs(inkOf(title) - inkOf(u"\U0001F6A2"_s)) < 6);
    }
};

QUILLMERE_TEST(CassetteTextsTest, QGuiApplication)

} // namespace quillmere

#include "CassetteTextsTest.moc"
