#include "Spinner.h"
#include "DrawnArea.h"
#include "Stage.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;

/** The wheel that says that something is under way, and what its turning costs. */
class SpinnerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSpokeFollowsTheOtherTenTimesASecond();
    void theLeaderIsBrightestAndTheSpokesBehindItFade();
    void aHiddenSpinnerRests();
    void aSpinnerRepaintsOnlyItself();
};

namespace {

Spinner* put(Stage& stage, const QString& qml)
{
    QQuickItem* root = stage.put(qml);
    return qobject_cast<Spinner*>(Stage::first(root, "Spinner"));
}

} // namespace

void SpinnerTest::aSpokeFollowsTheOtherTenTimesASecond()
{
    Stage stage({200, 200});
    const Spinner* spinner = put(stage, u"Item { Spinner { x: 50; y: 50 } }"_s);
    QVERIFY(spinner);
    QTRY_COMPARE(spinner->leader(), 0);
    QElapsedTimer turning;
    turning.start();
    for (int step = 1; step <= Spinner::spokes; ++step)
        QTRY_COMPARE(spinner->leader(), step % Spinner::spokes);
    const qint64 turn = turning.elapsed();
    QVERIFY2(turn > 1000 && turn < 2000, qPrintable(QString::number(turn)));
}

void SpinnerTest::theLeaderIsBrightestAndTheSpokesBehindItFade()
{
    Stage stage({200, 200});
    const Spinner* spinner = put(stage, u"Item { Spinner { width: 200; height: 200; color: 'red' } }"_s);
    QTRY_COMPARE(spinner->leader(), 3);
    stage.waitForFrame();
    const QImage picture = stage.window().grabWindow();
    QCOMPARE(spinner->leader(), 3);
    const auto red = [&](int x, int y) { return picture.pixelColor(x, y).red(); };
    QVERIFY(red(170, 100) > 245);         // the leader, at the right
    QVERIFY(red(100, 30) > red(30, 100)); // three steps behind, and six more
    QVERIFY(red(170, 100) > red(100, 30) + 50);
    QVERIFY(red(30, 100) > 20); // the faintest can still be seen
    QCOMPARE(picture.pixelColor(100, 100), QColor(Qt::black));
}

void SpinnerTest::aHiddenSpinnerRests()
{
    Stage stage({200, 200});
    Spinner* spinner = put(stage, u"Item { Item { Spinner {} } }"_s);
    QVERIFY(spinner->isTurning());
    spinner->parentItem()->setVisible(false);
    QVERIFY(!spinner->isTurning());
    stage.settle();
    const int frames = stage.frames();
    QTest::qWait(500);
    QCOMPARE(stage.frames(), frames);
    spinner->parentItem()->setVisible(true);
    QVERIFY(spinner->isTurning());
    spinner->parentItem()->setParentItem(nullptr);
    QVERIFY(!spinner->isTurning());
}

void SpinnerTest::aSpinnerRepaintsOnlyItself()
{
    Stage stage({800, 600});
    const Spinner* spinner = put(stage, u"Rectangle { width: 800; height: 600; color: 'navy'; Text { text: 'Beside' } "
                                        "Spinner { x: 300; y: 200; scale: 1.6 } }"_s);
    QTRY_COMPARE(spinner->leader(), 1);
    DrawnArea drawn(XConnection::open());
    QTRY_COMPARE(spinner->leader(), 0);
    const QRectF area = drawn.take();
    const QRectF wheel = Stage::area(spinner);
    QVERIFY2(area.intersects(wheel), "the wheel is not drawn");
    QVERIFY2(wheel.marginsAdded({3, 3, 3, 3}).contains(area),
             qPrintable(u"%1 x %2 pixels"_s.arg(area.width()).arg(area.height())));
}

QTEST_MAIN(SpinnerTest)
#include "SpinnerTest.moc"
