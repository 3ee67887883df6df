#include "ShopHouse.h"

#include <QAccessible>
#include <QRegularExpression>
#include <QSignalSpy>

/** The shop as the viewer sees and walks it. */
class RewinderyViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyTextOfTheShopIsRead();
    void thePartsStandWhereTheyShould();
    void textsOfOneLineStandOnOneBaseline();
    void aThingIsHeardByItsName();
    void longNamesDoNotOverlap();
    void theFocusBeginsAtTheSearch();
    void theFocusGoesAlongARowAndBack();
    void aRowIsEnteredWhereItWasLeft();
    void upFromAnyCassetteIsTheCounter();
    void withTheFirstShelfTheCounterIsInSight();
    void theFootIsInSightWithTheLastShelf();
    void aLongRowHasFewCassettesAtATime();
    void aRefreshKeepsTheViewersPlace_data();
    void aRefreshKeepsTheViewersPlace();
    void aRefreshLeavesTheCounterFocused();
    void withoutShelvesThePanelSaysWhy();
    void tryingAgainSpinsUntilTheShelvesAreThere();
    void tryingAgainInVainMayBeRepeated();
    void marketsAreChosenByTheirChips();
    void manyChipsAreAllReached();
    void thePickerMayGoWhileItIsWalked();
    void aMarketWithoutTapesIsLeftWithTheShop();
    void aCassetteOpensItsTapeAndBackReturnsToIt();
    void backLeavesTheShopOnce();
    void theSearchIsAFlagUntilItHasAScreen();
    void theSearchScreenCoversTheShop();

private:
    void show(const QString& shelves);
    void showMarkets(const QStringList& slugs);
    QRectF areaOf(const QString& text) const { return m_house->area(m_house->text(text)); }
    QRectF areaOfThing(const QString& name) const { return m_house->area(m_house->thing(name)); }
    static bool isInSight(const QRectF& area);
    bool isFocusInSight() const { return isInSight(m_house->area(m_house->focused())); }

    std::unique_ptr<ShopHouse> m_house;
};

void RewinderyViewTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_house = std::make_unique<ShopHouse>();
}

void RewinderyViewTest::cleanup()
{
    m_house.reset();
}

void RewinderyViewTest::show(const QString& shelves)
{
    m_house->store.setShelves(shelvesOf(shelves));
    m_house->stage.waitForFrame();
}

void RewinderyViewTest::showMarkets(const QStringList& slugs)
{
    m_house->setMarkets(slugs);
    m_house->stage.waitForFrame();
}

bool RewinderyViewTest::isInSight(const QRectF& area)
{
    return QRectF(0, 0, 1920, 1080).contains(area);
}

void RewinderyViewTest::everyTextOfTheShopIsRead()
{
    show(u"Staff Picks: 1 2 3"_s);
    showMarkets({u"a"_s, u"b"_s});
    const QString stock = u"99 tapes in stock — pull one off the shelf and push it into the set. "
                          "Every tape here plays on this television."_s;
    const QString credits = u"Rewindery Home Video — A Captain Lowe of the Waterways Production. "
                            "Be Kind, Please Rewind."_s;
    for (const QString& text :
         {u"Rewindery"_s, u"HOME VIDEO"_s, u"OPEN 24 HRS"_s, stock, u"Search the stacks"_s, u"All markets"_s, u"99"_s,
          u"A"_s, u"1"_s, u"B"_s, u"2"_s, u"Staff Picks"_s, u"3"_s, u"City Council · 2024"_s, credits,
          u"Captain Lowe and his crew are this shop's own invention."_s})
        QVERIFY2(m_house->text(text), qPrintable(text));
    QVERIFY(!m_house->text(u"Try again"_s));
    showMarkets({u"a"_s});
    QVERIFY(!m_house->text(u"All markets"_s));
    QVERIFY(!m_house->text(u"A"_s));
}

