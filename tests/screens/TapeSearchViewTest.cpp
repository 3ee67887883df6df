#include "Rows.h"
#include "ScrollArea.h"
#include "StationPalette.h"
#include "TapeSearchFixture.h"
#include "TestMain.h"

namespace quillmere {

/** The tape search: content and focus movement. */
class TapeSearchViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<TapeSearchFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void newSearchShowsOnlyItsField()
    {
        QCOMPARE(m_fixture->focused(), m_fixture->field());
        QVERIFY(m_fixture->text(u"Search the stacks"_s));
        QVERIFY(m_fixture->text(u"A name, a street, a motion — titles and spoken transcripts both."_s));
        QVERIFY(!m_fixture->spinner());
        QVERIFY(!m_fixture->focusable(u"Tape 1"_s));
        for (const QQuickItem* text : TestScreen::texts(m_fixture->search()))
            QVERIFY2(!text->property("text").toString().contains(u"found"_s),
                     "a result count is shown before any search");
        QCOMPARE(m_fixture->http.count(), 0);
    }

    void partsHaveDesignedGeometryAndFont()
    {
        m_fixture->find(u"zoning"_s, {5, 6});
        const QRectF title = m_fixture->areaOnCanvas(TestScreen::texts(m_fixture->search()).first());
        const QRectF hint = m_fixture->areaOf(u"A name, a street, a motion — titles and spoken transcripts both."_s);
        const QRectF field = m_fixture->areaOnCanvas(m_fixture->field());
        const QRectF count = m_fixture->areaOf(u"2 tapes found"_s);
        const QRectF first = m_fixture->areaOfFocusable(u"Tape 5"_s);
        QCOMPARE(title.topLeft(), QPointF(90, 60));
        QCOMPARE(hint.topLeft(), title.bottomLeft() + QPointF(0, 34));
        QCOMPARE(field.topLeft(), hint.bottomLeft() + QPointF(0, 34));
        QCOMPARE(field.right(), 1920.0 - 90);
        QCOMPARE(count.topLeft(), field.bottomLeft() + QPointF(0, 34));
        QCOMPARE(first.topLeft(), count.bottomLeft() + QPointF(6, 34 + 30));
        QCOMPARE(first.size(), QSizeF(230, 230 * 1.5625));
        QCOMPARE(m_fixture->areaOfFocusable(u"Tape 6"_s).topLeft(), first.topRight() + QPointF(40, 0));
        QVERIFY(first.bottom() + 30 < 1080 - 60);
        const QQuickItem* const countText = m_fixture->text(u"2 tapes found"_s);
        QCOMPARE(countText->property("color").value<QColor>(), StationPalette::teal());
        QCOMPARE(countText->property("font").value<QFont>().pixelSize(), 24);
        QCOMPARE(countText->property("font").value<QFont>().weight(), QFont::DemiBold);
    }

    void onlySpinnerIsShownDuringSearch()
    {
        m_fixture->find(u"zoning"_s, {5});
        QVERIFY(!m_fixture->spinner());
        QVERIFY(m_fixture->text(u"1 tape found"_s));
        m_fixture->submit(u"parade"_s);
        QVERIFY(m_fixture->spinner());
        QVERIFY(!m_fixture->text(u"1 tape found"_s));
        QVERIFY(!m_fixture->focusable(u"Tape 5"_s));
        m_fixture->answer(TapeSearchFixture::path(u"parade"_s), TapeSearchFixture::pageOf({}));
        QTRY_VERIFY(!m_fixture->spinner());
        QVERIFY(m_fixture->text(u"No tapes match “parade”. Try a different word."_s));
    }

    void spinnerIsBelowField()
    {
        m_fixture->submit(u"zoning"_s);
        m_fixture->waitForFrame();
        const QQuickItem* const spinner = m_fixture->spinner();
        QCOMPARE(spinner->scale(), 1.4);
        QCOMPARE(spinner->property("color").value<QColor>(), StationPalette::cream());
        const QRectF field = m_fixture->areaOnCanvas(m_fixture->field());
        QCOMPARE(m_fixture->areaOnCanvas(spinner).size(), QSizeF(44, 44) * 1.4);
        QCOMPARE(m_fixture->areaOnCanvas(spinner).left(), field.left());
        QCOMPARE(m_fixture->areaOnCanvas(spinner).top(), field.bottom() + 34);
    }

    void noMatchMessageQuotesQueryAsTyped()
    {
        m_fixture->submit(u"  council  "_s);
        m_fixture->answer(TapeSearchFixture::path(u"council"_s), TapeSearchFixture::pageOf({}));
        QTRY_VERIFY(m_fixture->text(u"No tapes match “  council  ”. Try a different word."_s));
        QCOMPARE(m_fixture->focused(), m_fixture->field());
    }

