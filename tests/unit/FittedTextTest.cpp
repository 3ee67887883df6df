#include "FittedText.h"
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

constexpr int size = 26;

QFont titleFont()
{
    return Typography::standard(size, QFont::Black);
}

double lineHeight()
{
    return QFontMetricsF(titleFont()).height();
}

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
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

} // namespace

/** Tests texts that shrink to fit an area. */
class FittedTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textThatFitsKeepsSize();
    void lineShrinksToWidth();
    void lineIsElidedAtLeastSize();
    void blockWrapsBeforeItShrinks();
    void blockShrinksUntilLinesFit();
    void blockShrinksRatherThanBreakWord();
    void wordTooLongAtLeastSizeIsBroken();
    void veryLongTextIsElidedAtHalfSize_data();
    void veryLongTextIsElidedAtHalfSize();
    void lineBreaksAndControlCharactersBecomeOneSpace();
    void nothingIsDrawnOutsideGivenArea_data();
    void nothingIsDrawnOutsideGivenArea();
    void emptyTextHasNoSize();
};

void FittedTextTest::textThatFitsKeepsSize()
{
    const FittedText line = FittedText::line(u"Harbor Day"_s, titleFont(), 300, 0.5);
    QCOMPARE(line.scale(), 1.0);
    QVERIFY(!line.isElided());
    QVERIFY(std::abs(line.width() - QFontMetricsF(titleFont()).horizontalAdvance(u"Harbor Day"_s)) < 0.5);
    QCOMPARE(FittedText::block(u"Harbor Day"_s, titleFont(), {300, 80}, 0.5).scale(), 1.0);
}

void FittedTextTest::lineShrinksToWidth()
{
    const double natural = FittedText::line(u"Harbor Day Parade"_s, titleFont(), 1000, 0.5).width();
    const FittedText line = FittedText::line(u"Harbor Day Parade"_s, titleFont(), natural * 0.75, 0.5);
    QVERIFY(std::abs(line.scale() - 0.75) < 0.001);
    QVERIFY(!line.isElided());
    QVERIFY(std::abs(ink(draw(line)).width() - natural * 0.75) < 4);
}

void FittedTextTest::lineIsElidedAtLeastSize()
{
    const FittedText line = FittedText::line(u"Harbor Day Parade and Regatta"_s, titleFont(), 100, 0.6);
    QCOMPARE(line.scale(), 0.6);
    QVERIFY(line.isElided());
    QVERIFY(line.width() <= 100.01);
    QVERIFY(line.width() > 80);
    QCOMPARE(line.lineCount(), 1);
}

void FittedTextTest::blockWrapsBeforeItShrinks()
{
    const FittedText block = FittedText::block(u"City Council Regular Meeting"_s, titleFont(), {300, 80}, 0.5);
    QCOMPARE(block.scale(), 1.0);
    QCOMPARE(block.lineCount(), 2);
    QVERIFY(std::abs(block.height() - 2 * lineHeight()) < 0.01);
}

void FittedTextTest::blockShrinksUntilLinesFit()
{
    const QString title = u"Joint Powers Authority Finance and Administration Committee Meeting of March 5"_s;
    const FittedText block = FittedText::block(title, titleFont(), {300, 80}, 0.5);
    QVERIFY(block.scale() < 1);
    QVERIFY(block.scale() > 0.5);
    QVERIFY(!block.isElided());
    QVERIFY(block.height() <= 80.01);
    // The text does not fit at a slightly larger scale.
    const FittedText larger = FittedText::block(title, titleFont(), {300, 80}, block.scale() + 0.04);
    QVERIFY(larger.isElided());
}

void FittedTextTest::blockShrinksRatherThanBreakWord()
{
    const FittedText block = FittedText::block(u"Intergovernmentalism"_s, titleFont(), {250, 80}, 0.5);
    QCOMPARE(block.lineCount(), 1);
    QVERIFY(block.scale() < 1);
    QVERIFY(block.width() <= 250.01);
}

void FittedTextTest::wordTooLongAtLeastSizeIsBroken()
{
    const FittedText block = FittedText::block(QString(60, u'W'), titleFont(), {300, 80}, 0.5);
    QCOMPARE(block.scale(), 0.5);
    QVERIFY(!block.isElided());
    QVERIFY(block.lineCount() > 1);
    QVERIFY(block.width() <= 300.01);
}

void FittedTextTest::veryLongTextIsElidedAtHalfSize_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("words") << u"Special joint meeting of zoning "_s.repeated(10).left(300);
    QTest::newRow("one token") << QString(300, u'W');
    QTest::newRow("Chinese") << u"市議會會議記錄"_s.repeated(43).left(300);
    QTest::newRow("Arabic") << u"اجتماع مجلس المدينة "_s.repeated(30).left(500);
    QTest::newRow("emoji") << u"\U0001F6A2"_s.repeated(150);
    QTest::newRow("a million") << u"minutes "_s.repeated(125000);
}

void FittedTextTest::veryLongTextIsElidedAtHalfSize()
{
    QFETCH(QString, text);
    const FittedText block = FittedText::block(text, titleFont(), {300, 80}, 0.5);
    QCOMPARE(block.scale(), 0.5);
    QVERIFY(block.isElided());
    QCOMPARE(block.lineCount(), int(80 / (lineHeight() / 2)));
    QVERIFY(block.width() <= 301);
}

void FittedTextTest::lineBreaksAndControlCharactersBecomeOneSpace()
{
    const FittedText plain = FittedText::block(u"Budget line two three"_s, titleFont(), {300, 80}, 0.5);
    const FittedText odd =
        FittedText::block(u"\n Budget\r\nline\u0001\u0007two\u2028\tthree\u0000"_s, titleFont(), {300, 80}, 0.5);
    QVERIFY(!ink(draw(plain)).isEmpty());
    QCOMPARE(draw(odd), draw(plain));
}

void FittedTextTest::nothingIsDrawnOutsideGivenArea_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("short") << u"Jy"_s;
    QTest::newRow("long") << u"Special joint meeting of zoning "_s.repeated(10);
    QTest::newRow("one token") << QString(300, u'W');
    QTest::newRow("Hebrew") << u"ישיבת מועצת העיר"_s.repeated(12);
    QTest::newRow("Chinese") << u"市議會會議記錄"_s.repeated(43);
    QTest::newRow("emoji") << u"\U0001F6A2"_s.repeated(150);
}

void FittedTextTest::nothingIsDrawnOutsideGivenArea()
{
    QFETCH(QString, text);
    const QRect drawnArea = ink(draw(FittedText::block(text, titleFont(), {300, 80}, 0.5)));
    QVERIFY(!drawnArea.isEmpty());
    // The painting starts at (10, 10). A glyph may exceed its own box by one pixel.
    QVERIFY(QRect(9, 9, 302, 82).contains(drawnArea));
}

void FittedTextTest::emptyTextHasNoSize()
{
    for (const QString& text : {QString(), u" \n"_s}) {
        const FittedText line = FittedText::line(text, titleFont(), 300, 0.5);
        QCOMPARE(line.width(), 0.0);
        QCOMPARE(line.scale(), 1.0);
        QVERIFY(ink(draw(line)).isEmpty());
        QCOMPARE(FittedText::block(text, titleFont(), {300, 80}, 0.5).height(), 0.0);
    }
}

QUILLMERE_TEST(FittedTextTest, QGuiApplication)

} // namespace quillmere

#include "FittedTextTest.moc"
