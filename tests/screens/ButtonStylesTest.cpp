#include "FrontFixture.h"
#include "Rows.h"
#include "StationMotion.h"
#include "StationPalette.h"
#include "TestMain.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

const QString grey = u"Rectangle { anchors.fill: parent; color: '#808080' }"_s;
const QString capsule = u"Rectangle { width: 300; height: 60; radius: 30; color: StationPalette.amber }"_s;

/** Two buttons of one style side by side on a canvas. The first has focus. */
struct Pair : TestScreen
{
    QQuickItem* first = nullptr;
    QQuickItem* second = nullptr;

    Pair(QSize size, const QString& style, const QString& one, const QString& other) : TestScreen(size)
    {
        QQuickItem* root = load(
            u"Canvas { FocusScreen { anchors.fill: parent; focus: true; "
            "%1 { objectName: 'first'; x: 300; y: 300; %2 } %1 { objectName: 'second'; x: 900; y: 300; %3 } } }"_s.arg(
                style, one, other));
        first = root->findChild<QQuickItem*>(u"first"_s);
        second = root->findChild<QQuickItem*>(u"second"_s);
    }

    explicit Pair(const QString& style, QSize size = {1920, 1080})
        : Pair(size, style, properties(style, u"one"_s), properties(style, u"other"_s))
    {}

    static QString properties(const QString& style, const QString& name)
    {
        if (style == u"PlateButton")
            return u"text: '%1'"_s.arg(name);
        const bool isCard = style == u"CardButton";
        const QString size = isCard ? u"width: 250; height: 390; "_s : u"width: 300; height: 60; "_s;
        return u"name: '%1'; "_s.arg(name) + size + (isCard ? grey : capsule);
    }

    double points() { return window().width() / 1920.0; }

    QColor at(const QImage& picture, double x, double y)
    {
        return picture.pixelColor(int(x * points()), int(y * points()));
    }
};

QColor textColor(QQuickItem* button)
{
    return TestScreen::texts(button).constFirst()->property("color").value<QColor>();
}

QList<QQuickItem*> visible(QList<QQuickItem*> items)
{
    items.removeIf([](const QQuickItem* item) { return !item->isVisible() || item->opacity() == 0; });
    return items;
}

double scaleOf(const QQuickItem* button)
{
    double scale = 1;
    for (const QQuickItem* child : button->childItems())
        scale = std::max(scale, child->scale());
    return scale;
}

} // namespace

#define COMPARE_COLOR(seen, wanted)                                                                                    \
    QVERIFY2(isClose(seen, wanted, 2), qPrintable(QColor(seen).name() + u" instead of "_s + QColor(wanted).name()))

