#include "TestMain.h"
#include "TestScreen.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

/** Share, 0 to 1, of the picture that is not black. */
double weight(const QImage& picture)
{
    qint64 sum = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            sum += qRed(picture.pixel(x, y));
    }
    return double(sum) / 255 / picture.width() / picture.height();
}

QImage shot(const QString& name, int side, const QString& color = u"white"_s)
{
    TestScreen fixture({side, side});
    fixture.load(u"Item { Icon { width: %1; height: %1; name: Icon.%2; color: '%3' } }"_s.arg(side).arg(name, color));
    return fixture.picture();
}

} // namespace

/** The icons beside the texts of buttons. */
class IconTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void iconHasSameWeightAtEverySize_data();
    void iconHasSameWeightAtEverySize();
    void iconNoneDrawsNothing();
    void iconIsDrawnInItsColor();
    void playTrianglePointsRight();
    void startOverArrowPointsAnticlockwise();
    void seekIconsPointInTheirDirection();
    void linesOfTextIconAreSharp_data();
    void linesOfTextIconAreSharp();
};

void IconTest::iconHasSameWeightAtEverySize_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"MagnifyingGlass", "Play", "StartOver", "TextLines", "Pause", "FastForward", "Rewind"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void IconTest::iconHasSameWeightAtEverySize()
{
    QFETCH(QString, name);
    const double large = weight(shot(name, 400));
    QVERIFY2(large > 0.15 && large < 0.5, qPrintable(QString::number(large)));
    for (const int side : {17, 19, 26, 28, 52, 56}) {
        const double small = weight(shot(name, side));
        QVERIFY2(std::abs(small - large) < 0.05, qPrintable(u"%1 of %2 at %3"_s.arg(small).arg(large).arg(side)));
    }
}

void IconTest::iconNoneDrawsNothing()
{
    QCOMPARE(weight(shot(u"None"_s, 40)), 0.0);
}

void IconTest::iconIsDrawnInItsColor()
{
    const QImage picture = shot(u"Play"_s, 100, u"lime"_s);
    QCOMPARE(picture.pixelColor(45, 50), QColor(u"lime"_s));
}

void IconTest::playTrianglePointsRight()
{
    const QImage picture = shot(u"Play"_s, 100);
    const auto lit = [&](int x, int y) { return qRed(picture.pixel(x, y)) > 128; };
    for (const int y : {20, 50, 80})
        QVERIFY(lit(22, y));
    QVERIFY(lit(85, 50));
    QVERIFY(!lit(85, 30));
    QVERIFY(!lit(85, 70));
}

void IconTest::startOverArrowPointsAnticlockwise()
{
    // A ring with a gap before the arrow's tip, which shows the direction.
    const QImage picture = shot(u"StartOver"_s, 100);
    const auto lit = [&](int x, int y) { return qRed(picture.pixel(x, y)) > 128; };
    QVERIFY(lit(86, 54));
    QVERIFY(lit(50, 90));
    QVERIFY(lit(14, 54));
    QVERIFY(!lit(20, 30));
    QVERIFY(lit(80, 34));
    QVERIFY(lit(30, 18));
    // The arrow's head is wider at its back than at its tip.
    QVERIFY(lit(47, 5));
    QVERIFY(!lit(30, 8));
}

void IconTest::seekIconsPointInTheirDirection()
{
    for (const QImage& picture : {shot(u"FastForward"_s, 100), shot(u"Rewind"_s, 100).mirrored(true, false)}) {
        const auto lit = [&](int x, int y) { return qRed(picture.pixel(x, y)) > 128; };
        for (const int left : {6, 53}) {
            QVERIFY(lit(left, 25) && lit(left, 75));
            QVERIFY(lit(left + 36, 50) && !lit(left + 36, 25) && !lit(left + 36, 75));
        }
    }
}

void IconTest::linesOfTextIconAreSharp_data()
{
    QTest::addColumn<int>("side");
    for (const int side : {17, 19, 26, 28, 56})
        QTest::addRow("%d", side) << side;
}

void IconTest::linesOfTextIconAreSharp()
{
    QFETCH(int, side);
    const QImage picture = shot(u"TextLines"_s, side);
    int lines = 0;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const int seen = qRed(picture.pixel(x, y));
            QVERIFY2(seen <= 2 || seen >= 253, qPrintable(u"%1 at %2, %3"_s.arg(seen).arg(x).arg(y)));
        }
        const int column = side / 5;
        lines += qRed(picture.pixel(column, y)) > 128 && (y == 0 || qRed(picture.pixel(column, y - 1)) < 128);
    }
    QCOMPARE(lines, 4);
}

QUILLMERE_TEST(IconTest, QGuiApplication)

} // namespace quillmere

#include "IconTest.moc"
