#include "FocusStage.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString screenWith(const char* name, const char* thing)
{
    return FocusStage::item("FocusScreen", name, {0, 0, 1920, 1080}, FocusStage::thing(thing, {0, 0, 100, 100}));
}

/** A row whose "b" had the focus before a screen came over it. */
void walkUnderACover(FocusStage& stage)
{
    stage.walk(FocusStage::row() + screenWith("cover", "onCover"));
    stage.screen().focus(&stage.named("b"));
    stage.screen().setCover(&stage.named<FocusScreen>("cover"));
    stage.screen().takeFocus();
}

} // namespace

/** What holds the focus as screens lie over others, go, and are hidden. */
class FocusCoverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aScreenThatGetsTheFocusBackLeavesItToTheScreenWithin();
    void aCoverHasTheKeysAndGivesThemBack();
    void whatVanishedUnderACoverIsReplacedAfterwards();
    void whatIsAwayForAWhileUnderACoverKeepsTheFocus();
    void whatIsAwayForAWhileOnAScreenNotInFrontKeepsTheFocus();
    void aHiddenScreenRemembersItsFocus();
    void aScreenThatIsNotInFrontDoesNotTakeTheKeys();
    void aScreenGoesWithItsFocusedThing();
};

void FocusCoverTest::aScreenThatGetsTheFocusBackLeavesItToTheScreenWithin()
{
    FocusStage stage;
    stage.walk(FocusStage::row() + screenWith("page", "onPage"));
    stage.named<FocusScreen>("page").takeFocus();
    stage.screen().setFocus(false);
    QVERIFY(stage.focused() != u"onPage"_s);
    stage.screen().setFocus(true);
    QCOMPARE(stage.focused(), u"onPage"_s);
}

void FocusCoverTest::aCoverHasTheKeysAndGivesThemBack()
{
    FocusStage stage;
    walkUnderACover(stage);
    QCOMPARE(stage.focused(), u"onCover"_s);
    QVERIFY(!stage.named("b").hasActiveFocus());
    QCOMPARE(stage.screen().focused(), &stage.named("b"));

    stage.screen().setCover(nullptr);
    stage.screen().takeFocus();
    QCOMPARE(stage.focused(), u"b"_s);
}

void FocusCoverTest::whatVanishedUnderACoverIsReplacedAfterwards()
{
    FocusStage stage;
    walkUnderACover(stage);
    delete &stage.named("b");
    QCoreApplication::processEvents();
    QCOMPARE(stage.focused(), u"onCover"_s);
    stage.screen().focus(&stage.named("a"));
    QCOMPARE(stage.focused(), u"onCover"_s);
    delete &stage.named("a");

    stage.screen().setCover(nullptr);
    stage.screen().takeFocus();
    QCOMPARE(stage.focused(), u"c"_s);
}

void FocusCoverTest::whatIsAwayForAWhileUnderACoverKeepsTheFocus()
{
    FocusStage stage;
    walkUnderACover(stage);
    stage.named("b").setVisible(false);
    QCoreApplication::processEvents();
    stage.named("b").setVisible(true);
    stage.screen().setCover(nullptr);
    stage.screen().takeFocus();
    QCOMPARE(stage.focused(), u"b"_s);
}

void FocusCoverTest::whatIsAwayForAWhileOnAScreenNotInFrontKeepsTheFocus()
{
    FocusStage stage;
    stage.put(u"Item { FocusScreen { objectName: 'back'\n"_s + FocusStage::row() + u"}\n"_s +
              screenWith("front", "inFront") + u"}"_s);
    const auto screens = Stage::all(stage.window().contentItem(), "FocusScreen");
    auto* const back = qobject_cast<FocusScreen*>(screens.first());
    auto* const thing = back->findChild<Focusable*>(u"b"_s);
    back->takeFocus();
    back->focus(thing);
    qobject_cast<FocusScreen*>(screens.last())->takeFocus();
    QCOMPARE(stage.focused(), u"inFront"_s);
    thing->setVisible(false);
    QCoreApplication::processEvents();
    thing->setVisible(true);
    back->takeFocus();
    QCOMPARE(stage.focused(), u"b"_s);
}

void FocusCoverTest::aHiddenScreenRemembersItsFocus()
{
    FocusStage stage;
    stage.walk(FocusStage::row());
    stage.screen().focus(&stage.named("b"));
    stage.screen().setVisible(false);
    QCoreApplication::processEvents();
    stage.screen().takeFocus();
    QCOMPARE(stage.screen().focused(), &stage.named("b"));
    stage.screen().setVisible(true);
    stage.screen().takeFocus();
    QCOMPARE(stage.focused(), u"b"_s);
}

void FocusCoverTest::aScreenThatIsNotInFrontDoesNotTakeTheKeys()
{
    FocusStage stage;
    const QString page = stage.thing("onPage", {0, 0, 100, 100}) + stage.thing("alsoOnPage", {0, 200, 100, 100});
    stage.walk(FocusStage::row() + stage.item("FocusScreen", "page", {0, 0, 1920, 1080}, page));
    auto& page_ = stage.named<FocusScreen>("page");
    page_.takeFocus();
    page_.focus(&stage.named("alsoOnPage"));
    stage.screen().takeFocus();
    QCOMPARE(stage.focused(), u"a"_s);
    page_.focus(&stage.named("onPage"));
    QCoreApplication::processEvents();
    QCOMPARE(stage.focused(), u"a"_s);
    page_.takeFocus();
    QCOMPARE(stage.focused(), u"onPage"_s);
}

void FocusCoverTest::aScreenGoesWithItsFocusedThing()
{
    FocusStage stage;
    stage.walk(FocusStage::row() + screenWith("page", "onPage"));
    auto& page = stage.named<FocusScreen>("page");
    page.takeFocus();
    delete &page;
    QCOMPARE(stage.focused(), u"screen"_s);
    stage.screen().takeFocus();
    QCOMPARE(stage.focused(), u"a"_s);
}

QTEST_MAIN(FocusCoverTest)
#include "FocusCoverTest.moc"
