#include "FullScreenCover.h"
#include "Stage.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/** A screen with two buttons and a cover, and three components to show in it. */
const QString host = u"FocusScreen { id: host; width: 1920; height: 1080; property var log: [];"
                     "  property int shown: 0;"
                     "  property alias first: first; property alias second: second; property alias wrong: wrong;"
                     "  Item { id: content; objectName: 'content'; width: 1920; height: 1080;"
                     "    Focusable { width: 100; height: 100 } Focusable { x: 200; width: 100; height: 100 } }"
                     "  Component { id: first; FocusScreen { objectName: 'first'; property string name;"
                     "    onAppeared: host.log.push('first'); onDisappeared: host.log.push('-first');"
                     "    Component.onDestruction: host.log.push('destroyed');"
                     "    Rectangle { width: 1920; height: 1080; color: 'teal' }"
                     "    Focusable { x: 50; y: 50; width: 100; height: 100 } } }"
                     "  Component { id: second; FocusScreen { objectName: 'second';"
                     "    onAppeared: host.log.push('second'); onDisappeared: host.log.push('-second');"
                     "    Focusable { x: 50; y: 50; width: 100; height: 100 } } }"
                     "  Component { id: wrong; Item { } }"
                     "  FullScreenCover { id: cover; width: 1920; height: 1080; beneath: content;"
                     "    onDismissed: screen = null; %1 } }"_s;

struct House
{
    explicit House(const QString& more = {}) : screen(static_cast<FocusScreen*>(stage.load(host.arg(more))))
    {
        cover = static_cast<FullScreenCover*>(Stage::first(screen, "FullScreenCover"));
        content = screen->findChild<QQuickItem*>(u"content"_s);
        screen->acquireFocus();
    }
    void show(const char* name) { cover->setScreen(name ? screen->property(name).value<QQmlComponent*>() : nullptr); }
    QStringList log() const { return screen->property("log").toStringList(); }
    bool hasFocus(const FocusScreen* which) const { return which->focused() && which->focused()->hasActiveFocus(); }

    Stage stage;
    FocusScreen* screen;
    FullScreenCover* cover;
    QQuickItem* content;
};

} // namespace

/** A cover that shows another screen over its own. */
class FullScreenCoverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shownScreenHasFocusAtOnceAndSlidesUp();
    void dismissedScreenReturnsFocusAtOnceAndSlidesDown();
    void contentBelowIsHiddenWhileCovered();
    void backDismissesOncePerKeyPress();
    void backWithoutCoverIsNotAccepted();
    void secondScreenReplacesFirst();
    void rapidScreenChangesEndInLastOne();
    void initialScreenIsShownWithoutAnimation();
    void appearanceOfEnclosingScreenIsForwarded();
    void propertiesArePassedToScreen();
    void coverOnBackgroundScreenDoesNotTakeFocus();
    void componentThatIsNoScreenIsRejected();
    void noFrameIsDrawnAfterTransition();
    void coverCanBeDestroyedWithItsScreen();
};

void FullScreenCoverTest::shownScreenHasFocusAtOnceAndSlidesUp()
{
    House house;
    QVERIFY(house.hasFocus(house.screen));
    house.show("first");
    const FocusScreen* item = house.cover->item();
    QVERIFY(house.hasFocus(item));
    QCOMPARE(house.screen->cover(), item);
    QCOMPARE(item->size(), QSizeF(1920, 1080));
    QCOMPARE(item->y(), 1080.0);
    QTRY_VERIFY(item->y() > 0 && item->y() < 1080);
    QTRY_COMPARE(item->y(), 0.0);
    QCOMPARE(house.log(), QStringList{u"first"_s});
}

void FullScreenCoverTest::dismissedScreenReturnsFocusAtOnceAndSlidesDown()
{
    House house;
    house.stage.press(Qt::Key_Right);
    const Focusable* second = house.screen->focused();
    house.show("first");
    const QPointer<FocusScreen> item = house.cover->item();
    QTRY_COMPARE(item->y(), 0.0);
    QTRY_VERIFY(!house.content->isVisible());
    house.show(nullptr);
    QVERIFY(!house.cover->item());
    QVERIFY(!house.screen->cover());
    QCOMPARE(house.screen->focused(), second);
    QVERIFY(second->hasActiveFocus());
    QVERIFY(!item->isEnabled());
    QCOMPARE(house.log(), (QStringList{u"first"_s, u"-first"_s}));
    QTRY_VERIFY(item->y() > 0);
    QTRY_VERIFY(!item);
    QCOMPARE(house.log().constLast(), u"destroyed"_s);
}

void FullScreenCoverTest::contentBelowIsHiddenWhileCovered()
{
    House house;
    house.show("first");
    QVERIFY(house.content->isVisible());
    QTRY_VERIFY(!house.content->isVisible());
    QCOMPARE(house.cover->item()->y(), 0.0);
    house.show(nullptr);
    QVERIFY(house.content->isVisible());
    QTRY_COMPARE(house.cover->childItems().size(), 0);
    QVERIFY(house.content->isVisible());
}

void FullScreenCoverTest::backDismissesOncePerKeyPress()
{
    House house;
    QSignalSpy dismissed(house.cover, &FullScreenCover::dismissed);
    house.show("first");
    for (const bool isRepeat : {true, false, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Back, Qt::NoModifier, {}, isRepeat);
        QCoreApplication::sendEvent(&house.stage.window(), &press);
        QCOMPARE(press.isAccepted(), house.cover->item() || !isRepeat);
    }
    QCOMPARE(dismissed.size(), 1);
    QVERIFY(house.hasFocus(house.screen));
}

