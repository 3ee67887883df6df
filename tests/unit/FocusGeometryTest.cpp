#include "FocusGeometry.h"
#include "Rows.h"
#include "TestMain.h"

#include <QTest>

namespace quillmere {

using FocusGeometry::Beam;
using Rects = QList<QRectF>;

class FocusGeometryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nextTargetIsNearestInDirection_data()
    {
        const QRectF right(300, 100, 100, 100);
        const QRectF left(-100, 100, 100, 100);
        const QRectF above(100, -100, 100, 100);
        const QRectF below(100, 300, 100, 100);
        const Rects allSides{right, left, above, below};
        const QRectF far(600, 100, 100, 100);
        const QRectF off(300, 150, 100, 100);
        const QRectF offAndNearer(299.6, 150, 100, 100);
        const QRectF touching(200, 100, 100, 100);
        const QRectF atTheBeamsEdge(300, 200, 100, 100);
        rows<int, Rects, Beam, int>(
            {"arrow", "targets", "beam", "next"},
            {{"right", Qt::Key_Right, allSides, Beam::Needed, 0},
             {"left", Qt::Key_Left, allSides, Beam::Needed, 1},
             {"up", Qt::Key_Up, allSides, Beam::Needed, 2},
             {"down", Qt::Key_Down, allSides, Beam::Needed, 3},
             {"nothing in that direction", Qt::Key_Right, {left, above, below}, Beam::Needed, -1},
             {"nearer of two", Qt::Key_Right, {far, right}, Beam::Needed, 1},
             {"at equal distance the aligned one", Qt::Key_Right, {off, right}, Beam::Needed, 1},
             {"distances equal but for a fraction", Qt::Key_Right, {offAndNearer, right}, Beam::Needed, 1},
             {"distance counts more than alignment", Qt::Key_Right, {right.translated(2, 0), off}, Beam::Needed, 1},
             {"side by side", Qt::Key_Right, {touching}, Beam::Needed, 0},
             {"half a point of overlap", Qt::Key_Right, {touching.translated(-0.5, 0)}, Beam::Needed, 0},
             {"a point of overlap", Qt::Key_Right, {touching.translated(-1, 0)}, Beam::Needed, -1},
             {"outside the beam", Qt::Key_Right, {atTheBeamsEdge}, Beam::Needed, -1},
             {"without a beam", Qt::Key_Right, {atTheBeamsEdge}, Beam::Free, 0},
             {"one point inside the beam", Qt::Key_Right, {atTheBeamsEdge.translated(0, -1)}, Beam::Needed, 0}});
    }
    void nextTargetIsNearestInDirection()
    {
        QFETCH(int, arrow);
        QFETCH(Rects, targets);
        QFETCH(Beam, beam);
        QTEST(int(FocusGeometry::next({100, 100, 100, 100}, targets, arrow, beam)), "next");
    }

    void closestTargetHasNearestCentre()
    {
        const QRectF from(100, 0, 100, 100);
        QCOMPARE(int(FocusGeometry::closest(from, {{0, 0, 90, 100}, {210, 0, 100, 100}, {0, 200, 400, 400}})), 0);
        QCOMPARE(int(FocusGeometry::closest(from, {{0, 0, 10, 100}, {210, 0, 100, 100}, {0, 200, 400, 400}})), 1);
    }

    void topmostLeadingTargetIsFirstOfTopLine()
    {
        const QRectF small(0, 10, 80, 40);
        const QRectF tall(200, 0, 80, 60);
        const QRectF next(0, 70, 80, 60);
        QCOMPARE(int(FocusGeometry::topmostLeading({next, tall, small})), 2);
        QCOMPARE(int(FocusGeometry::topmostLeading({next, tall})), 1);
    }

    void noTargetIsFoundAmongNone()
    {
        QCOMPARE(int(FocusGeometry::next({0, 0, 1, 1}, {}, Qt::Key_Up, Beam::Free)), -1);
        QCOMPARE(int(FocusGeometry::closest({0, 0, 1, 1}, {})), -1);
        QCOMPARE(int(FocusGeometry::topmostLeading({})), -1);
    }
};

QUILLMERE_TEST(FocusGeometryTest, QGuiApplication)

} // namespace quillmere

#include "FocusGeometryTest.moc"
