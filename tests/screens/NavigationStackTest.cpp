#include "NavigationStack.h"
#include "TestMain.h"
#include "TestScreen.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

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

} // namespace

/** Screens pushed onto each other. */
class NavigationStackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rootHasInitialFocus();
    void pushedPageHasFocusAtOnceAndFadesIn();
    void poppedPageReturnsFocusAtOnceAndFadesOut();
    void backPopsOncePerKeyPress();
    void backOnRootIsNotAccepted();
    void coveredPagesAreHidden();
    void depthCanChangeBySeveralPages();
    void rapidDepthChangesEndInLastOne();
    void initialDepthIsShownWithoutAnimation();
    void pageCanChangeDepthInOnCompleted();
    void pagesEmitAppearedAndDisappeared();
    void appearanceOfStackIsForwardedToPages();
    void noFrameIsDrawnAfterTransition();
    void stackInBackgroundDoesNotTakeFocus();
    void componentThatIsNoScreenIsRejected();

private:
    static NavigationStack* put(TestScreen& fixture, const QString& more = {})
    {
        auto stack = static_cast<NavigationStack*>(fixture.load(plainStack.arg(more)));
        stack->acquireFocus();
        return stack;
    }
    static QStringList log(const NavigationStack* stack) { return stack->property("log").toStringList(); }
    static QStringList visible(const NavigationStack* stack)
    {
        QStringList names;
        const auto children = stack->childItems();
        for (const QQuickItem* child : children) {
            if (child->isVisible())
                names.append(child->objectName());
        }
        return names;
    }
    static QStringList existing(const NavigationStack* stack)
    {
        QStringList names;
        const auto children = stack->childItems();
        for (const QQuickItem* child : children)
            names.append(child->objectName());
        return names;
    }
};

void NavigationStackTest::rootHasInitialFocus()
{
    TestScreen fixture;
    NavigationStack* stack = put(fixture);
    QCOMPARE(stack->front()->objectName(), u"root"_s);
    QVERIFY(stack->front()->focused());
    QVERIFY(stack->front()->focused()->hasActiveFocus());
    QCOMPARE(stack->front()->size(), QSizeF(1920, 1080));
}

void NavigationStackTest::pushedPageHasFocusAtOnceAndFadesIn()
{
    TestScreen fixture;
    NavigationStack* stack = put(fixture);
    stack->setDepth(1);
    QPointer<FocusScreen> page = stack->front();
    QCOMPARE(page->objectName(), u"page0"_s);
    QCOMPARE(page->size(), QSizeF(1920, 1080));
    QVERIFY(page->focused()->hasActiveFocus());
    QCOMPARE(page->opacity(), 0.0);
    QTRY_VERIFY(page->opacity() > 0 && page->opacity() < 1);
    QTRY_COMPARE(page->opacity(), 1.0);
}

void NavigationStackTest::poppedPageReturnsFocusAtOnceAndFadesOut()
{
    TestScreen fixture;
    NavigationStack* stack = put(fixture);
    fixture.press(Qt::Key_Right);
    Focusable* second = stack->front()->focused();
    stack->setDepth(1);
    QPointer<FocusScreen> page = stack->front();
    QTRY_COMPARE(visible(stack), QStringList{u"page0"_s});
    stack->setDepth(0);
    QVERIFY(second->hasActiveFocus());
    QVERIFY(!page->isEnabled());
    QCOMPARE(visible(stack), (QStringList{u"root"_s, u"page0"_s}));
    fixture.press(Qt::Key_Left);
    QVERIFY(stack->front()->focused() != second);
    QVERIFY(stack->front()->focused()->hasActiveFocus());
    QTRY_VERIFY(!page);
}

void NavigationStackTest::backPopsOncePerKeyPress()
{
    TestScreen fixture;
    NavigationStack* stack = put(fixture);
    QSignalSpy popped(stack, &NavigationStack::popped);
    stack->setDepth(3);
    for (const bool isRepeat : {false, true, true, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Back, Qt::NoModifier, {}, isRepeat);
        QCoreApplication::sendEvent(&fixture.window(), &press);
        QVERIFY(press.isAccepted());
    }
    QCOMPARE(stack->depth(), 2);
    QCOMPARE(popped.size(), 1);
    fixture.press(Qt::Key_Back);
    fixture.press(Qt::Key_Back);
    QCOMPARE(stack->depth(), 0);
    QCOMPARE(popped.size(), 3);
}

void NavigationStackTest::backOnRootIsNotAccepted()
{
    TestScreen fixture;
    NavigationStack* stack = put(fixture);
    QSignalSpy popped(stack, &NavigationStack::popped);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Back, Qt::NoModifier);
    QCoreApplication::sendEvent(&fixture.window(), &press);
    QVERIFY(!press.isAccepted());
    QVERIFY(popped.isEmpty());
}

