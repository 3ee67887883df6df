#include "NavigationStack.h"
#include "FocusFixture.h"
#include "TestMain.h"

#include <QSignalSpy>

namespace quillmere {

namespace {

/** A stack that pops its own pages. Its root and each page have two buttons. */
const QString plainStack = u"NavigationStack { id: stack; width: 1920; height: 1080; focus: true; property var log: [];"
                           "  onPopped: stack.depth = stack.depth - 1;"
                           "  FocusScreen { objectName: 'root'; onAppeared: stack.log.push('root');"
                           "    onDisappeared: stack.log.push('-root');"
                           "    Focusable { width: 100; height: 100 }"
                           "    Focusable { x: 200; width: 100; height: 100 } }"
                           "  page: Component { FocusScreen { id: it; required property int level;"
                           "    objectName: 'page' + level; onAppeared: stack.log.push(it.objectName);"
                           "    onDisappeared: stack.log.push('-' + it.objectName);"
                           "    Component.onDestruction: stack.log.push('destroyed');"
                           "    Rectangle { anchors.fill: parent; color: Qt.rgba(0.5, it.level * 0.25, 0, 1) }"
                           "    Focusable { width: 100; height: 100 }"
                           "    Focusable { x: 200; width: 100; height: 100 } } } %1 }"_s;

struct StackFixture : TestScreen
{
    explicit StackFixture(const QString& more = {}) : stack(static_cast<NavigationStack*>(load(plainStack.arg(more))))
    {
        stack->acquireFocus();
    }
    FocusScreen* front() const { return stack->front(); }
    bool frontHasFocus() const { return front()->focused() && front()->focused()->hasActiveFocus(); }
    QStringList log() const { return stack->property("log").toStringList(); }
    QStringList existing() const { return namesOf(stack->childItems()); }
    QStringList visible() const
    {
        auto pages = stack->childItems();
        pages.removeIf([](const QQuickItem* page) { return !page->isVisible(); });
        return namesOf(pages);
    }

    NavigationStack* const stack;

private:
    static QStringList namesOf(const QList<QQuickItem*>& pages)
    {
        QStringList names;
        for (const QQuickItem* page : pages)
            names.append(page->objectName());
        return names;
    }
};

} // namespace

/** Screens pushed onto each other. */
class NavigationStackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rootHasInitialFocusAndDoesNotAcceptBack()
    {
        StackFixture fixture;
        const QSignalSpy popped(fixture.stack, &NavigationStack::popped);
        QCOMPARE(fixture.front()->objectName(), u"root"_s);
        QVERIFY(fixture.frontHasFocus());
        QCOMPARE(fixture.front()->size(), QSizeF(1920, 1080));
        QVERIFY(!isAccepted(fixture, Qt::Key_Back));
        QVERIFY(popped.isEmpty());
    }

    void pushedPageHasFocusAtOnceAndFadesIn()
    {
        StackFixture fixture;
        fixture.stack->setDepth(1);
        QPointer<FocusScreen> page = fixture.front();
        QCOMPARE(page->objectName(), u"page0"_s);
        QCOMPARE(page->size(), QSizeF(1920, 1080));
        QVERIFY(page->focused()->hasActiveFocus());
        QCOMPARE(page->opacity(), 0.0);
        QTRY_VERIFY(page->opacity() > 0 && page->opacity() < 1);
        QTRY_COMPARE(page->opacity(), 1.0);
    }

    void poppedPageReturnsFocusAtOnceAndFadesOut()
    {
        StackFixture fixture;
        fixture.press(Qt::Key_Right);
        Focusable* second = fixture.front()->focused();
        fixture.stack->setDepth(1);
        QPointer<FocusScreen> page = fixture.front();
        QTRY_COMPARE(fixture.visible(), QStringList{u"page0"_s});
        fixture.stack->setDepth(0);
        QVERIFY(second->hasActiveFocus());
        QVERIFY(!page->isEnabled());
        QCOMPARE(fixture.visible(), (QStringList{u"root"_s, u"page0"_s}));
        fixture.press(Qt::Key_Left);
        QVERIFY(fixture.front()->focused() != second);
        QVERIFY(fixture.frontHasFocus());
        QTRY_VERIFY(!page);
    }

