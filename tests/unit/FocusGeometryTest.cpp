#include "FocusGeometry.h"
#include "TestMain.h"

#include <QTest>

namespace quillmere {

using FocusGeometry::Beam;

class FocusGeometryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nextTargetIsNearestInDirection_data();
    void nextTargetIsNearestInDirection();
    void closestTargetHasNearestCentre();
    void topmostLeadingTargetIsFirstOfTopLine();
    void noTargetIsFoundAmongNone();
};

void FocusGeometryTest::nextTargetIsNearestInDirection_data()
{
    QTest::addColumn<int>("arrow");
    QTest::addColumn<QList<QRectF>>("targets");
    QTest::addColumn<Beam>("beam");
    QTest::addColumn<int>("next");

    using Rects = QList<QRectF>;
    const QRectF right(300, 100, 100, 100);
    const QRectF left(-100, 100, 100, 100);
    const QRectF above(100, -100, 100, 100);
    const QRectF below(100, 300, 100, 100);
    const Rects allSides{right, left, above, below};
    QTest::newRow("right") << int(Qt::Key_Right) << allSides << Beam::Needed << 0;
    QTest::newRow("left") << int(Qt::Key_Left) << allSides << Beam::Needed << 1;
    QTest::newRow("up") << int(Qt::Key_Up) << allSides << Beam::Needed << 2;
    QTest::newRow("down") << int(Qt::Key_Down) << allSides << Beam::Needed << 3;
    QTest::newRow("nothing in that direction") << int(Qt::Key_Right) << Rects{left, above, below} << Beam::Needed << -1;

    const QRectF far(600, 100, 100, 100);
    QTest::newRow("nearer of two") << int(Qt::Key_Right) << Rects{far, right} << Beam::Needed << 1;
    const QRectF off(300, 150, 100, 100);
    QTest::newRow("at equal distance the aligned one") << int(Qt::Key_Right) << Rects{off, right} << Beam::Needed << 1;
    const QRectF offAndNearer(299.6, 150, 100, 100);
    QTest::newRow("distances that differ by a fraction are equal")
        << int(Qt::Key_Right) << Rects{offAndNearer, right} << Beam::Needed << 1;
    QTest::newRow("distance counts more than alignment")
        << int(Qt::Key_Right) << Rects{right.translated(2, 0), off} << Beam::Needed << 1;

    const QRectF touching(200, 100, 100, 100);
    QTest::newRow("side by side") << int(Qt::Key_Right) << Rects{touching} << Beam::Needed << 0;
    QTest::newRow("half a point of overlap")
        << int(Qt::Key_Right) << Rects{touching.translated(-0.5, 0)} << Beam::Needed << 0;
    QTest::newRow("a point of overlap") << int(Qt::Key_Right) << Rects{touching.translated(-1, 0)} << Beam::Needed
                                        << -1;

    const QRectF atTheBeamsEdge(300, 200, 100, 100);
    QTest::newRow("outside the beam") << int(Qt::Key_Right) << Rects{atTheBeamsEdge} << Beam::Needed << -1;
    QTest::newRow("without a beam") << int(Qt::Key_Right) << Rects{atTheBeamsEdge} << Beam::Free << 0;
    QTest::newRow("one point inside the beam")
        << int(Qt::Key_Right) << Rects{atTheBeamsEdge.translated(0, -1)} << Beam::Needed << 0;
}

void FocusGeometryTest::nextTargetIsNearestInDirection()
{
    QFETCH(int, arrow);
    QFETCH(QList<QRectF>, targets);
    QFETCH(Beam, beam);
    QFETCH(int, next);
    QCOMPARE(int(FocusGeometry::next({100, 100, 100, 100}, targets, arrow, beam)), next);
}

void FocusGeometryTest::closestTargetHasNearestCentre()
{
    const QRectF from(100, 0, 100, 100);
    QCOMPARE(int(FocusGeometry::closest(from, {{0, 0, 90, 100}, {210, 0, 100, 100}, {0, 200, 400, 400}})), 0);
    QCOMPARE(int(FocusGeometry::closest(from, {{0, 0, 10, 100}, {210, 0, 100, 100}, {0, 200, 400, 400}})), 1);
}

void FocusGeometryTest::topmostLeadingTargetIsFirstOfTopLine()
{
    const QRectF small(0, 10, 80, 40);
    const QRectF tall(200, 0, 80, 60);
    const QRectF next(0, 70, 80, 60);
    QCOMPARE(int(FocusGeometry::topmostLeading({next, tall, small})), 2);
    QCOMPARE(int(FocusGeometry::topmostLeading({next, tall})), 1);
}

void FocusGeometryTest::noTargetIsFoundAmongNone()
{
    QCOMPARE(int(FocusGeometry::next({0, 0, 1, 1}, {}, Qt::Key_Up, Beam::Free)), -1);
    QCOMPARE(int(FocusGeometry::closest({0, 0, 1, 1}, {})), -1);
    QCOMPARE(int(FocusGeometry::topmostLeading({})), -1);
}

QUILLMERE_TEST(FocusGeometryTest, QGuiApplication)

} // namespace quillmere

#include "FocusGeometryTest.moc"