void NavigationStackTest::coveredPagesAreHidden()
{
    TestScreen fixture;
    NavigationStack* stack = put(fixture);
    stack->setDepth(1);
    QCOMPARE(visible(stack), (QStringList{u"root"_s, u"page0"_s}));
    QTRY_COMPARE(visible(stack), QStringList{u"page0"_s});
    stack->setDepth(2);
    QCOMPARE(visible(stack), (QStringList{u"page0"_s, u"page1"_s}));
    QTRY_COMPARE(visible(stack), QStringList{u"page1"_s});
    stack->setDepth(1);
    QCOMPARE(visible(stack), (QStringList{u"page0"_s, u"page1"_s}));
    QTRY_COMPARE(existing(stack), (QStringList{u"root"_s, u"page0"_s}));
    QCOMPARE(visible(stack), QStringList{u"page0"_s});
}

void NavigationStackTest::depthCanChangeBySeveralPages()
{
    TestScreen fixture;
    NavigationStack* stack = put(fixture);
    stack->setDepth(3);
    QCOMPARE(stack->front()->objectName(), u"page2"_s);
    QVERIFY(stack->front()->focused()->hasActiveFocus());
    QTRY_COMPARE(visible(stack), QStringList{u"page2"_s});
    QCOMPARE(existing(stack).size(), 4);
    QCOMPARE(log(stack), QStringList{u"page2"_s}); // the other pages were never visible
    stack->setDepth(0);
    QVERIFY(stack->front()->focused()->hasActiveFocus());
    QCOMPARE(log(stack), (QStringList{u"page2"_s, u"-page2"_s, u"root"_s}));
    QCOMPARE(visible(stack), (QStringList{u"root"_s, u"page2"_s}));
    QTRY_COMPARE(existing(stack), QStringList{u"root"_s});
}

void NavigationStackTest::rapidDepthChangesEndInLastOne()
{
    TestScreen fixture;
    NavigationStack* stack = put(fixture);
    for (const int depth : {1, 0, 1, 2, 0, 3, 2, 1, 2}) {
        stack->setDepth(depth);
        QVERIFY(stack->front()->focused()->hasActiveFocus());
        QVERIFY(stack->front()->isVisible());
        QTest::qWait(40);
    }
    QTRY_COMPARE(existing(stack), (QStringList{u"root"_s, u"page0"_s, u"page1"_s}));
    QTRY_COMPARE(visible(stack), QStringList{u"page1"_s});
    QCOMPARE(stack->front()->opacity(), 1.0);
}

void NavigationStackTest::initialDepthIsShownWithoutAnimation()
{
    TestScreen fixture;
    NavigationStack* stack = put(fixture, u"depth: 2"_s);
    QCOMPARE(visible(stack), QStringList{u"page1"_s});
    QCOMPARE(stack->front()->opacity(), 1.0);
    QVERIFY(stack->front()->focused()->hasActiveFocus());
    QCOMPARE(log(stack), QStringList{}); // the stack itself has not appeared yet
    fixture.press(Qt::Key_Back);
    QCOMPARE(stack->front()->objectName(), u"page0"_s);
    QVERIFY(stack->front()->focused()->hasActiveFocus());
}

void NavigationStackTest::pageCanChangeDepthInOnCompleted()
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

void NavigationStackTest::pagesEmitAppearedAndDisappeared()
{
    TestScreen fixture;
    NavigationStack* stack = put(fixture);
    stack->setDepth(1);
    stack->setDepth(2);
    QCOMPARE(log(stack), (QStringList{u"page0"_s, u"page1"_s}));
    stack->setDepth(1);
    QCOMPARE(log(stack), (QStringList{u"page0"_s, u"page1"_s, u"-page1"_s, u"page0"_s}));
    stack->setDepth(0);
    QCOMPARE(log(stack).mid(4), (QStringList{u"-page0"_s, u"root"_s}));
    QTRY_COMPARE(log(stack).mid(6), (QStringList{u"destroyed"_s, u"destroyed"_s}));
}

void NavigationStackTest::appearanceOfStackIsForwardedToPages()
{
    TestScreen fixture;
    NavigationStack* stack = put(fixture);
    Q_EMIT stack->appeared();
    QCOMPARE(log(stack), QStringList{u"root"_s});
    stack->setDepth(1);
    Q_EMIT stack->disappeared();
    QCOMPARE(log(stack), (QStringList{u"root"_s, u"page0"_s, u"-page0"_s, u"-root"_s}));
    Q_EMIT stack->appeared();
    QCOMPARE(log(stack).mid(4), QStringList{u"page0"_s});
}

void NavigationStackTest::noFrameIsDrawnAfterTransition()
{
    TestScreen fixture;
    NavigationStack* stack = put(fixture);
    for (const int depth : {1, 0}) {
        stack->setDepth(depth);
        QTRY_COMPARE(visible(stack).size(), 1);
        fixture.waitUntilIdle();
        const int frames = fixture.frames();
        QTest::qWait(300);
        QCOMPARE(fixture.frames(), frames);
    }
}

void NavigationStackTest::stackInBackgroundDoesNotTakeFocus()
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

void NavigationStackTest::componentThatIsNoScreenIsRejected()
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

QUILLMERE_TEST(NavigationStackTest, QGuiApplication)

} // namespace quillmere

#include "NavigationStackTest.moc"