void RewinderyViewTest::thePartsStandWhereTheyShould()
{
    show(u"Staff Picks: 1 2 4; Procedurals: 3"_s);
    showMarkets({u"a"_s, u"b"_s});
    const QRectF sign = areaOf(u"Rewindery"_s);
    QCOMPARE(sign.topLeft(), QPointF(70, 50));
    QCOMPARE(areaOf(u"HOME VIDEO"_s).left(), sign.right() + 24);
    QCOMPARE(areaOf(u"OPEN 24 HRS"_s).left(), areaOf(u"HOME VIDEO"_s).right() + 24);

    const QRectF search = areaOfThing(u"Search the stacks"_s);
    const QRectF all = areaOfThing(u"All markets 99"_s);
    QCOMPARE(search.left(), 70.0);
    QCOMPARE(all.left(), search.right() + 20);
    QCOMPARE(all.center().y(), search.center().y());
    QCOMPARE(areaOfThing(u"A 1"_s).left(), all.right() + 14);
    QCOMPARE(areaOf(u"All markets"_s).left(), all.left() + 22);
    QCOMPARE(areaOf(u"99"_s).right(), all.right() - 22);

    const QRectF picks = areaOf(u"Staff Picks"_s);
    const QRectF first = areaOfThing(u"Tape 1"_s);
    const QRectF second = areaOfThing(u"Tape 2"_s);
    QCOMPARE(picks.left(), 70.0);
    QVERIFY(qAbs(picks.top() - search.bottom() - 6 - 54) < 1);
    QCOMPARE(areaOf(u"3"_s).left(), picks.right() + 16 + 12);
    QCOMPARE(areaOf(u"City Council · 2024"_s).left(), areaOf(u"3"_s).right() + 12 + 16);
    QCOMPARE(first.size(), QSizeF(250, 250 * 1.5625));
    QCOMPARE(first.left(), 70.0 + 6);
    QCOMPARE(first.top(), picks.top() + 48 + 18 + 34);
    QCOMPARE(second.topLeft(), first.topRight() + QPointF(40, 0));
    QVERIFY(qAbs(areaOf(u"Procedurals"_s).top() - (first.bottom() + 34) - 54) < 1);
}

void RewinderyViewTest::textsOfOneLineStandOnOneBaseline()
{
    show(u"Staff Picks: 1 2; 港口委員會: 3"_s);
    const auto baseline = [this](const QString& text) {
        const QQuickItem* item = m_house->text(text);
        return item ? item->mapToItem(m_house->house, QPointF(0, item->baselineOffset())).y() : -1;
    };
    for (const QString& text : {u"HOME VIDEO"_s, u"OPEN 24 HRS"_s})
        QVERIFY2(qAbs(baseline(text) - baseline(u"Rewindery"_s)) < 0.5, qPrintable(text));
    for (const QString& text : {u"2"_s, u"City Council · 2024"_s})
        QVERIFY2(qAbs(baseline(text) - baseline(u"Staff Picks"_s)) < 0.5, qPrintable(text));
    QVERIFY(qAbs(baseline(u"1"_s) - baseline(u"港口委員會"_s)) < 0.5);
    QVERIFY(qAbs(baseline(u"港口委員會"_s) - baseline(u"Staff Picks"_s) - 525 - 54) < 0.5);
}

void RewinderyViewTest::aThingIsHeardByItsName()
{
    show(u"Staff Picks: 1 2"_s);
    m_house->press({Qt::Key_Down, Qt::Key_Right});
    QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(m_house->focused());
    QVERIFY(heard);
    QCOMPARE(heard->text(QAccessible::Name), u"Tape 2"_s);
    QCOMPARE(heard->role(), QAccessible::Button);
    QVERIFY(heard->state().focused);
}

void RewinderyViewTest::longNamesDoNotOverlap()
{
    Shelf shelf = shelfOf(QString(400, u'W'), {1, 2});
    shelf.covers.first().bodyName = QString(400, u'M');
    m_house->store.setShelves({shelf});
    TVStatus status = m_house->store.status();
    status.rewindery.markets = {{u"a"_s, QString(400, u'N'), {}, 9007199254740993}, {u"b"_s, u"B"_s, {}, 1}};
    m_house->store.setStatus(status);
    m_house->stage.settle();
    const QRectF name = areaOf(QString(400, u'W'));
    const QRectF count = areaOf(u"2"_s);
    const QRectF caption = areaOf(QString(400, u'M') + u" · City Council · 2024"_s);
    QVERIFY(name.width() > 500);
    QVERIFY(name.right() < count.left() && count.right() < caption.left());
    QVERIFY(caption.width() > 200 && caption.right() <= 1850);
    const QRectF market = areaOf(QString(400, u'N'));
    const QRectF tapes = areaOf(u"9007199254740993"_s);
    QVERIFY(market.width() > 300 && market.right() < tapes.left());
    QVERIFY(tapes.right() < areaOf(u"B"_s).left());
}

