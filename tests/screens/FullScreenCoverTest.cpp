#include "FullScreenCover.h"
#include "Stage.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/** A screen with two buttons, a cover for it, and two screens to cover it with. */
const QString host = u"FocusScreen { id: host; width: 1920; height: 1080; property var log: [];"
                     "  property int shown: 0;"
                     "  property alias first: first; property alias second: second; property alias wrong: wrong;"
                     "  Item { id: content; objectName: 'content'; width: 1920; height: 1080;"
                     "    Focusable { width: 100; height: 100 } Focusable { x: 200; width: 100; height: 100 } }"
                     "  Component { id: first; FocusScreen { objectName: 'first'; property string name;"
                     "    onAppeared: host.log.push('first'); onDisappeared: host.log.push('-first');"
                     "    Component.onDestruction: host.log.push('gone');"
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
    explicit House(const QString& more = {}) : screen(static_cast<FocusScreen*>(stage.put(host.arg(more))))
    {
        cover = static_cast<FullScreenCover*>(Stage::first(screen, "FullScreenCover"));
        content = screen->findChild<QQuickItem*>(u"content"_s);
        screen->takeFocus();
    }
    void show(const char* name) { cover->setScreen(name ? screen->property(name).value<QQmlComponent*>() : nullptr); }
    QStringList log() const { return screen->property("log").toStringList(); }
    bool hasKeys(const FocusScreen* which) const { return which->focused() && which->focused()->hasActiveFocus(); }

    Stage stage;
    FocusScreen* screen;
    FullScreenCover* cover;
    QQuickItem* content;
};

} // namespace

/** A screen that covers the one it stands on. */
class FullScreenCoverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itHasTheKeysAtOnceAndSlidesUp();
    void aDismissalGivesBackTheFocusAtOnceAndSlidesDown();
    void whatIsBeneathIsNotDrawnWhileItIsCovered();
    void backDismissesOnceAPress();
    void backWithoutACoverIsLeftToOthers();
    void oneScreenMayFollowAnother();
    void itComesAndGoesBackAndForth();
    void itMayBeThereFromTheBeginning();
    void itTellsItsScreenOfTheOneAround();
    void itHandsItsPropertiesOn();
    void behindAnotherScreenItTakesNoKeys();
    void whatIsNoScreenIsRefused();
    void itDrawsNothingAfterATransition();
    void itMayGoWithItsScreen();
};

void FullScreenCoverTest::itHasTheKeysAtOnceAndSlidesUp()
{
    House house;
    QVERIFY(house.hasKeys(house.screen));
    house.show("first");
    const FocusScreen* item = house.cover->item();
    QVERIFY(house.hasKeys(item));
    QCOMPARE(house.screen->cover(), item);
    QCOMPARE(item->size(), QSizeF(1920, 1080));
    QCOMPARE(item->y(), 1080.0);
    QTRY_VERIFY(item->y() > 0 && item->y() < 1080);
    QTRY_COMPARE(item->y(), 0.0);
    QCOMPARE(house.log(), QStringList{u"first"_s});
}

void FullScreenCoverTest::aDismissalGivesBackTheFocusAtOnceAndSlidesDown()
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
    QCOMPARE(house.log().constLast(), u"gone"_s);
}

void FullScreenCoverTest::whatIsBeneathIsNotDrawnWhileItIsCovered()
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

void FullScreenCoverTest::backDismissesOnceAPress()
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
    QVERIFY(house.hasKeys(house.screen));
}

void FullScreenCoverTest::backWithoutACoverIsLeftToOthers()
{
    House house;
    QSignalSpy dismissed(house.cover, &FullScreenCover::dismissed);
    house.cover->forceActiveFocus();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Back, Qt::NoModifier);
    QCoreApplication::sendEvent(&house.stage.window(), &press);
    QVERIFY(!press.isAccepted());
    QVERIFY(dismissed.isEmpty());
}

