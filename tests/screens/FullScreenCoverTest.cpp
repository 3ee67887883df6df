#include "FullScreenCover.h"
#include "TestMain.h"
#include "TestScreen.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

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

struct CoverFixture : TestScreen
{
    explicit CoverFixture(const QString& more = {}) : screen(static_cast<FocusScreen*>(load(host.arg(more))))
    {
        cover = static_cast<FullScreenCover*>(first(screen, "FullScreenCover"));
        content = screen->findChild<QQuickItem*>(u"content"_s);
        screen->acquireFocus();
    }
    void show(const char* name) { cover->setScreen(name ? screen->property(name).value<QQmlComponent*>() : nullptr); }
    QStringList log() const { return screen->property("log").toStringList(); }
    bool hasFocus(const FocusScreen* which) const { return which->focused() && which->focused()->hasActiveFocus(); }

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
    CoverFixture fixture;
    QVERIFY(fixture.hasFocus(fixture.screen));
    fixture.show("first");
    const FocusScreen* item = fixture.cover->item();
    QVERIFY(fixture.hasFocus(item));
    QCOMPARE(fixture.screen->coveringScreen(), item);
    QCOMPARE(item->size(), QSizeF(1920, 1080));
    QCOMPARE(item->y(), 1080.0);
    QTRY_VERIFY(item->y() > 0 && item->y() < 1080);
    QTRY_COMPARE(item->y(), 0.0);
    QCOMPARE(fixture.log(), QStringList{u"first"_s});
}

void FullScreenCoverTest::dismissedScreenReturnsFocusAtOnceAndSlidesDown()
{
    CoverFixture fixture;
    fixture.press(Qt::Key_Right);
    const Focusable* second = fixture.screen->focused();
    fixture.show("first");
    const QPointer<FocusScreen> item = fixture.cover->item();
    QTRY_COMPARE(item->y(), 0.0);
    QTRY_VERIFY(!fixture.content->isVisible());
    fixture.show(nullptr);
    QVERIFY(!fixture.cover->item());
    QVERIFY(!fixture.screen->coveringScreen());
    QCOMPARE(fixture.screen->focused(), second);
    QVERIFY(second->hasActiveFocus());
    QVERIFY(!item->isEnabled());
    QCOMPARE(fixture.log(), (QStringList{u"first"_s, u"-first"_s}));
    QTRY_VERIFY(item->y() > 0);
    QTRY_VERIFY(!item);
    QCOMPARE(fixture.log().constLast(), u"destroyed"_s);
}

void FullScreenCoverTest::contentBelowIsHiddenWhileCovered()
{
    CoverFixture fixture;
    fixture.show("first");
    QVERIFY(fixture.content->isVisible());
    QTRY_VERIFY(!fixture.content->isVisible());
    QCOMPARE(fixture.cover->item()->y(), 0.0);
    fixture.show(nullptr);
    QVERIFY(fixture.content->isVisible());
    QTRY_COMPARE(fixture.cover->childItems().size(), 0);
    QVERIFY(fixture.content->isVisible());
}

void FullScreenCoverTest::backDismissesOncePerKeyPress()
{
    CoverFixture fixture;
    QSignalSpy dismissed(fixture.cover, &FullScreenCover::dismissed);
    fixture.show("first");
    for (const bool isRepeat : {true, false, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Back, Qt::NoModifier, {}, isRepeat);
        QCoreApplication::sendEvent(&fixture.window(), &press);
        QCOMPARE(press.isAccepted(), fixture.cover->item() || !isRepeat);
    }
    QCOMPARE(dismissed.size(), 1);
    QVERIFY(fixture.hasFocus(fixture.screen));
}

void FullScreenCoverTest::backWithoutCoverIsNotAccepted()
{
    CoverFixture fixture;
    QSignalSpy dismissed(fixture.cover, &FullScreenCover::dismissed);
    fixture.cover->forceActiveFocus();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Back, Qt::NoModifier);
    QCoreApplication::sendEvent(&fixture.window(), &press);
    QVERIFY(!press.isAccepted());
    QVERIFY(dismissed.isEmpty());
}

void FullScreenCoverTest::secondScreenReplacesFirst()
{
    CoverFixture fixture;
    fixture.show("first");
    const QPointer<FocusScreen> first = fixture.cover->item();
    QTRY_VERIFY(!fixture.content->isVisible());
    fixture.show("second");
    QCOMPARE(fixture.cover->item()->objectName(), u"second"_s);
    QVERIFY(fixture.hasFocus(fixture.cover->item()));
    QCOMPARE(fixture.screen->coveringScreen(), fixture.cover->item());
    QCOMPARE(fixture.log(), (QStringList{u"first"_s, u"-first"_s, u"second"_s}));
    QTRY_VERIFY(!first);
    QVERIFY(fixture.hasFocus(fixture.cover->item()));
    QTRY_VERIFY(!fixture.content->isVisible());
    fixture.show(nullptr);
    QVERIFY(fixture.hasFocus(fixture.screen));
}

