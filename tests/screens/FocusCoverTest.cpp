#include "FocusFixture.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

QString screenWith(const char* name, const char* item)
{
    return FocusFixture::item("FocusScreen", name, {0, 0, 1920, 1080}, FocusFixture::focusable(item, {0, 0, 100, 100}));
}

/** Shows a row whose "b" had focus, then covers it with another screen. */
void showRowUnderCover(FocusFixture& fixture)
{
    fixture.showScreen(FocusFixture::row() + screenWith("cover", "onCover"));
    fixture.screen().focus(&fixture.named("b"));
    fixture.screen().setCover(&fixture.named<FocusScreen>("cover"));
    fixture.screen().acquireFocus();
}

} // namespace

/** Focus when screens cover others, are destroyed, or are hidden. */
class FocusCoverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void screenPassesRegainedFocusToInnerScreen();
    void coverHasFocusUntilItIsRemoved();
    void itemDestroyedUnderCoverIsReplacedWhenCoverIsRemoved();
    void itemHiddenTemporarilyUnderCoverKeepsFocus();
    void itemHiddenTemporarilyOnBackgroundScreenKeepsFocus();
    void hiddenScreenKeepsItsFocusedItem();
    void backgroundScreenDoesNotGetActiveFocus();
    void focusReturnsToOuterScreenWhenInnerOneIsDestroyed();
};

void FocusCoverTest::screenPassesRegainedFocusToInnerScreen()
{
    FocusFixture fixture;
    fixture.showScreen(FocusFixture::row() + screenWith("page", "onPage"));
    fixture.named<FocusScreen>("page").acquireFocus();
    fixture.screen().setFocus(false);
    QVERIFY(fixture.focusedObjectName() != u"onPage"_s);
    fixture.screen().setFocus(true);
    QCOMPARE(fixture.focusedObjectName(), u"onPage"_s);
}

void FocusCoverTest::coverHasFocusUntilItIsRemoved()
{
    FocusFixture fixture;
    showRowUnderCover(fixture);
    QCOMPARE(fixture.focusedObjectName(), u"onCover"_s);
    QVERIFY(!fixture.named("b").hasActiveFocus());
    QCOMPARE(fixture.screen().focused(), &fixture.named("b"));

    fixture.screen().setCover(nullptr);
    fixture.screen().acquireFocus();
    QCOMPARE(fixture.focusedObjectName(), u"b"_s);
}

void FocusCoverTest::itemDestroyedUnderCoverIsReplacedWhenCoverIsRemoved()
{
    FocusFixture fixture;
    showRowUnderCover(fixture);
    delete &fixture.named("b");
    QCoreApplication::processEvents();
    QCOMPARE(fixture.focusedObjectName(), u"onCover"_s);
    fixture.screen().focus(&fixture.named("a"));
    QCOMPARE(fixture.focusedObjectName(), u"onCover"_s);
    delete &fixture.named("a");

    fixture.screen().setCover(nullptr);
    fixture.screen().acquireFocus();
    QCOMPARE(fixture.focusedObjectName(), u"c"_s);
}

void FocusCoverTest::itemHiddenTemporarilyUnderCoverKeepsFocus()
{
    FocusFixture fixture;
    showRowUnderCover(fixture);
    fixture.named("b").setVisible(false);
    QCoreApplication::processEvents();
    fixture.named("b").setVisible(true);
    fixture.screen().setCover(nullptr);
    fixture.screen().acquireFocus();
    QCOMPARE(fixture.focusedObjectName(), u"b"_s);
}

void FocusCoverTest::itemHiddenTemporarilyOnBackgroundScreenKeepsFocus()
{
    FocusFixture fixture;
    const QQuickItem* const root = fixture.load(u"Item { FocusScreen { objectName: 'back'\n"_s + FocusFixture::row() +
                                                u"}\n"_s + screenWith("front", "inFront") + u"}"_s);
    auto* const back = root->findChild<FocusScreen*>(u"back"_s);
    auto* const item = back->findChild<Focusable*>(u"b"_s);
    back->acquireFocus();
    back->focus(item);
    root->findChild<FocusScreen*>(u"front"_s)->acquireFocus();
    QCOMPARE(fixture.focusedObjectName(), u"inFront"_s);
    item->setVisible(false);
    QCoreApplication::processEvents();
    item->setVisible(true);
    back->acquireFocus();
    QCOMPARE(fixture.focusedObjectName(), u"b"_s);
}

void FocusCoverTest::hiddenScreenKeepsItsFocusedItem()
{
    FocusFixture fixture;
    fixture.showScreen(FocusFixture::row());
    fixture.screen().focus(&fixture.named("b"));
    fixture.screen().setVisible(false);
    QCoreApplication::processEvents();
    fixture.screen().acquireFocus();
    QCOMPARE(fixture.screen().focused(), &fixture.named("b"));
    fixture.screen().setVisible(true);
    fixture.screen().acquireFocus();
    QCOMPARE(fixture.focusedObjectName(), u"b"_s);
}

void FocusCoverTest::backgroundScreenDoesNotGetActiveFocus()
{
    FocusFixture fixture;
    const QString page =
        fixture.focusable("onPage", {0, 0, 100, 100}) + fixture.focusable("alsoOnPage", {0, 200, 100, 100});
    fixture.showScreen(FocusFixture::row() + fixture.item("FocusScreen", "page", {0, 0, 1920, 1080}, page));
    auto& page_ = fixture.named<FocusScreen>("page");
    page_.acquireFocus();
    page_.focus(&fixture.named("alsoOnPage"));
    fixture.screen().acquireFocus();
    QCOMPARE(fixture.focusedObjectName(), u"a"_s);
    page_.focus(&fixture.named("onPage"));
    QCoreApplication::processEvents();
    QCOMPARE(fixture.focusedObjectName(), u"a"_s);
    page_.acquireFocus();
    QCOMPARE(fixture.focusedObjectName(), u"onPage"_s);
}

void FocusCoverTest::focusReturnsToOuterScreenWhenInnerOneIsDestroyed()
{
    FocusFixture fixture;
    fixture.showScreen(FocusFixture::row() + screenWith("page", "onPage"));
    auto& page = fixture.named<FocusScreen>("page");
    page.acquireFocus();
    delete &page;
    QCOMPARE(fixture.focusedObjectName(), u"screen"_s);
    fixture.screen().acquireFocus();
    QCOMPARE(fixture.focusedObjectName(), u"a"_s);
}

QUILLMERE_TEST(FocusCoverTest, QGuiApplication)

} // namespace quillmere

#include "FocusCoverTest.moc"