void FullScreenCoverTest::oneScreenMayFollowAnother()
{
    House house;
    house.show("first");
    const QPointer<FocusScreen> first = house.cover->item();
    QTRY_VERIFY(!house.content->isVisible());
    house.show("second");
    QCOMPARE(house.cover->item()->objectName(), u"second"_s);
    QVERIFY(house.hasKeys(house.cover->item()));
    QCOMPARE(house.screen->cover(), house.cover->item());
    QCOMPARE(house.log(), (QStringList{u"first"_s, u"-first"_s, u"second"_s}));
    QTRY_VERIFY(!first);
    QVERIFY(house.hasKeys(house.cover->item()));
    QTRY_VERIFY(!house.content->isVisible());
    house.show(nullptr);
    QVERIFY(house.hasKeys(house.screen));
}

void FullScreenCoverTest::itComesAndGoesBackAndForth()
{
    House house;
    for (const char* name : {"first", static_cast<const char*>(nullptr), "first", "second", "first",
                             static_cast<const char*>(nullptr), "second"}) {
        house.show(name);
        QVERIFY(house.hasKeys(name ? house.cover->item() : house.screen));
        QTest::qWait(50);
    }
    QTRY_COMPARE(house.cover->childItems().size(), 1);
    QTRY_VERIFY(!house.content->isVisible());
    QCOMPARE(house.cover->item()->y(), 0.0);
}

void FullScreenCoverTest::itMayBeThereFromTheBeginning()
{
    House house(u"screen: first"_s);
    QCOMPARE(house.cover->item()->y(), 0.0);
    QVERIFY(house.hasKeys(house.cover->item()));
    QVERIFY(!house.content->isVisible());
    QCOMPARE(house.log(), QStringList{});
    house.stage.press(Qt::Key_Back);
    QVERIFY(house.hasKeys(house.screen));
}

void FullScreenCoverTest::itTellsItsScreenOfTheOneAround()
{
    House house(u"screen: first"_s);
    Q_EMIT house.screen->appeared();
    QCOMPARE(house.log(), QStringList{u"first"_s});
    Q_EMIT house.screen->disappeared();
    QCOMPARE(house.log(), (QStringList{u"first"_s, u"-first"_s}));
}

void FullScreenCoverTest::itHandsItsPropertiesOn()
{
    House house(u"properties: ({ name: 'a name' })"_s);
    house.show("first");
    QCOMPARE(house.cover->item()->property("name").toString(), u"a name"_s);
}

void FullScreenCoverTest::behindAnotherScreenItTakesNoKeys()
{
    House house;
    FocusScreen other(house.stage.window().contentItem());
    other.takeFocus();
    house.show("first");
    QVERIFY(other.hasActiveFocus());
    house.show(nullptr);
    QVERIFY(other.hasActiveFocus());
    house.show("second");
    house.screen->takeFocus();
    QVERIFY(house.hasKeys(house.cover->item()));
}

void FullScreenCoverTest::whatIsNoScreenIsRefused()
{
    House house;
    QTest::ignoreMessage(QtWarningMsg, "what a FullScreenCover is to show is no FocusScreen");
    house.show("wrong");
    QVERIFY(!house.cover->item());
    QVERIFY(house.hasKeys(house.screen));
    house.show("first");
    QTRY_VERIFY(!house.content->isVisible());
    QTest::ignoreMessage(QtWarningMsg, "what a FullScreenCover is to show is no FocusScreen");
    house.show("wrong");
    QVERIFY(house.hasKeys(house.screen));
    QVERIFY(house.content->isVisible());
    QTRY_COMPARE(house.cover->childItems().size(), 0);
}

void FullScreenCoverTest::itDrawsNothingAfterATransition()
{
    House house;
    for (const char* name : {"first", static_cast<const char*>(nullptr)}) {
        house.show(name);
        QTRY_COMPARE(house.content->isVisible(), !name);
        QTRY_COMPARE(house.cover->childItems().size(), name ? 1 : 0);
        house.stage.settle();
        const int frames = house.stage.frames();
        QTest::qWait(400);
        QCOMPARE(house.stage.frames(), frames);
    }
}

void FullScreenCoverTest::itMayGoWithItsScreen()
{
    House house;
    house.show("first");
    QTRY_VERIFY(!house.content->isVisible());
    delete house.cover;
    QVERIFY(house.content->isVisible());
    QVERIFY(!house.screen->cover());
    house.screen->takeFocus();
    QVERIFY(house.hasKeys(house.screen));
}

QTEST_MAIN(FullScreenCoverTest)
#include "FullScreenCoverTest.moc"