    void backPopsOncePerKeyPress()
    {
        StackFixture fixture;
        QSignalSpy popped(fixture.stack, &NavigationStack::popped);
        fixture.stack->setDepth(3);
        for (const bool isRepeat : {false, true, true, true})
            QVERIFY(isAccepted(fixture, Qt::Key_Back, isRepeat));
        QCOMPARE(fixture.stack->depth(), 2);
        QCOMPARE(popped.size(), 1);
        fixture.press({Qt::Key_Back, Qt::Key_Back});
        QCOMPARE(fixture.stack->depth(), 0);
        QCOMPARE(popped.size(), 3);
    }

    void coveredPagesAreHidden()
    {
        StackFixture fixture;
        fixture.stack->setDepth(1);
        QCOMPARE(fixture.visible(), (QStringList{u"root"_s, u"page0"_s}));
        QTRY_COMPARE(fixture.visible(), QStringList{u"page0"_s});
        fixture.stack->setDepth(2);
        QCOMPARE(fixture.visible(), (QStringList{u"page0"_s, u"page1"_s}));
        QTRY_COMPARE(fixture.visible(), QStringList{u"page1"_s});
        fixture.stack->setDepth(1);
        QCOMPARE(fixture.visible(), (QStringList{u"page0"_s, u"page1"_s}));
        QTRY_COMPARE(fixture.existing(), (QStringList{u"root"_s, u"page0"_s}));
        QCOMPARE(fixture.visible(), QStringList{u"page0"_s});
    }

    void depthCanChangeBySeveralPages()
    {
        StackFixture fixture;
        fixture.stack->setDepth(3);
        QCOMPARE(fixture.front()->objectName(), u"page2"_s);
        QVERIFY(fixture.frontHasFocus());
        QTRY_COMPARE(fixture.visible(), QStringList{u"page2"_s});
        QCOMPARE(fixture.existing().size(), 4);
        QCOMPARE(fixture.log(), QStringList{u"page2"_s}); // the other pages were never visible
        fixture.stack->setDepth(0);
        QVERIFY(fixture.frontHasFocus());
        QCOMPARE(fixture.log(), (QStringList{u"page2"_s, u"-page2"_s, u"root"_s}));
        QCOMPARE(fixture.visible(), (QStringList{u"root"_s, u"page2"_s}));
        QTRY_COMPARE(fixture.existing(), QStringList{u"root"_s});
    }

    void rapidDepthChangesEndInLastOne()
    {
        StackFixture fixture;
        for (const int depth : {1, 0, 1, 2, 0, 3, 2, 1, 2}) {
            fixture.stack->setDepth(depth);
            QVERIFY(fixture.frontHasFocus());
            QVERIFY(fixture.front()->isVisible());
            QTest::qWait(40);
        }
        QTRY_COMPARE(fixture.existing(), (QStringList{u"root"_s, u"page0"_s, u"page1"_s}));
        QTRY_COMPARE(fixture.visible(), QStringList{u"page1"_s});
        QCOMPARE(fixture.front()->opacity(), 1.0);
    }

    void initialDepthIsShownWithoutAnimation()
    {
        StackFixture fixture(u"depth: 2"_s);
        QCOMPARE(fixture.visible(), QStringList{u"page1"_s});
        QCOMPARE(fixture.front()->opacity(), 1.0);
        QVERIFY(fixture.frontHasFocus());
        QCOMPARE(fixture.log(), QStringList{}); // the stack itself has not appeared yet
        fixture.press(Qt::Key_Back);
        QCOMPARE(fixture.front()->objectName(), u"page0"_s);
        QVERIFY(fixture.frontHasFocus());
    }

