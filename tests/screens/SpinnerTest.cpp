#include "Spinner.h"
#include "DrawnArea.h"
#include "FrontFixture.h"
#include "TestMain.h"

#include <QElapsedTimer>

namespace quillmere {

namespace {

Spinner* put(TestScreen& fixture, const QString& qml)
{
    return qobject_cast<Spinner*>(TestScreen::first(fixture.load(qml), "Spinner"));
}

} // namespace

/** The spinner: its animation, and what it repaints. */
class SpinnerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void brightestSpokeAdvancesEveryTenthOfSecond()
    {
        TestScreen fixture({200, 200});
        const Spinner* spinner = put(fixture, u"Item { Spinner { x: 50; y: 50 } }"_s);
        QVERIFY(spinner);
        QTRY_COMPARE(spinner->brightestSpoke(), 0);
        QElapsedTimer timer;
        timer.start();
        for (int step = 1; step <= Spinner::spokes; ++step)
            QTRY_COMPARE(spinner->brightestSpoke(), step % Spinner::spokes);
        const qint64 turn = timer.elapsed();
        QVERIFY2(turn > 1000 && turn < 2000, qPrintable(QString::number(turn)));
    }

    void spokesFadeBehindBrightestOne()
    {
        TestScreen fixture({200, 200});
        const Spinner* spinner = put(fixture, u"Item { Spinner { width: 200; height: 200; color: 'red' } }"_s);
        QTRY_COMPARE(spinner->brightestSpoke(), 3);
        fixture.waitForFrame();
        const QImage picture = fixture.window().grabWindow();
        QCOMPARE(spinner->brightestSpoke(), 3);
        const auto red = [&](int x, int y) { return picture.pixelColor(x, y).red(); };
        QVERIFY(red(170, 100) > 245);         // the brightest spoke, on the right
        QVERIFY(red(100, 30) > red(30, 100)); // three and six steps behind it
        QVERIFY(red(170, 100) > red(100, 30) + 50);
        QVERIFY(red(30, 100) > 20); // the faintest spoke is still visible
        QCOMPARE(picture.pixelColor(100, 100), QColor(Qt::black));
    }

    void hiddenSpinnerStops()
    {
        TestScreen fixture({200, 200});
        Spinner* spinner = put(fixture, u"Item { Item { Spinner {} } }"_s);
        QVERIFY(spinner->isRunning());
        spinner->parentItem()->setVisible(false);
        QVERIFY(!spinner->isRunning());
        QCOMPARE(fixture.framesAtRest(500), 0);
        spinner->parentItem()->setVisible(true);
        QVERIFY(spinner->isRunning());
        spinner->parentItem()->setParentItem(nullptr);
        QVERIFY(!spinner->isRunning());
    }

    void spinnerRepaintsOnlyItself()
    {
        TestScreen fixture({800, 600});
        const Spinner* spinner =
            put(fixture, u"Rectangle { width: 800; height: 600; color: 'navy'; Text { text: 'Beside' } "
                         "Spinner { x: 300; y: 200; scale: 1.6 } }"_s);
        QTRY_COMPARE(spinner->brightestSpoke(), 1);
        DrawnArea drawn(XConnection::open());
        QTRY_COMPARE(spinner->brightestSpoke(), 0);
        const QRectF area = drawn.take();
        const QRectF spinnerArea = TestScreen::area(spinner);
        QVERIFY2(area.intersects(spinnerArea), "the spinner is not drawn");
        QVERIFY2(spinnerArea.marginsAdded({3, 3, 3, 3}).contains(area),
                 qPrintable(u"%1 x %2 pixels"_s.arg(area.width()).arg(area.height())));
    }
};

QUILLMERE_TEST(SpinnerTest, QGuiApplication)

} // namespace quillmere

#include "SpinnerTest.moc"