void RewinderyViewTest::theFocusBeginsAtTheSearch()
{
    show(u"Staff Picks: 1 2"_s);
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
}

void RewinderyViewTest::theFocusGoesAlongARowAndBack()
{
    show(u"A: 1 2 3; B: 4"_s);
    QStringList heard;
    for (const int key : {Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left}) {
        m_house->stage.press(key);
        heard.append(m_house->heard());
    }
    QCOMPARE(heard, (QStringList{u"Tape 1"_s, u"Tape 1"_s, u"Tape 2"_s, u"Tape 3"_s, u"Tape 3"_s, u"Tape 2"_s}));
    m_house->stage.settle();
    QVERIFY(isFocusInSight());
}

void RewinderyViewTest::aRowIsEnteredWhereItWasLeft()
{
    show(u"A: 1 2 3 4 5 6 7 8 9; B: 11 12; C: 21 22; D: 31; E: 41; F: 51"_s);
    m_house->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right});
    QCOMPARE(m_house->heard(), u"Tape 5"_s);
    m_house->press({Qt::Key_Down, Qt::Key_Left, Qt::Key_Up});
    QCOMPARE(m_house->heard(), u"Tape 5"_s);
    // Also when the row has not existed meanwhile.
    for (int step = 0; step < 5; ++step) {
        m_house->stage.press(Qt::Key_Down);
        m_house->stage.settle();
    }
    QCOMPARE(m_house->heard(), u"Tape 51"_s);
    QVERIFY(!m_house->thing(u"Tape 5"_s));
    for (int step = 0; step < 5; ++step) {
        m_house->stage.press(Qt::Key_Up);
        m_house->stage.settle();
    }
    QCOMPARE(m_house->heard(), u"Tape 5"_s);
    QVERIFY(isFocusInSight());
}

void RewinderyViewTest::upFromAnyCassetteIsTheCounter()
{
    show(u"A: 1 2 3 4 5 6 7 8 9"_s);
    showMarkets({u"a"_s, u"b"_s});
    m_house->press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Left});
    QCOMPARE(m_house->heard(), u"All markets 99"_s);
    m_house->stage.press(Qt::Key_Down);
    for (int step = 0; step < 8; ++step)
        m_house->stage.press(Qt::Key_Right);
    m_house->stage.press(Qt::Key_Up);
    QCOMPARE(m_house->heard(), u"All markets 99"_s);
    m_house->press({Qt::Key_Left, Qt::Key_Down, Qt::Key_Up});
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
    m_house->stage.settle();
    QCOMPARE(areaOf(u"Rewindery"_s).top(), 50.0);
    // A change of the chips does not draw the way there to them.
    m_house->stage.press(Qt::Key_Down);
    showMarkets({u"a"_s, u"b"_s, u"c"_s});
    m_house->stage.press(Qt::Key_Up);
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
}

void RewinderyViewTest::withTheFirstShelfTheCounterIsInSight()
{
    show(u"A: 1; B: 2; C: 3"_s);
    m_house->stage.press(Qt::Key_Down);
    m_house->stage.settle();
    QCOMPARE(areaOf(u"Rewindery"_s).top(), 50.0);
    m_house->stage.press(Qt::Key_Down);
    m_house->stage.settle();
    for (const QString& name : {u"A"_s, u"C"_s})
        QVERIFY2(isInSight(areaOf(name)) == (name == u"C"_s), qPrintable(name));
    QVERIFY(isFocusInSight());
}

void RewinderyViewTest::theFootIsInSightWithTheLastShelf()
{
    show(u"A: 1; B: 2; C: 3"_s);
    m_house->press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down});
    m_house->stage.settle();
    QCOMPARE(m_house->heard(), u"Tape 3"_s);
    const QRectF foot = areaOf(u"Captain Lowe and his crew are this shop's own invention."_s);
    QVERIFY(!foot.isEmpty() && foot.bottom() <= 1080 - 49);
    QVERIFY(isFocusInSight());
}

