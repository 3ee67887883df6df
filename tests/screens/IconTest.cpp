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

bool isLit(const QImage& picture, int x, int y)
{
    return qRed(picture.pixel(x, y)) > 128;
}

} // namespace

/** The icons beside the texts of buttons. */
class IconTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void iconHasSameWeightAtEverySize_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name : {"MagnifyingGlass", "Play", "StartOver", "TextLines", "Pause", "FastForward", "Rewind"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void iconHasSameWeightAtEverySize()
    {
        QFETCH(QString, name);
        const double large = weight(shot(name, 400));
        QVERIFY2(large > 0.15 && large < 0.5, qPrintable(QString::number(large)));
        for (const int side : {17, 19, 26, 28, 52, 56}) {
            const double small = weight(shot(name, side));
            QVERIFY2(std::abs(small - large) < 0.05, qPrintable(u"%1 of %2 at %3"_s.arg(small).arg(large).arg(side)));
        }
    }

    void iconNoneDrawsNothing() { QCOMPARE(weight(shot(u"None"_s, 40)), 0.0); }

    void iconIsDrawnInItsColor() { QCOMPARE(shot(u"Play"_s, 100, u"lime"_s).pixelColor(45, 50), QColor(u"lime"_s)); }

    void playTrianglePointsRight()
    {
        const QImage picture = shot(u"Play"_s, 100);
        for (const int y : {20, 50, 80})
            QVERIFY(isLit(picture, 22, y));
        QVERIFY(isLit(picture, 85, 50));
        QVERIFY(!isLit(picture, 85, 30));
        QVERIFY(!isLit(picture, 85, 70));
    }

    void startOverArrowPointsAnticlockwise()
    {
        // A ring with a gap before the arrow's tip, which shows the direction.
        const QImage picture = shot(u"StartOver"_s, 100);
        QVERIFY(isLit(picture, 86, 54));
        QVERIFY(isLit(picture, 50, 90));
        QVERIFY(isLit(picture, 14, 54));
        QVERIFY(!isLit(picture, 20, 30));
        QVERIFY(isLit(picture, 80, 34));
        QVERIFY(isLit(picture, 30, 18));
        // The arrow's head is wider at its back than at its tip.
        QVERIFY(isLit(picture, 47, 5));
        QVERIFY(!isLit(picture, 30, 8));
    }

    void seekIconsPointInTheirDirection()
    {
        for (const QImage& picture : {shot(u"FastForward"_s, 100), shot(u"Rewind"_s, 100).mirrored(true, false)}) {
            for (const int left : {6, 53}) {
                QVERIFY(isLit(picture, left, 25) && isLit(picture, left, 75));
                QVERIFY(isLit(picture, left + 36, 50) && !isLit(picture, left + 36, 25) &&
                        !isLit(picture, left + 36, 75));
            }
        }
    }

    void linesOfTextIconAreSharp_data()
    {
        QTest::addColumn<int>("side");
        for (const int side : {17, 19, 26, 28, 56})
            QTest::addRow("%d", side) << side;
    }

    void linesOfTextIconAreSharp()
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
            lines += isLit(picture, column, y) && (y == 0 || !isLit(picture, column, y - 1));
        }
        QCOMPARE(lines, 4);
    }
};

QUILLMERE_TEST(IconTest, QGuiApplication)

} // namespace quillmere

#include "IconTest.moc"
