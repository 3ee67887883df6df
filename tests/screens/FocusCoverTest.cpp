#include "FocusStage.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString screenWith(const char* name, const char* item)
{
    return FocusStage::item("FocusScreen", name, {0, 0, 1920, 1080}, FocusStage::focusable(item, {0, 0, 100, 100}));
}

/** Shows a row whose "b" had focus, then covers it with another screen. */
void showRowUnderCover(FocusStage& stage)
{
    stage.showScreen(FocusStage::row() + screenWith("cover", "onCover"));
    stage.screen().focus(&stage.named("b"));
    stage.screen().setCover(&stage.named<FocusScreen>("cover"));
    stage.screen().acquireFocus();
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
    FocusStage stage;
    stage.showScreen(FocusStage::row() + screenWith("page", "onPage"));
    stage.named<FocusScreen>("page").acquireFocus();
    stage.screen().setFocus(false);
    QVERIFY(stage.focused() != u"onPage"_s);
    stage.screen().setFocus(true);
    QCOMPARE(stage.focused(), u"onPage"_s);
}

void FocusCoverTest::coverHasFocusUntilItIsRemoved()
{
    FocusStage stage;
    showRowUnderCover(stage);
    QCOMPARE(stage.focused(), u"onCover"_s);
    QVERIFY(!stage.named("b").hasActiveFocus());
    QCOMPARE(stage.screen().focused(), &stage.named("b"));

    stage.screen().setCover(nullptr);
    stage.screen().acquireFocus();
    QCOMPARE(stage.focused(), u"b"_s);
}

void FocusCoverTest::itemDestroyedUnderCoverIsReplacedWhenCoverIsRemoved()
{
    FocusStage stage;
    showRowUnderCover(stage);
    delete &stage.named("b");
    QCoreApplication::processEvents();
    QCOMPARE(stage.focused(), u"onCover"_s);
    stage.screen().focus(&stage.named("a"));
    QCOMPARE(stage.focused(), u"onCover"_s);
    delete &stage.named("a");

    stage.screen().setCover(nullptr);
    stage.screen().acquireFocus();
    QCOMPARE(stage.focused(), u"c"_s);
}

void FocusCoverTest::itemHiddenTemporarilyUnderCoverKeepsFocus()
{
    FocusStage stage;
    showRowUnderCover(stage);
    stage.named("b").setVisible(false);
    QCoreApplication::processEvents();
    stage.named("b").setVisible(true);
    stage.screen().setCover(nullptr);
    stage.screen().acquireFocus();
    QCOMPARE(stage.focused(), u"b"_s);
}

void FocusCoverTest::itemHiddenTemporarilyOnBackgroundScreenKeepsFocus()
{
    FocusStage stage;
    stage.load(u"Item { FocusScreen { objectName: 'back'\n"_s + FocusStage::row() + u"}\n"_s +
               screenWith("front", "inFront") + u"}"_s);
    const auto screens = Stage::all(stage.window().contentItem(), "FocusScreen");
    auto* const back = qobject_cast<FocusScreen*>(screens.first());
    auto* const item = back->findChild<Focusable*>(u"b"_s);
    back->acquireFocus();
    back->focus(item);
    qobject_cast<FocusScreen*>(screens.last())->acquireFocus();
    QCOMPARE(stage.focused(), u"inFront"_s);
    item->setVisible(false);
    QCoreApplication::processEvents();
    item->setVisible(true);
    back->acquireFocus();
    QCOMPARE(stage.focused(), u"b"_s);
}

void FocusCoverTest::hiddenScreenKeepsItsFocusedItem()
{
    FocusStage stage;
    stage.showScreen(FocusStage::row());
    stage.screen().focus(&stage.named("b"));
    stage.screen().setVisible(false);
    QCoreApplication::processEvents();
    stage.screen().acquireFocus();
    QCOMPARE(stage.screen().focused(), &stage.named("b"));
    stage.screen().setVisible(true);
    stage.screen().acquireFocus();
    QCOMPARE(stage.focused(), u"b"_s);
}

void FocusCoverTest::backgroundScreenDoesNotGetActiveFocus()
{
    FocusStage stage;
    const QString page =
        stage.focusable("onPage", {0, 0, 100, 100}) + stage.focusable("alsoOnPage", {0, 200, 100, 100});
    stage.showScreen(FocusStage::row() + stage.item("FocusScreen", "page", {0, 0, 1920, 1080}, page));
    auto& page_ = stage.named<FocusScreen>("page");
    page_.acquireFocus();
    page_.focus(&stage.named("alsoOnPage"));
    stage.screen().acquireFocus();
    QCOMPARE(stage.focused(), u"a"_s);
    page_.focus(&stage.named("onPage"));
    QCoreApplication::processEvents();
    QCOMPARE(stage.focused(), u"a"_s);
    page_.acquireFocus();
    QCOMPARE(stage.focused(), u"onPage"_s);
}

void FocusCoverTest::focusReturnsToOuterScreenWhenInnerOneIsDestroyed()
{
    FocusStage stage;
    stage.showScreen(FocusStage::row() + screenWith("page", "onPage"));
    auto& page = stage.named<FocusScreen>("page");
    page.acquireFocus();
    delete &page;
    QCOMPARE(stage.focused(), u"screen"_s);
    stage.screen().acquireFocus();
    QCOMPARE(stage.focused(), u"a"_s);
}

QUILLMERE_TEST(FocusCoverTest, QGuiApplication)
#include "FocusCoverTest.moc"
