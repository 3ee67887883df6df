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

void showShadow(CountingShadow& shadow, QQuickItem* parent, QPointF at)
{
    shadow.setSize({100, 60});
    shadow.setSpread(20);
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
    void equalShadowsArePaintedOnce_data();
    void equalShadowsArePaintedOnce();
    void differentShadowsArePaintedSeparately_data();
    void differentShadowsArePaintedSeparately();
    void sharedShadowIsDrawnAtItsPosition();
    void newShadowReusesPictureOfDestroyedOne();
    void unusedPicturesAreKeptUpToLimit();
    void allVisibleShadowsAreShared();
    void equalVeneersArePaintedOnceAtSamePixelOffset_data();
    void equalVeneersArePaintedOnceAtSamePixelOffset();
    void unusedVeneerIsReleased();
};

void SharedArtTest::equalShadowsArePaintedOnce_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("720p") << QSize(1280, 720);
    QTest::newRow("1080p") << QSize(1920, 1080);
    QTest::newRow("2160p") << QSize(3840, 2160);
}

void SharedArtTest::equalShadowsArePaintedOnce()
{
    QFETCH(QSize, size);
    TestScreen fixture(size);
    QQuickItem* canvas = fixture.load(u"Canvas {}"_s);
    CountingShadow::paintings = 0;
    std::array<CountingShadow, 6> shadows;
    for (size_t i = 0; i < shadows.size(); ++i)
        showShadow(shadows[i], canvas,
                   {100 + 130.4 * double(i), 90 + 0.3 * double(i)}); // another fraction of a pixel each
    fixture.waitUntilIdle();
    QCOMPARE(CountingShadow::paintings, 1);
}

void SharedArtTest::differentShadowsArePaintedSeparately_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("colour") << QByteArray("color") << QVariant(QColor(Qt::red));
    QTest::newRow("opacity") << QByteArray("color") << QVariant(QColor(0, 0, 0, 100));
    QTest::newRow("spread") << QByteArray("spread") << QVariant(21);
    QTest::newRow("radius") << QByteArray("radius") << QVariant(11);
    QTest::newRow("width") << QByteArray("width") << QVariant(101);
    QTest::newRow("scale") << QByteArray("scale") << QVariant(1.25);
}

void SharedArtTest::differentShadowsArePaintedSeparately()
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

void SharedArtTest::sharedShadowIsDrawnAtItsPosition()
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

void SharedArtTest::newShadowReusesPictureOfDestroyedOne()
{
    TestScreen fixture({600, 300});
    QQuickItem* root = fixture.load(u"Item {}"_s);
    {
        CountingShadow first;
        showShadow(first, root, {50, 50});
        fixture.waitUntilIdle();
    }
    CountingShadow::paintings = 0;
    CountingShadow second;
    showShadow(second, root, {200, 50});
    fixture.waitUntilIdle();
    QCOMPARE(CountingShadow::paintings, 0);
}

void SharedArtTest::unusedPicturesAreKeptUpToLimit()
{
    TestScreen fixture({600, 300});
    QQuickItem* root = fixture.load(u"Item {}"_s);
    const auto show = [&](int spread) {
        CountingShadow shadow;
        showShadow(shadow, root, {50, 50});
        shadow.setSpread(spread);
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

void SharedArtTest::allVisibleShadowsAreShared()
{
    TestScreen fixture({1920, 300});
    QQuickItem* root = fixture.load(u"Item {}"_s);
    std::array<CountingShadow, 12> shadows;
    std::array<CountingShadow, 12> others;
    for (size_t i = 0; i < shadows.size(); ++i) {
        showShadow(shadows[i], root, {150.0 * double(i), 20});
        shadows[i].setSpread(10 + double(i));
    }
    fixture.waitUntilIdle();
    CountingShadow::paintings = 0;
    for (size_t i = 0; i < others.size(); ++i) {
        showShadow(others[i], root, {150.0 * double(i), 160});
        others[i].setSpread(10 + double(i));
    }
    fixture.waitUntilIdle();
    QCOMPARE(CountingShadow::paintings, 0);
}

void SharedArtTest::equalVeneersArePaintedOnceAtSamePixelOffset_data()
{
    QTest::addColumn<QPointF>("at");
    QTest::addColumn<int>("paintings");
    QTest::newRow("same position") << QPointF(0, 0) << 1;
    QTest::newRow("shifted by whole pixels") << QPointF(12, 7) << 1;
    QTest::newRow("shifted by half a pixel") << QPointF(0.5, 0) << 2;
}

void SharedArtTest::equalVeneersArePaintedOnceAtSamePixelOffset()
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

void SharedArtTest::unusedVeneerIsReleased()
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

QUILLMERE_TEST(SharedArtTest, QGuiApplication)

} // namespace quillmere

#include "SharedArtTest.moc"
