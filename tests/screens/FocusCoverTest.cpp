#include "FocusFixture.h"
#include "TestMain.h"

namespace quillmere {

namespace {

QString screenWith(const char* name, const char* item)
{
    return qmlItem("FocusScreen", name, {0, 0, 1920, 1080}, focusable(item, {0, 0, 100, 100}));
}

/** A row whose "b" had focus, covered by another screen. */
struct CoveredRow : FocusFixture
{
    CoveredRow() : FocusFixture(row() + screenWith("cover", "onCover"))
    {
        focus("b");
        screen->setCover(&named<FocusScreen>("cover"));
        screen->acquireFocus();
    }

    void uncover()
    {
        screen->setCover(nullptr);
        screen->acquireFocus();
    }
};

} // namespace

/** Focus when screens cover others, are destroyed, or are hidden. */
class FocusCoverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void screenPassesRegainedFocusToInnerScreen()
    {
        FocusFixture fixture(row() + screenWith("page", "onPage"));
        fixture.named<FocusScreen>("page").acquireFocus();
        fixture.screen->setFocus(false);
        QVERIFY(fixture.focusedObjectName() != u"onPage"_s);
        fixture.screen->setFocus(true);
        QCOMPARE(fixture.focusedObjectName(), u"onPage"_s);
    }

    void coverHasFocusUntilItIsRemoved()
    {
        CoveredRow fixture;
        QCOMPARE(fixture.focusedObjectName(), u"onCover"_s);
        QVERIFY(!fixture.named("b").hasActiveFocus());
        QCOMPARE(fixture.screen->focused(), &fixture.named("b"));
        fixture.uncover();
        QCOMPARE(fixture.focusedObjectName(), u"b"_s);
    }

    void itemDestroyedUnderCoverIsReplacedWhenCoverIsRemoved()
    {
        CoveredRow fixture;
        delete &fixture.named("b");
        QCoreApplication::processEvents();
        QCOMPARE(fixture.focusedObjectName(), u"onCover"_s);
        fixture.focus("a");
        QCOMPARE(fixture.focusedObjectName(), u"onCover"_s);
        delete &fixture.named("a");
        fixture.uncover();
        QCOMPARE(fixture.focusedObjectName(), u"c"_s);
    }

    void itemHiddenTemporarilyUnderCoverKeepsFocus()
    {
        CoveredRow fixture;
        fixture.named("b").setVisible(false);
        QCoreApplication::processEvents();
        fixture.named("b").setVisible(true);
        fixture.uncover();
        QCOMPARE(fixture.focusedObjectName(), u"b"_s);
    }

    void itemHiddenTemporarilyOnBackgroundScreenKeepsFocus()
    {
        TestScreen fixture;
        const QQuickItem* const root = fixture.load(u"Item { FocusScreen { objectName: 'back'\n"_s + row() + u"}\n"_s +
                                                    screenWith("front", "inFront") + u"}"_s);
        auto* const back = root->findChild<FocusScreen*>(u"back"_s);
        auto* const b = back->findChild<Focusable*>(u"b"_s);
        back->acquireFocus();
        back->focus(b);
        root->findChild<FocusScreen*>(u"front"_s)->acquireFocus();
        QCOMPARE(fixture.focused()->objectName(), u"inFront"_s);
        b->setVisible(false);
        QCoreApplication::processEvents();
        b->setVisible(true);
        back->acquireFocus();
        QCOMPARE(fixture.focused(), b);
    }

    void hiddenScreenKeepsItsFocusedItem()
    {
        FocusFixture fixture(row());
        fixture.focus("b");
        fixture.screen->setVisible(false);
        QCoreApplication::processEvents();
        fixture.screen->acquireFocus();
        QCOMPARE(fixture.screen->focused(), &fixture.named("b"));
        fixture.screen->setVisible(true);
        fixture.screen->acquireFocus();
        QCOMPARE(fixture.focusedObjectName(), u"b"_s);
    }

    void backgroundScreenDoesNotGetActiveFocus()
    {
        FocusFixture fixture(
            row() + qmlItem("FocusScreen", "page", {0, 0, 1920, 1080},
                            focusable("onPage", {0, 0, 100, 100}) + focusable("alsoOnPage", {0, 200, 100, 100})));
        auto& page = fixture.named<FocusScreen>("page");
        page.acquireFocus();
        page.focus(&fixture.named("alsoOnPage"));
        fixture.screen->acquireFocus();
        QCOMPARE(fixture.focusedObjectName(), u"a"_s);
        page.focus(&fixture.named("onPage"));
        QCoreApplication::processEvents();
        QCOMPARE(fixture.focusedObjectName(), u"a"_s);
        page.acquireFocus();
        QCOMPARE(fixture.focusedObjectName(), u"onPage"_s);
    }

    void focusReturnsToOuterScreenWhenInnerOneIsDestroyed()
    {
        FocusFixture fixture(row() + screenWith("page", "onPage"));
        auto& page = fixture.named<FocusScreen>("page");
        page.acquireFocus();
        delete &page;
        QCOMPARE(fixture.focusedObjectName(), u"screen"_s);
        fixture.screen->acquireFocus();
        QCOMPARE(fixture.focusedObjectName(), u"a"_s);
    }
};

QUILLMERE_TEST(FocusCoverTest, QGuiApplication)

} // namespace quillmere

#include "FocusCoverTest.moc"