/** The three button styles: appearance at rest and with focus, and reaction to key presses. */
class ButtonStylesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void focusedButtonIsScaledByFactorOfItsStyle_data()
    {
        rows<QString, double>(
            {"style", "scale"},
            {{"card", u"CardButton"_s, 1.08}, {"plate", u"PlateButton"_s, 1.05}, {"plain", u"PlainButton"_s, 1.0}});
    }

    void focusedButtonIsScaledByFactorOfItsStyle()
    {
        QFETCH(QString, style);
        QFETCH(double, scale);
        Pair pair(style);
        QVERIFY(pair.first->hasActiveFocus());
        QTRY_COMPARE(scaleOf(pair.first), scale);
        QCOMPARE(scaleOf(pair.second), 1.0);
        const QSizeF size = pair.first->size();
        pair.press(Qt::Key_Right);
        QTRY_COMPARE(scaleOf(pair.second), scale);
        QTRY_COMPARE(scaleOf(pair.first), 1.0);
        // The button's own geometry, which focus navigation uses, never changes.
        QCOMPARE(pair.first->size(), size);
        QCOMPARE(pair.second->scale(), 1.0);
    }

    void liftAnimationTakes150MillisecondsThenNoFrameIsDrawn_data() { styles(); }

    void liftAnimationTakes150MillisecondsThenNoFrameIsDrawn()
    {
        QFETCH(QString, style);
        Pair pair(style);
        pair.press(Qt::Key_Right);
        QCOMPARE(StationMotion::liftTime(), 150);
        for (const QQuickItem* button : {pair.first, pair.second})
            QCOMPARE(TestScreen::animationTimes(button), QList<int>{150});
        QCOMPARE(pair.second->property("lift").toDouble(), 0.0);
        QTRY_COMPARE(pair.second->property("lift").toDouble(), 1.0);
        QTRY_COMPARE(pair.first->property("lift").toDouble(), 0.0);
        QCOMPARE(pair.framesAtRest(500), 0);
    }

    void buttonIsSelectedOncePerKeyPress_data() { styles(); }

    void buttonIsSelectedOncePerKeyPress()
    {
        QFETCH(QString, style);
        Pair pair(style);
        QSignalSpy first(pair.first, SIGNAL(selected()));
        QSignalSpy second(pair.second, SIGNAL(selected()));
        pair.press(Qt::Key_Select);
        QCOMPARE(first.size(), 1);
        for (int repeat = 0; repeat < 5; ++repeat) {
            QKeyEvent repeatedPress(QEvent::KeyPress, Qt::Key_Select, Qt::NoModifier, {}, true);
            QCoreApplication::sendEvent(&pair.window(), &repeatedPress);
        }
        QCOMPARE(first.size(), 1);
        pair.press({Qt::Key_Right, Qt::Key_Select});
        QCOMPARE(first.size(), 1);
        QCOMPARE(second.size(), 1);
    }

    void buttonHasAccessibleRoleNameAndAction_data() { styles(); }

    void buttonHasAccessibleRoleNameAndAction()
    {
        QFETCH(QString, style);
        Pair pair(style);
        QAccessible::setActive(true);
        const auto accessible = [](QQuickItem* button) { return QAccessible::queryAccessibleInterface(button); };
        QCOMPARE(accessible(pair.first)->role(), QAccessible::Button);
        QCOMPARE(accessible(pair.first)->text(QAccessible::Name), u"one"_s);
        QCOMPARE(accessible(pair.second)->text(QAccessible::Name), u"other"_s);
        QVERIFY(accessible(pair.first)->state().focusable);
        QVERIFY(accessible(pair.first)->state().focused);
        QVERIFY(accessible(pair.second)->state().focusable);
        QVERIFY(!accessible(pair.second)->state().focused);
        QSignalSpy selected(pair.second, SIGNAL(selected()));
        accessible(pair.second)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(selected.size(), 1);
    }

    void onlyLiftedCardHasShadowAndSheenAndIsBrighter()
    {
        Pair pair(u"CardButton"_s);
        const QColor rest(128, 128, 128);
        const QColor lifted = StationPalette::mixed(rest, Qt::white, 0.06);
        const QImage picture = pair.picture();
        COMPARE_COLOR(pair.at(picture, 425, 495), lifted);
        COMPARE_COLOR(pair.at(picture, 1025, 495), rest);
        // The outermost points of the card are brighter too, but nothing beyond them.
        COMPARE_COLOR(pair.at(picture, 291, 495), lifted);
        COMPARE_COLOR(pair.at(picture, 289, 495), QColor(Qt::black));

        const auto shadows = [](QQuickItem* card) { return TestScreen::all(card, "SoftShadow").size(); };
        const auto sheens = [](QQuickItem* card) { return TestScreen::all(card, "CardPlate").size(); };
        QCOMPARE(shadows(pair.first), 1);
        QCOMPARE(sheens(pair.first), 1);
        QCOMPARE(shadows(pair.second) + sheens(pair.second), 0);
        pair.press(Qt::Key_Right);
        QTRY_COMPARE(shadows(pair.first) + sheens(pair.first), 0);
        QCOMPARE(shadows(pair.second), 1);
        QCOMPARE(sheens(pair.second), 1);
    }

    void liftedCardCoversItsNeighbours()
    {
        const QString card =
            u"name: 'card'; width: 598; height: 400; Rectangle { anchors.fill: parent; color: '%1' }"_s;
        Pair pair({1920, 1080}, u"CardButton"_s, card.arg(u"red"), card.arg(u"blue"));
        // Where the two cards overlap, the lifted one is visible, no matter which was created first.
        const QColor left = pair.at(pair.picture(), 905, 500);
        QVERIFY(left.red() > 200 && left.blue() < 50);
        pair.press(Qt::Key_Right);
        const QColor right = pair.at(pair.picture(), 893, 500);
        QVERIFY(right.blue() > 200 && right.red() < 50);
    }

    void plateAtRestHasDimOutline_data() { rowsOfDisplaySizes(); }

    void plateAtRestHasDimOutline()
    {
        QFETCH(QSize, size);
        Pair pair(u"PlateButton"_s, size);
        const QRectF plate = TestScreen::area(pair.second);
        const QImage picture = pair.picture();
        const int middle = int(plate.center().x());
        const QColor outline = picture.pixelColor(middle, int(plate.top()));
        const QColor inside = picture.pixelColor(middle, int(plate.top() + 8 * pair.points()));
        QVERIFY2(outline.red() > 50 && outline.red() < 130, qPrintable(outline.name()));
        QVERIFY2(inside.red() > 10 && inside.red() < 30, qPrintable(inside.name()));
        COMPARE_COLOR(picture.pixelColor(middle, int(plate.top()) - 2), QColor(Qt::black));
        COMPARE_COLOR(picture.pixelColor(plate.topLeft().toPoint()), QColor(Qt::black)); // a rounded corner
        QCOMPARE(textColor(pair.second), StationPalette::cream());
    }

    void focusedPlateIsCreamWithDarkText_data() { rowsOfDisplaySizes(); }

    void focusedPlateIsCreamWithDarkText()
    {
        QFETCH(QSize, size);
        Pair pair(size, u"PlateButton"_s, u"text: 'Push it in'; icon: Icon.Play"_s, u"text: 'Start over'"_s);
        const QImage picture = pair.picture();
        const QRectF plate = TestScreen::area(pair.first);
        COMPARE_COLOR(picture.pixelColor(int(plate.left()), int(plate.center().y())), StationPalette::cream());
        const QRectF icon = TestScreen::area(TestScreen::first(pair.first, "Icon"));
        COMPARE_COLOR(picture.pixelColor(icon.center().toPoint()), StationPalette::inkNavy());
        QCOMPARE(textColor(pair.first), StationPalette::inkNavy());
    }

    void plateIsAsWideAsItsLabel()
    {
        Pair pair({1920, 1080}, u"PlateButton"_s, u"text: 'Search the stacks'; icon: Icon.MagnifyingGlass"_s,
                  u"text: 'Search the stacks'; padding: 24"_s);
        const QQuickItem* words = TestScreen::texts(pair.first).constFirst();
        const QQuickItem* icon = TestScreen::first(pair.first, "Icon");
        QCOMPARE(pair.first->width() - words->width() - icon->width(), 2 * (26 + 14) + 14.0);
        QCOMPARE(pair.second->width() - words->width(), 2 * (26 + 24.0));
        QCOMPARE(visible(TestScreen::all(pair.second, "Icon")).size(), 0);
    }

    void focusOnlyDrawsRingAroundPlainButton_data() { rowsOfDisplaySizes(); }

    void focusOnlyDrawsRingAroundPlainButton()
    {
        QFETCH(QSize, size);
        Pair pair(u"PlainButton"_s, size);
        QCOMPARE(pair.first->size(), QSizeF(300, 60));
        // The ring crosses the corners of the rectangle around a capsule, so compare only the middle.
        const auto content = [&](const QQuickItem* button, const QImage& picture) {
            return picture.copy(button->mapRectToScene(QRectF(30, 0, 240, 60)).toAlignedRect());
        };
        const QImage picture = pair.picture();
        QCOMPARE(content(pair.first, picture), content(pair.second, picture));
        COMPARE_COLOR(content(pair.first, picture).pixelColor(0, 0), StationPalette::amber());
        // At rest nothing is drawn around it.
        QCOMPARE(visible(TestScreen::all(pair.second, "CardPlate")).size(), 0);
        COMPARE_COLOR(pair.at(picture, 1050, 294), QColor(Qt::black));
        // A gap separates the ring from the plate of the same colour.
        COMPARE_COLOR(pair.at(picture, 450, 294), StationPalette::amber()); // the ring
        COMPARE_COLOR(pair.at(picture, 450, 297.9), QColor(Qt::black));     // the gap
        COMPARE_COLOR(pair.at(picture, 450, 304), StationPalette::amber()); // the plate
        COMPARE_COLOR(pair.at(picture, 450, 289), QColor(Qt::black));
        pair.press(Qt::Key_Right);
        QTRY_COMPARE(visible(TestScreen::all(pair.first, "CardPlate")).size(), 0);
        COMPARE_COLOR(pair.at(pair.picture(), 450, 294), QColor(Qt::black));
    }

private:
    static void styles()
    {
        QTest::addColumn<QString>("style");
        for (const char* style : {"CardButton", "PlateButton", "PlainButton"})
            QTest::newRow(style) << QString::fromLatin1(style);
    }
};

QUILLMERE_TEST(ButtonStylesTest, QGuiApplication)

} // namespace quillmere

#include "ButtonStylesTest.moc"
