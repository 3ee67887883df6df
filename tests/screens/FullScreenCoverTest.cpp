#include "FullScreenCover.h"
#include "FocusFixture.h"
#include "TestMain.h"

#include <QSignalSpy>

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
    /** Shows the screen with this name; none if the name is empty. */
    void show(const QByteArray& name) { cover->setScreen(screen->property(name).value<QQmlComponent*>()); }
    void dismiss() { cover->setScreen(nullptr); }
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
    void shownScreenHasFocusAtOnceAndSlidesUpOverContent()
    {
        CoverFixture fixture;
        QVERIFY(fixture.hasFocus(fixture.screen));
        fixture.show("first");
        const FocusScreen* item = fixture.cover->item();
        QVERIFY(fixture.hasFocus(item));
        QCOMPARE(fixture.screen->coveringScreen(), item);
        QCOMPARE(item->size(), QSizeF(1920, 1080));
        QCOMPARE(item->y(), 1080.0);
        QVERIFY(fixture.content->isVisible());
        QTRY_VERIFY(item->y() > 0 && item->y() < 1080);
        QTRY_VERIFY(!fixture.content->isVisible());
        QCOMPARE(item->y(), 0.0);
        QCOMPARE(fixture.log(), QStringList{u"first"_s});
    }

    void dismissedScreenReturnsFocusAtOnceAndSlidesDownFromContent()
    {
        CoverFixture fixture;
        fixture.press(Qt::Key_Right);
        const Focusable* second = fixture.screen->focused();
        fixture.show("first");
        const QPointer<FocusScreen> item = fixture.cover->item();
        QTRY_COMPARE(item->y(), 0.0);
        QTRY_VERIFY(!fixture.content->isVisible());
        fixture.dismiss();
        QVERIFY(!fixture.cover->item());
        QVERIFY(!fixture.screen->coveringScreen());
        QVERIFY(fixture.content->isVisible());
        QCOMPARE(fixture.screen->focused(), second);
        QVERIFY(second->hasActiveFocus());
        QVERIFY(!item->isEnabled());
        QCOMPARE(fixture.log(), (QStringList{u"first"_s, u"-first"_s}));
        QTRY_VERIFY(item->y() > 0);
        QTRY_VERIFY(!item);
        QTRY_COMPARE(fixture.cover->childItems().size(), 0);
        QVERIFY(fixture.content->isVisible());
        QCOMPARE(fixture.log().constLast(), u"destroyed"_s);
    }

    void backDismissesOncePerKeyPress()
    {
        CoverFixture fixture;
        QSignalSpy dismissed(fixture.cover, &FullScreenCover::dismissed);
        fixture.show("first");
        for (const bool isRepeat : {true, false, true}) {
            const bool accepted = isAccepted(fixture, Qt::Key_Back, isRepeat);
            QCOMPARE(accepted, fixture.cover->item() || !isRepeat);
        }
        QCOMPARE(dismissed.size(), 1);
        QVERIFY(fixture.hasFocus(fixture.screen));
    }

    void backWithoutCoverIsNotAccepted()
    {
        CoverFixture fixture;
        QSignalSpy dismissed(fixture.cover, &FullScreenCover::dismissed);
        fixture.cover->forceActiveFocus();
        QVERIFY(!isAccepted(fixture, Qt::Key_Back));
        QVERIFY(dismissed.isEmpty());
    }

    void secondScreenReplacesFirst()
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
        fixture.dismiss();
        QVERIFY(fixture.hasFocus(fixture.screen));
    }

    void rapidScreenChangesEndInLastOne()
    {
        CoverFixture fixture;
        for (const QByteArray name : {"first", "", "first", "second", "first", "", "second"}) {
            fixture.show(name);
            QVERIFY(fixture.hasFocus(name.isEmpty() ? fixture.screen : fixture.cover->item()));
            QTest::qWait(50);
        }
        QTRY_COMPARE(fixture.cover->childItems().size(), 1);
        QTRY_VERIFY(!fixture.content->isVisible());
        QCOMPARE(fixture.cover->item()->y(), 0.0);
    }

    void initialScreenIsShownWithoutAnimation()
    {
        CoverFixture fixture(u"screen: first"_s);
        QCOMPARE(fixture.cover->item()->y(), 0.0);
        QVERIFY(fixture.hasFocus(fixture.cover->item()));
        QVERIFY(!fixture.content->isVisible());
        QCOMPARE(fixture.log(), QStringList{});
        fixture.press(Qt::Key_Back);
        QVERIFY(fixture.hasFocus(fixture.screen));
    }

    void appearanceOfEnclosingScreenIsForwarded()
    {
        CoverFixture fixture(u"screen: first"_s);
        Q_EMIT fixture.screen->appeared();
        QCOMPARE(fixture.log(), QStringList{u"first"_s});
        Q_EMIT fixture.screen->disappeared();
        QCOMPARE(fixture.log(), (QStringList{u"first"_s, u"-first"_s}));
    }

    void propertiesArePassedToScreen()
    {
        CoverFixture fixture(u"properties: ({ name: 'a name' })"_s);
        fixture.show("first");
        QCOMPARE(fixture.cover->item()->property("name").toString(), u"a name"_s);
    }

    void coverOnBackgroundScreenDoesNotTakeFocus()
    {
        CoverFixture fixture;
        FocusScreen other(fixture.window().contentItem());
        other.acquireFocus();
        fixture.show("first");
        QVERIFY(other.hasActiveFocus());
        fixture.dismiss();
        QVERIFY(other.hasActiveFocus());
        fixture.show("second");
        fixture.screen->acquireFocus();
        QVERIFY(fixture.hasFocus(fixture.cover->item()));
    }

    void componentThatIsNoScreenIsRejected()
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

    void noFrameIsDrawnAfterTransition()
    {
        CoverFixture fixture;
        fixture.show("first");
        QTRY_VERIFY(!fixture.content->isVisible());
        QTRY_COMPARE(fixture.cover->childItems().size(), 1);
        QCOMPARE(fixture.framesAtRest(400), 0);
        fixture.dismiss();
        QTRY_VERIFY(fixture.content->isVisible());
        QTRY_COMPARE(fixture.cover->childItems().size(), 0);
        QCOMPARE(fixture.framesAtRest(400), 0);
    }

    void coverCanBeDestroyedWithItsScreen()
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
};

QUILLMERE_TEST(FullScreenCoverTest, QGuiApplication)

} // namespace quillmere

#include "FullScreenCoverTest.moc"
