#include "SoftShadow.h"
#include "Stage.h"
#include "VeneerBackground.h"

#include <QTest>

#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/** A shadow that counts how often any of its kind is painted. */
class CountedShadow : public SoftShadow
{
public:
    static inline int paintings = 0;

    void paint(QPainter& painter, const QSizeF& size) const override
    {
        ++paintings;
        SoftShadow::paint(painter, size);
    }
};

/** A veneer that counts how often any of its kind is painted. */
class CountedVeneer : public VeneerBackground
{
public:
    static inline int paintings = 0;

    CountedVeneer(QQuickItem* parent, QPointF at)
    {
        setSize({1200, 700}); // more than is kept unshown
        setPosition(at);
        setParentItem(parent);
    }

    void paint(QPainter& painter, const QSizeF& size) const override
    {
        ++paintings;
        VeneerBackground::paint(painter, size);
    }
};

void place(CountedShadow& shadow, QQuickItem* parent, QPointF at)
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

/** Which painted art shares its picture, and for how long. */
class SharedArtTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalShadowsArePaintedOnce_data();
    void equalShadowsArePaintedOnce();
    void shadowsThatDifferArePaintedEach_data();
    void shadowsThatDifferArePaintedEach();
    void aSharedShadowStandsWhereItBelongs();
    void aShadowThatReturnsIsNotPaintedAgain();
    void onlyAFewSharedPicturesAreKept();
    void manyShadowsThatAreShownAreAllShared();
    void equalVeneersArePaintedOnceIfTheyStandAlike_data();
    void equalVeneersArePaintedOnceIfTheyStandAlike();
    void aVeneerThatNobodyShowsIsReleased();
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
    Stage stage(size);
    QQuickItem* canvas = stage.put(u"Canvas {}"_s);
    CountedShadow::paintings = 0;
    std::array<CountedShadow, 6> shadows;
    for (size_t i = 0; i < shadows.size(); ++i)
        place(shadows[i], canvas, {100 + 130.4 * double(i), 90 + 0.3 * double(i)}); // on other parts of a pixel each
    stage.settle();
    QCOMPARE(CountedShadow::paintings, 1);
}

void SharedArtTest::shadowsThatDifferArePaintedEach_data()
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

void SharedArtTest::shadowsThatDifferArePaintedEach()
{
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);
    Stage stage({600, 300});
    QQuickItem* root = stage.put(u"Item {}"_s);
    CountedShadow one;
    place(one, root, {50, 50});
    stage.settle();
    CountedShadow::paintings = 0;
    CountedShadow other;
    other.setProperty(property, value);
    place(other, root, {300, 50});
    other.setProperty(property, value);
    stage.settle();
    QCOMPARE(CountedShadow::paintings, 1);
}

void SharedArtTest::aSharedShadowStandsWhereItBelongs()
{
    const auto shot = [](double x) {
        Stage stage({300, 200});
        QQuickItem* root = stage.put(u"Item { Rectangle { color: 'white'; width: 300; height: 200 } }"_s);
        CountedShadow shadow;
        place(shadow, root, {x, 60});
        return stage.picture();
    };
    const QImage onGrid = shot(80);
    QCOMPARE(shot(80.3), onGrid);
    QCOMPARE(shot(79.8), onGrid);
    QCOMPARE(shot(80.6).copy(1, 0, 299, 200), onGrid.copy(0, 0, 299, 200));
    // The pictures above would be equal as well if no shadow were there.
    QVERIFY(difference(onGrid, shot(120)) > 100);
}

void SharedArtTest::aShadowThatReturnsIsNotPaintedAgain()
{
    Stage stage({600, 300});
    QQuickItem* root = stage.put(u"Item {}"_s);
    {
        CountedShadow first;
        place(first, root, {50, 50});
        stage.settle();
    }
    CountedShadow::paintings = 0;
    CountedShadow second;
    place(second, root, {200, 50});
    stage.settle();
    QCOMPARE(CountedShadow::paintings, 0);
}

void SharedArtTest::onlyAFewSharedPicturesAreKept()
{
    Stage stage({600, 300});
    QQuickItem* root = stage.put(u"Item {}"_s);
    const auto show = [&](int spread) {
        CountedShadow shadow;
        place(shadow, root, {50, 50});
        shadow.setSpread(spread);
        stage.waitForFrame();
    };
    show(10);
    for (int spread = 30; spread < 70; ++spread)
        show(spread);
    CountedShadow::paintings = 0;
    show(69);
    QCOMPARE(CountedShadow::paintings, 0);
    show(10);
    QCOMPARE(CountedShadow::paintings, 1);
}

void SharedArtTest::manyShadowsThatAreShownAreAllShared()
{
    Stage stage({1920, 300});
    QQuickItem* root = stage.put(u"Item {}"_s);
    std::array<CountedShadow, 12> shadows;
    std::array<CountedShadow, 12> others;
    for (size_t i = 0; i < shadows.size(); ++i) {
        place(shadows[i], root, {150.0 * double(i), 20});
        shadows[i].setSpread(10 + double(i));
    }
    stage.settle();
    CountedShadow::paintings = 0;
    for (size_t i = 0; i < others.size(); ++i) {
        place(others[i], root, {150.0 * double(i), 160});
        others[i].setSpread(10 + double(i));
    }
    stage.settle();
    QCOMPARE(CountedShadow::paintings, 0);
}

void SharedArtTest::equalVeneersArePaintedOnceIfTheyStandAlike_data()
{
    QTest::addColumn<QPointF>("at");
    QTest::addColumn<int>("paintings");
    QTest::newRow("at the same place") << QPointF(0, 0) << 1;
    QTest::newRow("whole pixels on") << QPointF(12, 7) << 1;
    QTest::newRow("half a pixel on") << QPointF(0.5, 0) << 2;
}

void SharedArtTest::equalVeneersArePaintedOnceIfTheyStandAlike()
{
    QFETCH(QPointF, at);
    QFETCH(int, paintings);
    Stage stage({1300, 800});
    QQuickItem* root = stage.put(u"Item {}"_s);
    CountedVeneer::paintings = 0;
    const CountedVeneer first(root, {0, 0});
    stage.settle();
    const CountedVeneer second(root, at);
    stage.settle();
    QCOMPARE(CountedVeneer::paintings, paintings);
    QCOMPARE(first.picture() == second.picture(), paintings == 1);
}

void SharedArtTest::aVeneerThatNobodyShowsIsReleased()
{
    Stage stage({1300, 800});
    QQuickItem* root = stage.put(u"Item {}"_s);
    std::weak_ptr<const QImage> picture;
    {
        const CountedVeneer veneer(root, {0, 0});
        stage.settle();
        picture = veneer.picture();
        QVERIFY(!picture.expired());
    }
    QVERIFY(picture.expired());
}

QTEST_MAIN(SharedArtTest)
#include "SharedArtTest.moc"
