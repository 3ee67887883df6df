#include "FittedText.h"
#include "PixelBounds.h"
#include "Rows.h"
#include "TestMain.h"
#include "Typography.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

QImage draw(const FittedText& text)
{
    QImage image(400, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    text.paint(painter, {10, 10}, Qt::black);
    return image;
}

/** The bounding rectangle of all pixels that are not white. */
QRect ink(const QImage& image)
{
    return boundsOfPixels(image.rect(), [&](QPoint at) { return image.pixel(at) != qRgb(255, 255, 255); });
}

} // namespace

/** Tests texts that shrink to fit an area. */
class FittedTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textThatFitsKeepsSize()
    {
        const FittedText line = FittedText::line(u"Harbor Day"_s, titleFont(), 300, 0.5);
        QCOMPARE(line.scale(), 1.0);
        QVERIFY(!line.isElided());
        QVERIFY(std::abs(line.width() - QFontMetricsF(titleFont()).horizontalAdvance(u"Harbor Day"_s)) < 0.5);
        QCOMPARE(block(u"Harbor Day"_s).scale(), 1.0);
    }

    void lineShrinksToWidth()
    {
        const double natural = FittedText::line(u"Harbor Day Parade"_s, titleFont(), 1000, 0.5).width();
        const FittedText line = FittedText::line(u"Harbor Day Parade"_s, titleFont(), natural * 0.75, 0.5);
        QVERIFY(std::abs(line.scale() - 0.75) < 0.001);
        QVERIFY(!line.isElided());
        QVERIFY(std::abs(ink(draw(line)).width() - natural * 0.75) < 4);
    }

    void lineIsElidedAtLeastSize()
    {
        const FittedText line = FittedText::line(u"Harbor Day Parade and Regatta"_s, titleFont(), 100, 0.6);
        QCOMPARE(line.scale(), 0.6);
        QVERIFY(line.isElided());
        QVERIFY(line.width() <= 100.01);
        QVERIFY(line.width() > 80);
        QCOMPARE(line.lineCount(), 1);
    }

    void blockWrapsBeforeItShrinks()
    {
        const FittedText fitted = block(u"City Council Regular Meeting"_s);
        QCOMPARE(fitted.scale(), 1.0);
        QCOMPARE(fitted.lineCount(), 2);
        QVERIFY(std::abs(fitted.height() - 2 * lineHeight()) < 0.01);
    }

    void blockShrinksUntilLinesFit_data()
    {
        rows<QString>({"title"},
                      {{"a little", u"Joint Powers Authority Finance Committee"_s},
                       {"much", u"Joint Powers Authority Finance and Administration Committee Meeting of March 5"_s}});
    }

    void blockShrinksUntilLinesFit()
    {
        QFETCH(QString, title);
        const FittedText fitted = block(title);
        QVERIFY(fitted.scale() < 1);
        QVERIFY(fitted.scale() > 0.5);
        QVERIFY(!fitted.isElided());
        QVERIFY(fitted.height() <= 80.01);
        // The text does not fit at a slightly larger scale.
        const FittedText larger = FittedText::block(title, titleFont(), {300, 80}, fitted.scale() + 0.04);
        QVERIFY(larger.isElided());
    }

    void blockShrinksRatherThanBreakWord()
    {
        const FittedText fitted = block(u"Intergovernmentalism"_s, {250, 80});
        QCOMPARE(fitted.lineCount(), 1);
        QVERIFY(fitted.scale() < 1);
        QVERIFY(fitted.width() <= 250.01);
    }

    void wordTooLongAtLeastSizeIsBroken()
    {
        const FittedText fitted = block(QString(60, u'W'));
        QCOMPARE(fitted.scale(), 0.5);
        QVERIFY(!fitted.isElided());
        QVERIFY(fitted.lineCount() > 1);
        QVERIFY(fitted.width() <= 300.01);
    }

    void veryLongTextIsElidedAtHalfSize_data()
    {
        rows<QString>({"text"}, {{"words", u"Special joint meeting of zoning "_s.repeated(10).left(300)},
                                 {"one token", QString(300, u'W')},
                                 {"Chinese", u"市議會會議記錄"_s.repeated(43).left(300)},
                                 {"Arabic", u"اجتماع مجلس المدينة "_s.repeated(30).left(500)},
                                 {"emoji", u"\U0001F6A2"_s.repeated(150)},
                                 {"a million", u"minutes "_s.repeated(125000)}});
    }

    void veryLongTextIsElidedAtHalfSize()
    {
        QFETCH(QString, text);
        const FittedText fitted = block(text);
        QCOMPARE(fitted.scale(), 0.5);
        QVERIFY(fitted.isElided());
        QCOMPARE(fitted.lineCount(), int(80 / (lineHeight() / 2)));
        QVERIFY(fitted.width() <= 301);
    }

    void lineBreaksAndControlCharactersBecomeOneSpace()
    {
        const FittedText plain = block(u"Budget line two three"_s);
        const FittedText odd = block(u"\n Budget\r\nline\u0001\u0007two\u2028\tthree\u0000"_s);
        QVERIFY(!ink(draw(plain)).isEmpty());
        QCOMPARE(draw(odd), draw(plain));
    }

    void nothingIsDrawnOutsideGivenArea_data()
    {
        rows<QString>({"text"}, {{"short", u"Jy"_s},
                                 {"long", u"Special joint meeting of zoning "_s.repeated(10)},
                                 {"one token", QString(300, u'W')},
                                 {"Hebrew", u"ישיבת מועצת העיר"_s.repeated(12)},
                                 {"Chinese", u"市議會會議記錄"_s.repeated(43)},
                                 {"emoji", u"\U0001F6A2"_s.repeated(150)}});
    }

    void nothingIsDrawnOutsideGivenArea()
    {
        QFETCH(QString, text);
        const QRect drawnArea = ink(draw(block(text)));
        QVERIFY(!drawnArea.isEmpty());
        // The painting starts at (10, 10). A glyph may exceed its own box by one pixel.
        QVERIFY(QRect(9, 9, 302, 82).contains(drawnArea));
    }

    void emptyTextHasNoSize()
    {
        for (const QString& text : {QString(), u" \n"_s}) {
            const FittedText line = FittedText::line(text, titleFont(), 300, 0.5);
            QCOMPARE(line.width(), 0.0);
            QCOMPARE(line.scale(), 1.0);
            QVERIFY(ink(draw(line)).isEmpty());
            QCOMPARE(block(text).height(), 0.0);
        }
    }

private:
    static QFont titleFont() { return Typography::standard(26, QFont::Black); }
    static double lineHeight() { return QFontMetricsF(titleFont()).height(); }

    static FittedText block(const QString& text, QSizeF area = {300, 80})
    {
        return FittedText::block(text, titleFont(), area, 0.5);
    }
};

QUILLMERE_TEST(FittedTextTest, QGuiApplication)

} // namespace quillmere

#include "FittedTextTest.moc"