void FullScreenCoverTest::backWithoutCoverIsNotAccepted()
{
    House house;
    QSignalSpy dismissed(house.cover, &FullScreenCover::dismissed);
    house.cover->forceActiveFocus();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Back, Qt::NoModifier);
    QCoreApplication::sendEvent(&house.stage.window(), &press);
    QVERIFY(!press.isAccepted());
    QVERIFY(dismissed.isEmpty());
}

void FullScreenCoverTest::secondScreenReplacesFirst()
{
    House house;
    house.show("first");
    const QPointer<FocusScreen> first = house.cover->item();
    QTRY_VERIFY(!house.content->isVisible());
    house.show("second");
    QCOMPARE(house.cover->item()->objectName(), u"second"_s);
    QVERIFY(house.hasFocus(house.cover->item()));
    QCOMPARE(house.screen->cover(), house.cover->item());
    QCOMPARE(house.log(), (QStringList{u"first"_s, u"-first"_s, u"second"_s}));
    QTRY_VERIFY(!first);
    QVERIFY(house.hasFocus(house.cover->item()));
    QTRY_VERIFY(!house.content->isVisible());
    house.show(nullptr);
    QVERIFY(house.hasFocus(house.screen));
}

void FullScreenCoverTest::rapidScreenChangesEndInLastOne()
{
    House house;
    for (const char* name : {"first", static_cast<const char*>(nullptr), "first", "second", "first",
                             static_cast<const char*>(nullptr), "second"}) {
        house.show(name);
        QVERIFY(house.hasFocus(name ? house.cover->item() : house.screen));
        QTest::qWait(50);
    }
    QTRY_COMPARE(house.cover->childItems().size(), 1);
    QTRY_VERIFY(!house.content->isVisible());
    QCOMPARE(house.cover->item()->y(), 0.0);
}

void FullScreenCoverTest::initialScreenIsShownWithoutAnimation()
{
    House house(u"screen: first"_s);
    QCOMPARE(house.cover->item()->y(), 0.0);
    QVERIFY(house.hasFocus(house.cover->item()));
    QVERIFY(!house.content->isVisible());
    QCOMPARE(house.log(), QStringList{});
    house.stage.press(Qt::Key_Back);
    QVERIFY(house.hasFocus(house.screen));
}

void FullScreenCoverTest::appearanceOfEnclosingScreenIsForwarded()
{
    House house(u"screen: first"_s);
    Q_EMIT house.screen->appeared();
    QCOMPARE(house.log(), QStringList{u"first"_s});
    Q_EMIT house.screen->disappeared();
    QCOMPARE(house.log(), (QStringList{u"first"_s, u"-first"_s}));
}

void FullScreenCoverTest::propertiesArePassedToScreen()
{
    House house(u"properties: ({ name: 'a name' })"_s);
    house.show("first");
    QCOMPARE(house.cover->item()->property("name").toString(), u"a name"_s);
}

void FullScreenCoverTest::coverOnBackgroundScreenDoesNotTakeFocus()
{
    House house;
    FocusScreen other(house.stage.window().contentItem());
    other.acquireFocus();
    house.show("first");
    QVERIFY(other.hasActiveFocus());
    house.show(nullptr);
    QVERIFY(other.hasActiveFocus());
    house.show("second");
    house.screen->acquireFocus();
    QVERIFY(house.hasFocus(house.cover->item()));
}

void FullScreenCoverTest::componentThatIsNoScreenIsRejected()
{
    House house;
    QTest::ignoreMessage(QtWarningMsg, "what a FullScreenCover is to show is no FocusScreen");
    house.show("wrong");
    QVERIFY(!house.cover->item());
    QVERIFY(house.hasFocus(house.screen));
    house.show("first");
    QTRY_VERIFY(!house.content->isVisible());
    QTest::ignoreMessage(QtWarningMsg, "what a FullScreenCover is to show is no FocusScreen");
    house.show("wrong");
    QVERIFY(house.hasFocus(house.screen));
    QVERIFY(house.content->isVisible());
    QTRY_COMPARE(house.cover->childItems().size(), 0);
}

void FullScreenCoverTest::noFrameIsDrawnAfterTransition()
{
    House house;
    for (const char* name : {"first", static_cast<const char*>(nullptr)}) {
        house.show(name);
        QTRY_COMPARE(house.content->isVisible(), !name);
        QTRY_COMPARE(house.cover->childItems().size(), name ? 1 : 0);
        house.stage.waitUntilIdle();
        const int frames = house.stage.frames();
        QTest::qWait(400);
        QCOMPARE(house.stage.frames(), frames);
    }
}

void FullScreenCoverTest::coverCanBeDestroyedWithItsScreen()
{
    House house;
    house.show("first");
    QTRY_VERIFY(!house.content->isVisible());
    delete house.cover;
    QVERIFY(house.content->isVisible());
    QVERIFY(!house.screen->cover());
    house.screen->acquireFocus();
    QVERIFY(house.hasFocus(house.screen));
}

QUILLMERE_TEST(FullScreenCoverTest, QGuiApplication)
#include "FullScreenCoverTest.moc"