    void pageCanChangeDepthInOnCompleted()
    {
        TestScreen fixture;
        auto stack = static_cast<NavigationStack*>(
            fixture.load(u"NavigationStack { id: stack; focus: true; FocusScreen { }"
                         "  page: Component { FocusScreen { required property int level;"
                         "    Component.onCompleted: stack.depth = level === 0 ? 3 : stack.depth;"
                         "    onAppeared: stack.depth = level === 2 ? 1 : stack.depth } } }"_s));
        stack->acquireFocus();
        stack->setDepth(1);
        QCOMPARE(stack->depth(), 1);
        QCOMPARE(stack->front()->property("level").toInt(), 0);
        QVERIFY(stack->front()->hasActiveFocus());
        QTRY_COMPARE(stack->childItems().size(), 2);
    }

    void pagesEmitAppearedAndDisappeared()
    {
        StackFixture fixture;
        fixture.stack->setDepth(1);
        fixture.stack->setDepth(2);
        QCOMPARE(fixture.log(), (QStringList{u"page0"_s, u"page1"_s}));
        fixture.stack->setDepth(1);
        QCOMPARE(fixture.log(), (QStringList{u"page0"_s, u"page1"_s, u"-page1"_s, u"page0"_s}));
        fixture.stack->setDepth(0);
        QCOMPARE(fixture.log().mid(4), (QStringList{u"-page0"_s, u"root"_s}));
        QTRY_COMPARE(fixture.log().mid(6), (QStringList{u"destroyed"_s, u"destroyed"_s}));
    }

    void appearanceOfStackIsForwardedToPages()
    {
        StackFixture fixture;
        Q_EMIT fixture.stack->appeared();
        QCOMPARE(fixture.log(), QStringList{u"root"_s});
        fixture.stack->setDepth(1);
        Q_EMIT fixture.stack->disappeared();
        QCOMPARE(fixture.log(), (QStringList{u"root"_s, u"page0"_s, u"-page0"_s, u"-root"_s}));
        Q_EMIT fixture.stack->appeared();
        QCOMPARE(fixture.log().mid(4), QStringList{u"page0"_s});
    }

    void noFrameIsDrawnAfterTransition()
    {
        StackFixture fixture;
        for (const int depth : {1, 0}) {
            fixture.stack->setDepth(depth);
            QTRY_COMPARE(fixture.visible().size(), 1);
            QCOMPARE(fixture.framesAtRest(400), 0);
        }
    }

    void stackInBackgroundDoesNotTakeFocus()
    {
        TestScreen fixture;
        QQuickItem* host = fixture.load(u"FocusScope { focus: true; "_s + plainStack.arg(QString()) +
                                        u"FocusScreen { id: other; objectName: 'other' } }"_s);
        auto stack = static_cast<NavigationStack*>(TestScreen::first(host, "NavigationStack"));
        stack->acquireFocus();
        stack->setDepth(1);
        auto other = host->findChild<FocusScreen*>(u"other"_s);
        other->acquireFocus();
        QVERIFY(other->hasActiveFocus());
        stack->setDepth(0);
        stack->setDepth(1);
        QVERIFY(other->hasActiveFocus());
        stack->acquireFocus();
        QVERIFY(stack->front()->focused()->hasActiveFocus());
    }

    void componentThatIsNoScreenIsRejected()
    {
        TestScreen fixture;
        QTest::ignoreMessage(QtWarningMsg, "a page of a NavigationStack is no FocusScreen");
        auto stack = static_cast<NavigationStack*>(fixture.load(
            u"NavigationStack { depth: 2; FocusScreen { } page: Component { Item { required property int level } } }"_s));
        stack->setDepth(1);
        QTRY_COMPARE(stack->childItems().size(), 1);
        QVERIFY(stack->front());
        stack->setDepth(0);
        QVERIFY(stack->front());
    }
};

QUILLMERE_TEST(NavigationStackTest, QGuiApplication)

} // namespace quillmere

#include "NavigationStackTest.moc"