void FullScreenCoverTest::rapidScreenChangesEndInLastOne()
{
    CoverFixture fixture;
    for (const char* name : {"first", static_cast<const char*>(nullptr), "first", "second", "first",
                             static_cast<const char*>(nullptr), "second"}) {
        fixture.show(name);
        QVERIFY(fixture.hasFocus(name ? fixture.cover->item() : fixture.screen));
        QTest::qWait(50);
    }
    QTRY_COMPARE(fixture.cover->childItems().size(), 1);
    QTRY_VERIFY(!fixture.content->isVisible());
    QCOMPARE(fixture.cover->item()->y(), 0.0);
}

void FullScreenCoverTest::initialScreenIsShownWithoutAnimation()
{
    CoverFixture fixture(u"screen: first"_s);
    QCOMPARE(fixture.cover->item()->y(), 0.0);
    QVERIFY(fixture.hasFocus(fixture.cover->item()));
    QVERIFY(!fixture.content->isVisible());
    QCOMPARE(fixture.log(), QStringList{});
    fixture.press(Qt::Key_Back);
    QVERIFY(fixture.hasFocus(fixture.screen));
}

void FullScreenCoverTest::appearanceOfEnclosingScreenIsForwarded()
{
    CoverFixture fixture(u"screen: first"_s);
    Q_EMIT fixture.screen->appeared();
    QCOMPARE(fixture.log(), QStringList{u"first"_s});
    Q_EMIT fixture.screen->disappeared();
    QCOMPARE(fixture.log(), (QStringList{u"first"_s, u"-first"_s}));
}

void FullScreenCoverTest::propertiesArePassedToScreen()
{
    CoverFixture fixture(u"properties: ({ name: 'a name' })"_s);
    fixture.show("first");
    QCOMPARE(fixture.cover->item()->property("name").toString(), u"a name"_s);
}

void FullScreenCoverTest::coverOnBackgroundScreenDoesNotTakeFocus()
{
    CoverFixture fixture;
    FocusScreen other(fixture.window().contentItem());
    other.acquireFocus();
    fixture.show("first");
    QVERIFY(other.hasActiveFocus());
    fixture.show(nullptr);
    QVERIFY(other.hasActiveFocus());
    fixture.show("second");
    fixture.screen->acquireFocus();
    QVERIFY(fixture.hasFocus(fixture.cover->item()));
}

void FullScreenCoverTest::componentThatIsNoScreenIsRejected()
{
    CoverFixture fixture;
    QTest::ignoreMessage(QtWarningMsg, "what a FullScreenCover is to show is no FocusScreen");
    fixture.show("wrong");
    QVERIFY(!fixture.cover->item());
    QVERIFY(fixture.hasFocus(fixture.screen));
    fixture.show("first");
    QTRY_VERIFY(!fixture.content->isVisible());
    QTest::ignoreMessage(QtWarningMsg, "what a FullScreenCover is to show is no FocusScreen");
    fixture.show("wrong");
    QVERIFY(fixture.hasFocus(fixture.screen));
    QVERIFY(fixture.content->isVisible());
    QTRY_COMPARE(fixture.cover->childItems().size(), 0);
}

void FullScreenCoverTest::noFrameIsDrawnAfterTransition()
{
    CoverFixture fixture;
    for (const char* name : {"first", static_cast<const char*>(nullptr)}) {
        fixture.show(name);
        QTRY_COMPARE(fixture.content->isVisible(), !name);
        QTRY_COMPARE(fixture.cover->childItems().size(), name ? 1 : 0);
        fixture.waitUntilIdle();
        const int frames = fixture.frames();
        QTest::qWait(400);
        QCOMPARE(fixture.frames(), frames);
    }
}

void FullScreenCoverTest::coverCanBeDestroyedWithItsScreen()
{
    CoverFixture fixture;
    fixture.show("first");
    QTRY_VERIFY(!fixture.content->isVisible());
    delete fixture.cover;
    QVERIFY(fixture.content->isVisible());
    QVERIFY(!fixture.screen->coveringScreen());
    fixture.screen->acquireFocus();
    QVERIFY(fixture.hasFocus(fixture.screen));
}

QUILLMERE_TEST(FullScreenCoverTest, QGuiApplication)

} // namespace quillmere

#include "FullScreenCoverTest.moc"