    void longestQueryFitsInMessage()
    {
        const QString query = QString(200, u'W');
        m_fixture->submit(query);
        m_fixture->answer(TapeSearchFixture::path(query), TapeSearchFixture::pageOf({}));
        const QString line = u"No tapes match “"_s + query + u"”. Try a different word."_s;
        QTRY_VERIFY(m_fixture->text(line));
        m_fixture->waitUntilIdle();
        QVERIFY(m_fixture->isOnScreen(m_fixture->areaOf(line)));
        QVERIFY(m_fixture->text(line)->property("contentWidth").toReal() <= 1740);
    }

    void arrowsMoveFocusAlongResultsAndBackToField()
    {
        m_fixture->find(u"zoning"_s, {5, 6, 7});
        QCOMPARE(m_fixture->focused(), m_fixture->field());
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Down), u"Tape 5"_s);
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Right, Qt::Key_Right, Qt::Key_Right}), u"Tape 7"_s);
        m_fixture->press(Qt::Key_Up);
        QCOMPARE(m_fixture->focused(), m_fixture->field());
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Down), u"Tape 7"_s);
    }

    void manyResultsCreateFewCassettes_data()
    {
        rows<int, int>({"count", "steps"}, {{"many, from first to last", 200, 199}, {"maximum", 10'000, 2}});
    }

    void manyResultsCreateFewCassettes()
    {
        QFETCH(int, count);
        QFETCH(int, steps);
        m_fixture->find(u"zoning"_s, TapeSearchFixture::ids(1, count));
        QVERIFY(m_fixture->text(u"%1 tapes found"_s.arg(count)));
        m_fixture->press(Qt::Key_Down);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Right, steps), u"Tape %1"_s.arg(1 + steps));
        m_fixture->waitUntilIdle();
        QVERIFY(m_fixture->isFocusOnScreen());
        QVERIFY(TestScreen::all(m_fixture->search(), "CardButton").size() < 30);
    }

    void resultOpensItsTapeAndBackReturns()
    {
        m_fixture->find(u"zoning"_s, {5, 6, 7});
        m_fixture->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Select});
        QCOMPARE(m_fixture->search()->depth(), 1);
        m_fixture->waitUntilIdle();
        QCOMPARE(m_fixture->focused()->property("text").toString(), u"Push it in"_s);
        QVERIFY(m_fixture->text(u"Tape 6"_s));
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Back), u"Tape 6"_s);
        QCOMPARE(m_fixture->search()->depth(), 0);
        m_fixture->waitUntilIdle();
        QVERIFY(m_fixture->isFocusOnScreen());
        QCOMPARE(m_fixture->field()->property("text").toString(), u"zoning"_s);
    }

    void tapeOfResultOpensPlayerAndTranscript()
    {
        m_fixture->find(u"zoning"_s, {5});
        m_fixture->press({Qt::Key_Down, Qt::Key_Select, Qt::Key_Select});
        QCOMPARE(m_fixture->front()->objectName(), u"player"_s);
        m_fixture->press({Qt::Key_Back, Qt::Key_Right, Qt::Key_Select});
        QCOMPARE(m_fixture->front()->objectName(), u"transcript"_s);
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Back, Qt::Key_Back}), u"Tape 5"_s);
    }

    void backReturnsToShop()
    {
        m_fixture->find(u"zoning"_s, {5});
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Down, Qt::Key_Back}), u"Search the stacks"_s);
        QVERIFY(!m_fixture->shop()->property("searching").toBool());
        QVERIFY(m_fixture->isOpen());
    }

    void reopenedSearchIsEmpty()
    {
        m_fixture->find(u"zoning"_s, {5});
        m_fixture->pressAndWait(Qt::Key_Back);
        QVERIFY(!m_fixture->search());
        m_fixture->openSearch();
        QCOMPARE(m_fixture->field()->property("text").toString(), QString());
        QVERIFY(!m_fixture->controller()->hasSearched());
        QVERIFY(!m_fixture->focusable(u"Tape 5"_s));
        QCOMPARE(m_fixture->focused(), m_fixture->field());
    }

    void nextSearchIsEnteredAtFirstResult()
    {
        m_fixture->find(u"zoning"_s, TapeSearchFixture::ids(1, 30));
        m_fixture->press(Qt::Key_Down);
        m_fixture->press(Qt::Key_Right, 20);
        m_fixture->waitUntilIdle();
        m_fixture->press(Qt::Key_Up);
        m_fixture->find(u"parade"_s, TapeSearchFixture::ids(1, 30));
        QVERIFY(m_fixture->isOnScreen(m_fixture->areaOfFocusable(u"Tape 1"_s)));
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Down), u"Tape 1"_s);
    }

    void lateAnswerKeepsFocusedTape()
    {
        m_fixture->submit(u"zo"_s);
        m_fixture->find(u"zoning"_s, {5, 6, 7});
        m_fixture->press({Qt::Key_Down, Qt::Key_Right});
        m_fixture->answer(TapeSearchFixture::path(u"zo"_s), TapeSearchFixture::pageOf({8, 9, 4, 6}));
        QTRY_COMPARE(m_fixture->controller()->results().size(), 4);
        QCOMPARE(m_fixture->focusedName(), u"Tape 6"_s);
        m_fixture->waitUntilIdle();
        QVERIFY(m_fixture->text(u"4 tapes found"_s));
        QVERIFY(m_fixture->isFocusOnScreen());
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Left), u"Tape 4"_s);
    }

    void currentResultStaysVisibleAfterLateAnswer_data()
    {
        // Before: tapes 1 to 30, with the focus on tape 13.
        rows<int, int>({"first", "count"}, {{"without the focused tape", 101, 12},
                                            {"fewer than before", 101, 3},
                                            {"focused tape further right", -20, 40},
                                            {"focused tape first", 13, 30}});
    }

    void currentResultStaysVisibleAfterLateAnswer()
    {
        QFETCH(int, first);
        QFETCH(int, count);
        m_fixture->submit(u"zo"_s);
        m_fixture->find(u"zoning"_s, TapeSearchFixture::ids(1, 30));
        m_fixture->press(Qt::Key_Down);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Right, 12), u"Tape 13"_s);
        m_fixture->pressAndWait(Qt::Key_Up);
        m_fixture->answer(TapeSearchFixture::path(u"zo"_s),
                          TapeSearchFixture::pageOf(TapeSearchFixture::ids(first, count)));
        QTRY_COMPARE(m_fixture->controller()->results().constFirst().id, first);
        m_fixture->waitUntilIdle();
        auto strip = static_cast<ScrollArea*>(TestScreen::first(m_fixture->search(), "CassetteStrip"));
        const qreal position = strip->position();
        m_fixture->press(Qt::Key_Down);
        QVERIFY(m_fixture->isFocusOnScreen());
        QCOMPARE(strip->targetPosition(), position);
    }

    void lateFailureReturnsFocusToField()
    {
        m_fixture->submit(u"zo"_s);
        m_fixture->find(u"zoning"_s, {5, 6, 7});
        m_fixture->press({Qt::Key_Down, Qt::Key_Right});
        m_fixture->answer(TapeSearchFixture::path(u"zo"_s), {}, 503);
        QTRY_VERIFY(m_fixture->controller()->showsNoMatch());
        QTRY_COMPARE(m_fixture->focused(), m_fixture->field());
    }

    void openTapeStaysOpenWhenResultsChange()
    {
        m_fixture->submit(u"zo"_s);
        m_fixture->find(u"zoning"_s, {5, 6, 7});
        m_fixture->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Select});
        m_fixture->answer(TapeSearchFixture::path(u"zo"_s), TapeSearchFixture::pageOf({8, 6}));
        QTRY_COMPARE(m_fixture->controller()->results().size(), 2);
        QCOMPARE(m_fixture->search()->depth(), 1);
        QCOMPARE(m_fixture->focused()->property("text").toString(), u"Push it in"_s);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Back), u"Tape 6"_s);
    }

    void searchIsCancelledWhenScreenCloses()
    {
        m_fixture->submit(u"zoning"_s);
        QVERIFY(m_fixture->http.isWaiting(0));
        m_fixture->press(Qt::Key_Back);
        QVERIFY(m_fixture->http.wasCancelled(0));
    }

    void wordTypedWithRemoteIsSearched()
    {
        // The keyboard opens with the focus on "a".
        m_fixture->press({Qt::Key_Select, Qt::Key_Select, Qt::Key_Right, Qt::Key_Select});
        m_fixture->press(Qt::Key_MediaTogglePlayPause);
        m_fixture->answer(TapeSearchFixture::path(u"ab"_s), TapeSearchFixture::pageOf({5, 6}));
        QTRY_VERIFY(m_fixture->controller()->showsResults());
        QCOMPARE(m_fixture->focused(), m_fixture->field());
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Down), u"Tape 5"_s);
    }

private:
    std::unique_ptr<TapeSearchFixture> m_fixture;
};

QUILLMERE_TEST(TapeSearchViewTest, QGuiApplication)

} // namespace quillmere

#include "TapeSearchViewTest.moc"