void RewinderyViewTest::aLongRowHasFewCassettesAtATime()
{
    QStringList ids;
    for (int id = 1; id <= 200; ++id)
        ids.append(QString::number(id));
    show(u"A: "_s + ids.join(u' '));
    m_house->stage.press(Qt::Key_Down);
    const auto cassettes = [this] {
        const auto all = Stage::all(m_house->shop(), "CardButton");
        return int(std::count_if(all.begin(), all.end(), [](QQuickItem* item) { return item->isVisible(); }));
    };
    int most = 0;
    for (int tape = 2; tape <= 200; ++tape) {
        m_house->stage.press(Qt::Key_Right);
        QCOMPARE(m_house->heard(), u"Tape %1"_s.arg(tape));
        if (tape % 20 == 0)
            m_house->stage.settle();
        most = std::max(most, cassettes());
    }
    m_house->stage.settle();
    QVERIFY(isFocusInSight());
    QVERIFY2(most < 50, qPrintable(QString::number(most)));
    QVERIFY2(cassettes() < 20, qPrintable(QString::number(cassettes())));
}

void RewinderyViewTest::aRefreshKeepsTheViewersPlace_data()
{
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("heard");
    // Before: "A: 1 2 3; B: 4 5 6; C: 7 8", with the viewer at 5.
    QTest::newRow("nothing changed") << u"A: 1 2 3; B: 4 5 6; C: 7 8"_s << u"Tape 5"_s;
    QTest::newRow("tapes before it") << u"A: 1 2 3; B: 31 32 33 34 35 36 37 38 4 5 6; C: 7 8"_s << u"Tape 5"_s;
    QTest::newRow("the others are gone") << u"B: 5"_s << u"Tape 5"_s;
    QTest::newRow("in another order") << u"C: 8 7; B: 6 5 4; A: 3"_s << u"Tape 5"_s;
    QTest::newRow("shelves before it") << u"N: 91; M: 92; L: 93; K: 94; A: 1; B: 4 5"_s << u"Tape 5"_s;
    QTest::newRow("on another shelf") << u"A: 1 5; B: 4 6; C: 7 8"_s << u"Tape 5"_s;
    QTest::newRow("on a new shelf far away") << u"A: 1; B: 4; C: 7; D: 21; E: 22; F: 23; G: 24 25 5"_s << u"Tape 5"_s;
    QTest::newRow("gone") << u"A: 1 2 3; B: 4 6; C: 7 8"_s << u"Tape 6"_s;
    QTest::newRow("gone from the end") << u"A: 1 2 3; B: 4; C: 7 8"_s << u"Tape 4"_s;
    QTest::newRow("gone with its shelf") << u"A: 1 2 3; C: 7 8"_s << u"Tape 8"_s;
    QTest::newRow("another market") << u"X: 21; Y: 22 23"_s << u"Tape 23"_s;
    QTest::newRow("nothing is left") << QString() << u"Try again"_s;
}

void RewinderyViewTest::aRefreshKeepsTheViewersPlace()
{
    QFETCH(QString, after);
    show(u"A: 1 2 3; B: 4 5 6; C: 7 8"_s);
    m_house->press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Right});
    QCOMPARE(m_house->heard(), u"Tape 5"_s);
    m_house->stage.settle();
    show(after);
    QTEST(m_house->heard(), "heard");
    QVERIFY(isFocusInSight());
    if (!m_house->heard().startsWith(u"Tape"_s))
        return;
    // Whatever holds the focus leads back to itself.
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_house->press({Qt::Key_Down, Qt::Key_Up, Qt::Key_Up, Qt::Key_Down});
    QVERIFY(m_house->heard().startsWith(u"Tape"_s));
}

void RewinderyViewTest::aRefreshLeavesTheCounterFocused()
{
    show(u"A: 1 2 3; B: 4 5 6"_s);
    m_house->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Up});
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
    show(u"B: 4 6; C: 2"_s);
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
}

