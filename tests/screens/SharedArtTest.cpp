#include "Rows.h"
#include "SoftShadow.h"
#include "TestMain.h"
#include "TestScreen.h"
#include "VeneerBackground.h"

#include <QTest>

#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

/** A shadow that counts the paintings of all objects of its class. */
class CountingShadow : public SoftShadow
{
public:
    static inline int paintings = 0;

    void paint(QPainter& painter, const QSizeF& size) const override
    {
        ++paintings;
        SoftShadow::paint(painter, size);
    }
};

/** A veneer that counts the paintings of all objects of its class. */
class CountingVeneer : public VeneerBackground
{
public:
    static inline int paintings = 0;

    CountingVeneer(QQuickItem* parent, QPointF at)
    {
        setSize({1200, 700}); // larger than any picture that is kept while not shown
        setPosition(at);
        setParentItem(parent);
    }

    void paint(QPainter& painter, const QSizeF& size) const override
    {
        ++paintings;
        VeneerBackground::paint(painter, size);
    }
};

void showShadow(CountingShadow& shadow, QQuickItem* parent, QPointF at, double spread = 20)
{
    shadow.setSize({100, 60});
    shadow.setSpread(spread);
    shadow.setRadius(10);
    shadow.setPosition(at);
    shadow.setParentItem(parent);
}

int difference(const QImage& one, const QImage& other)
{
    int largest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            largest = std::max(largest, std::abs(qRed(one.pixel(x, y)) - qRed(other.pixel(x, y))));
    }
    return largest;
}

} // namespace

/** Which painted art shares its picture, and how long the picture is kept. */
class SharedArtTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalShadowsArePaintedOnce_data() { rowsOfDisplaySizes(); }

    void equalShadowsArePaintedOnce()
    {
        QFETCH(QSize, size);
        TestScreen fixture(size);
        QQuickItem* canvas = fixture.load(u"Canvas {}"_s);
        CountingShadow::paintings = 0;
        std::array<CountingShadow, 6> shadows;
        // Each at another fraction of a pixel.
        for (size_t i = 0; i < shadows.size(); ++i)
            showShadow(shadows[i], canvas, {100 + 130.4 * double(i), 90 + 0.3 * double(i)});
        fixture.waitUntilIdle();
        QCOMPARE(CountingShadow::paintings, 1);
    }

    void differentShadowsArePaintedSeparately_data()
    {
        rows<QByteArray, QVariant>({"property", "value"}, {{"colour", "color", QVariant(QColor(Qt::red))},
                                                           {"opacity", "color", QVariant(QColor(0, 0, 0, 100))},
                                                           {"spread", "spread", QVariant(21)},
                                                           {"radius", "radius", QVariant(11)},
                                                           {"width", "width", QVariant(101)},
                                                           {"scale", "scale", QVariant(1.25)}});
    }

    void differentShadowsArePaintedSeparately()
    {
        QFETCH(QByteArray, property);
        QFETCH(QVariant, value);
        TestScreen fixture({600, 300});
        QQuickItem* root = fixture.load(u"Item {}"_s);
        CountingShadow one;
        showShadow(one, root, {50, 50});
        fixture.waitUntilIdle();
        CountingShadow::paintings = 0;
        CountingShadow other;
        other.setProperty(property, value);
        showShadow(other, root, {300, 50});
        other.setProperty(property, value);
        fixture.waitUntilIdle();
        QCOMPARE(CountingShadow::paintings, 1);
    }

    void sharedShadowIsDrawnAtItsPosition()
    {
        const auto shot = [](double x) {
            TestScreen fixture({300, 200});
            QQuickItem* root = fixture.load(u"Item { Rectangle { color: 'white'; width: 300; height: 200 } }"_s);
            CountingShadow shadow;
            showShadow(shadow, root, {x, 60});
            return fixture.picture();
        };
        const QImage onGrid = shot(80);
        QCOMPARE(shot(80.3), onGrid);
        QCOMPARE(shot(79.8), onGrid);
        QCOMPARE(shot(80.6).copy(1, 0, 299, 200), onGrid.copy(0, 0, 299, 200));
        // Without this, the comparisons above would also pass if no shadow were drawn.
        QVERIFY(difference(onGrid, shot(120)) > 100);
    }

    void unusedPicturesAreKeptUpToLimit()
    {
        TestScreen fixture({600, 300});
        QQuickItem* root = fixture.load(u"Item {}"_s);
        const auto show = [&](int spread) {
            CountingShadow shadow;
            showShadow(shadow, root, {50, 50}, spread);
            fixture.waitForFrame();
        };
        show(10);
        for (int spread = 30; spread < 70; ++spread)
            show(spread);
        CountingShadow::paintings = 0;
        show(69);
        QCOMPARE(CountingShadow::paintings, 0);
        show(10);
        QCOMPARE(CountingShadow::paintings, 1);
    }

    void allVisibleShadowsAreShared()
    {
        TestScreen fixture({1920, 300});
        QQuickItem* root = fixture.load(u"Item {}"_s);
        const auto show = [&](std::array<CountingShadow, 12>& shadows, double y) {
            for (size_t i = 0; i < shadows.size(); ++i)
                showShadow(shadows[i], root, {150.0 * double(i), y}, 10 + double(i));
            fixture.waitUntilIdle();
        };
        std::array<CountingShadow, 12> shadows;
        std::array<CountingShadow, 12> others;
        show(shadows, 20);
        CountingShadow::paintings = 0;
        show(others, 160);
        QCOMPARE(CountingShadow::paintings, 0);
    }

    void equalVeneersArePaintedOnceAtSamePixelOffset_data()
    {
        rows<QPointF, int>({"at", "paintings"}, {{"same position", {0, 0}, 1},
                                                 {"shifted by whole pixels", {12, 7}, 1},
                                                 {"shifted by half a pixel", {0.5, 0}, 2}});
    }

    void equalVeneersArePaintedOnceAtSamePixelOffset()
    {
        QFETCH(QPointF, at);
        QFETCH(int, paintings);
        TestScreen fixture({1300, 800});
        QQuickItem* root = fixture.load(u"Item {}"_s);
        CountingVeneer::paintings = 0;
        const CountingVeneer first(root, {0, 0});
        fixture.waitUntilIdle();
        const CountingVeneer second(root, at);
        fixture.waitUntilIdle();
        QCOMPARE(CountingVeneer::paintings, paintings);
        QCOMPARE(first.picture() == second.picture(), paintings == 1);
    }

    void unusedVeneerIsReleased()
    {
        TestScreen fixture({1300, 800});
        QQuickItem* root = fixture.load(u"Item {}"_s);
        std::weak_ptr<const QImage> picture;
        {
            const CountingVeneer veneer(root, {0, 0});
            fixture.waitUntilIdle();
            picture = veneer.picture();
            QVERIFY(!picture.expired());
        }
        QVERIFY(picture.expired());
    }
};

QUILLMERE_TEST(SharedArtTest, QGuiApplication)

} // namespace quillmere

#include "SharedArtTest.moc"