void RewinderyViewTest::withoutShelvesThePanelSaysWhy()
{
    QVERIFY(m_house->text(u"Rewindery"_s));
    QVERIFY(m_house->text(u"No tapes on the shelf for this view."_s));
    QVERIFY(!m_house->text(u"Checking the shelves…"_s));
    QVERIFY(!m_house->text(u"HOME VIDEO"_s));
    QCOMPARE(m_house->heard(), u"Try again"_s);
    m_house->store.setLastError(u"X"_s);
    m_house->stage.settle();
    QVERIFY(m_house->text(u"X"_s));
    QVERIFY(!m_house->text(u"No tapes on the shelf for this view."_s));
    m_house->store.setLastError(QString(5000, u'\n') + u"Y"_s);
    m_house->stage.settle();
    QVERIFY(isFocusInSight());
    QVERIFY(m_house->text(u"Rewindery"_s));
    QVERIFY(areaOf(u"Rewindery"_s).top() > 0);
}

void RewinderyViewTest::tryingAgainSpinsUntilTheShelvesAreThere()
{
    m_house->stage.press(Qt::Key_Select);
    QVERIFY(m_house->store.isLoading());
    QVERIFY(m_house->text(u"Checking the shelves…"_s));
    QVERIFY(!m_house->text(u"Try again"_s));
    QQuickItem* spinner = Stage::first(m_house->shop(), "Spinner");
    QVERIFY(spinner && spinner->isVisible());
    QCOMPARE(m_house->area(spinner).width(), 1.6 * spinner->width());
    QTRY_COMPARE(m_house->focused(), m_house->front());
    m_house->answer(u"/api/tv/status"_s, R"({"rewindery": {"tapes": 1}})");
    m_house->answer(u"/api/tv/tapes"_s, R"({"items": [{"id": 1, "title": "Zoning"}]})");
    QTRY_VERIFY(!m_house->store.isLoading());
    QVERIFY(m_house->thing(u"Zoning"_s));
    QTRY_COMPARE(m_house->heard(), u"Search the stacks"_s);
    QVERIFY(!spinner->isVisible());
}

void RewinderyViewTest::tryingAgainInVainMayBeRepeated()
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        m_house->stage.press(Qt::Key_Select);
        m_house->answer(u"/api/tv/status"_s, {}, 500);
        m_house->answer(u"/api/tv/tapes"_s, {}, 503);
        QTRY_VERIFY(!m_house->store.isLoading());
        QVERIFY(m_house->text(m_house->store.lastErrorText()));
        QTRY_COMPARE(m_house->heard(), u"Try again"_s);
    }
    QCOMPARE(m_house->http.count(), 4);
}

void RewinderyViewTest::marketsAreChosenByTheirChips()
{
    show(u"A: 1"_s);
    showMarkets({u"a"_s, u"b"_s});
    m_house->press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Right});
    QCOMPARE(m_house->heard(), u"B 2"_s);
    const auto isSelected = [this](const QString& name) {
        return m_house->thing(name)->property("isSelected").toBool();
    };
    QVERIFY(isSelected(u"All markets 99"_s));
    m_house->stage.press(Qt::Key_Select);
    QCOMPARE(m_house->store.market(), u"b"_s);
    QVERIFY(isSelected(u"B 2"_s) && !isSelected(u"All markets 99"_s) && !isSelected(u"A 1"_s));
    QVERIFY(m_house->text(u"2 tapes in stock — pull one off the shelf and push it into the set. "
                          "Every tape here plays on this television."_s));
    m_house->answer(u"/api/tv/tapes?page=1&per_page=200&market=b"_s, R"({"items": [{"id": 7, "title": "Harbour"}]})");
    QTRY_VERIFY(m_house->thing(u"Harbour"_s));
    QCOMPARE(m_house->heard(), u"B 2"_s);
    showMarkets({u"c"_s, u"b"_s, u"a"_s});
    QCOMPARE(m_house->heard(), u"B 2"_s);
    m_house->press({Qt::Key_Left, Qt::Key_Left, Qt::Key_Select});
    QCOMPARE(m_house->heard(), u"All markets 99"_s);
    QCOMPARE(m_house->store.market(), QString());
    QVERIFY(isSelected(u"All markets 99"_s));
}

void RewinderyViewTest::manyChipsAreAllReached()
{
    show(u"A: 1"_s);
    QStringList slugs;
    for (int market = 0; market < 40; ++market)
        slugs.append(u"market number %1"_s.arg(market));
    showMarkets(slugs);
    QStringList heard;
    for (int step = 0; step < 42; ++step) {
        m_house->stage.press(Qt::Key_Right);
        heard.append(m_house->heard());
        if (step % 7 == 0) {
            m_house->stage.settle();
            QVERIFY2(isFocusInSight(), qPrintable(m_house->heard()));
            QVERIFY(m_house->area(m_house->focused()).left() >= areaOfThing(u"Search the stacks"_s).right());
        }
    }
    QCOMPARE(heard.first(), u"All markets 99"_s);
    QCOMPARE(heard.at(40), u"MARKET NUMBER 39 40"_s);
    QCOMPARE(heard.at(41), u"MARKET NUMBER 39 40"_s);
    QStringList back;
    for (int step = 0; step < 41; ++step) {
        m_house->stage.press(Qt::Key_Left);
        back.prepend(m_house->heard());
    }
    QCOMPARE(back.mid(1), heard.first(40));
    QCOMPARE(back.first(), u"Search the stacks"_s);
}

void RewinderyViewTest::thePickerMayGoWhileItIsWalked()
{
    show(u"A: 1"_s);
    showMarkets({u"a"_s, u"b"_s});
    m_house->press({Qt::Key_Right, Qt::Key_Right});
    showMarkets({u"a"_s});
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
    showMarkets({u"a"_s, u"b"_s});
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
}

void RewinderyViewTest::aMarketWithoutTapesIsLeftWithTheShop()
{
    show(u"A: 1"_s);
    showMarkets({u"a"_s, u"b"_s});
    m_house->press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Select});
    QCOMPARE(m_house->store.market(), u"a"_s);
    m_house->answer(u"/api/tv/tapes?page=1&per_page=200&market=a"_s, R"({"items": []})");
    QTRY_COMPARE(m_house->heard(), u"Try again"_s);
    QVERIFY(m_house->text(u"No tapes on the shelf for this view."_s));
    m_house->stage.press(Qt::Key_Back);
    QVERIFY(!m_house->isOpen());
    QCOMPARE(m_house->store.market(), QString());
}

void RewinderyViewTest::aCassetteOpensItsTapeAndBackReturnsToIt()
{
    show(u"A: 1 2 3; B: 4"_s);
    m_house->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Select});
    QCOMPARE(m_house->shop()->depth(), 1);
    QVERIFY(m_house->front() != m_house->shop());
    m_house->stage.settle();
    QVERIFY(m_house->text(u"Tape 2"_s));
    QVERIFY(m_house->front()->isAncestorOf(m_house->focused()));
    // The shelves change meanwhile.
    m_house->store.setShelves(shelvesOf(u"B: 4; A: 9 2"_s));
    QCOMPARE(m_house->shop()->depth(), 1);
    QVERIFY(m_house->front()->isAncestorOf(m_house->focused()));
    m_house->stage.press(Qt::Key_Back);
    QCOMPARE(m_house->shop()->depth(), 0);
    QVERIFY(m_house->isOpen());
    QCOMPARE(m_house->heard(), u"Tape 2"_s);
    m_house->stage.settle();
    QVERIFY(isFocusInSight());
}

void RewinderyViewTest::backLeavesTheShopOnce()
{
    show(u"A: 1 2 3"_s);
    m_house->stage.press(Qt::Key_Down);
    m_house->stage.press(Qt::Key_Back);
    QVERIFY(!m_house->isOpen());
    m_house->stage.settle();
    QVERIFY(!Stage::first(m_house->house, "RewinderyView"));
    QCOMPARE(m_house->store.shelves().size(), 1);
}

void RewinderyViewTest::theSearchIsAFlagUntilItHasAScreen()
{
    show(u"A: 1 2 3"_s);
    m_house->stage.press(Qt::Key_Select);
    QVERIFY(m_house->shop()->property("searching").toBool());
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
}

void RewinderyViewTest::theSearchScreenCoversTheShop()
{
    m_house = std::make_unique<ShopHouse>(u"searchScreen: Component { FocusScreen { "
                                          "Focusable { property string name: \"query\"; "
                                          "width: 100; height: 100 } } }"_s);
    show(u"A: 1 2 3"_s);
    m_house->stage.press(Qt::Key_Select);
    QCOMPARE(m_house->heard(), u"query"_s);
    m_house->stage.press(Qt::Key_Back);
    QVERIFY(!m_house->shop()->property("searching").toBool());
    QVERIFY(m_house->isOpen());
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
}

QTEST_MAIN(RewinderyViewTest)
#include "RewinderyViewTest.moc"
