#include "TypingHouse.h"

#include <QQueue>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

/** Typing with the remote. */
class OnScreenKeyboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void selectOnTheFieldOpensItAtTheFirstLetter();
    void aWordTakesFewPresses();
    void spaceDeleteAndClearWriteNothingElse();
    void whatIsTypedGoesToTheCursor();
    void theRewindButtonDeletesAndGoesOnWhileItIsHeld();
    void searchingClosesItAndSearchesOnce_data();
    void searchingClosesItAndSearchesOnce();
    void backClosesItWithoutSearching();
    void anotherPageKeepsThePlaceAndLeadsBack();
    void itBeginsWithTheLettersEachTime();
    void everyKeyIsReachedAndLeftAgain();
    void anArrowAtItsEdgeStaysOnIt();
    void aFocusedKeyTouchesNoOther();
    void itStandsInTheLowerHalfOfWhatEveryDisplayShows();
    void everyCaptionIsLargeAndFitsItsKey();
    void aRealKeyboardTypesWhileItIsThere();
    void aReturnKeySearchesAfterTypingAndSelectsAfterAnArrow();
};

void OnScreenKeyboardTest::selectOnTheFieldOpensItAtTheFirstLetter()
{
    TypingHouse house;
    QVERIFY(house.isFieldFocused());
    QVERIFY(!house.isOpen());
    house.press(Qt::Key_Select);
    QVERIFY(house.isOpen());
    QCOMPARE(house.key(), u"a"_s);
    QCOMPARE(house.text(), QString());
}

void OnScreenKeyboardTest::aWordTakesFewPresses()
{
    TypingHouse house;
    house.open();
    for (const QChar letter : u"zoning"_s)
        house.type(letter);
    house.press(Qt::Key_MediaTogglePlayPause);
    QCOMPARE(house.text(), u"zoning"_s);
    QCOMPARE(house.submissions(), 1);
    QVERIFY2(house.presses <= 40, qPrintable(QString::number(house.presses)));
}

void OnScreenKeyboardTest::spaceDeleteAndClearWriteNothingElse()
{
    TypingHouse house;
    house.open();
    for (const QString& key : {u"a"_s, u"Space"_s, u"b"_s, u"7"_s})
        house.type(key);
    QCOMPARE(house.text(), u"a b7"_s);
    house.type(u"Delete"_s);
    QCOMPARE(house.text(), u"a b"_s);
    house.type(u"Clear"_s);
    QCOMPARE(house.text(), QString());
    house.type(u"Delete"_s);
    QCOMPARE(house.text(), QString());
    QVERIFY(house.isOpen());
    QCOMPARE(house.submissions(), 0);
}

void OnScreenKeyboardTest::whatIsTypedGoesToTheCursor()
{
    TypingHouse house;
    house.strikeAll(u"zonng"_s);
    house.press(Qt::Key_Left, 2);
    house.open();
    house.type(u"i"_s);
    QCOMPARE(house.text(), u"zoning"_s);
}

void OnScreenKeyboardTest::theRewindButtonDeletesAndGoesOnWhileItIsHeld()
{
    TypingHouse house;
    house.setText(u"council meeting"_s);
    house.open();
    house.press(Qt::Key_AudioRewind);
    QCOMPARE(house.text(), u"council meetin"_s);
    QCOMPARE(house.key(), u"a"_s);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_AudioRewind, Qt::NoModifier);
    QCoreApplication::sendEvent(&house.stage.window(), &press);
    house.clock.advance(std::chrono::seconds(5));
    QTRY_VERIFY(house.text().size() < 13);
}

void OnScreenKeyboardTest::searchingClosesItAndSearchesOnce_data()
{
    QTest::addColumn<int>("button");
    QTest::newRow("play/pause") << int(Qt::Key_MediaTogglePlayPause);
    QTest::newRow("play") << int(Qt::Key_MediaPlay);
    QTest::newRow("its own key") << int(Qt::Key_Select);
}

void OnScreenKeyboardTest::searchingClosesItAndSearchesOnce()
{
    QFETCH(int, button);
    TypingHouse house;
    house.open();
    house.type(u"d"_s);
    if (button == Qt::Key_Select)
        house.walkTo(u"Search"_s);
    house.press(button);
    QVERIFY(!house.isOpen());
    QVERIFY(house.isFieldFocused());
    QCOMPARE(house.submissions(), 1);
    QCOMPARE(house.text(), u"d"_s);
}

void OnScreenKeyboardTest::backClosesItWithoutSearching()
{
    TypingHouse house;
    house.open();
    house.type(u"d"_s);
    house.press(Qt::Key_Back);
    QVERIFY(!house.isOpen());
    QVERIFY(house.isFieldFocused());
    QCOMPARE(house.submissions(), 0);
    QCOMPARE(house.text(), u"d"_s);
}

void OnScreenKeyboardTest::anotherPageKeepsThePlaceAndLeadsBack()
{
    TypingHouse house;
    house.open();
    house.type(u"à é ñ"_s);
    QCOMPARE(house.key(), u"a b c"_s);
    house.type(u"ñ"_s);
    house.type(u". ? !"_s);
    QCOMPARE(house.key(), u"a b c"_s);
    house.type(u"?"_s);
    house.type(u"a b c"_s);
    QCOMPARE(house.key(), u". ? !"_s);
    house.type(u"z"_s);
    QCOMPARE(house.text(), u"ñ?z"_s);
}

void OnScreenKeyboardTest::itBeginsWithTheLettersEachTime()
{
    TypingHouse house;
    house.open();
    house.type(u". ? !"_s);
    house.press(Qt::Key_Back);
    house.open();
    QCOMPARE(house.key(), u"a"_s);
}

void OnScreenKeyboardTest::everyKeyIsReachedAndLeftAgain()
{
    TypingHouse house;
    house.open();
    auto* const first = qobject_cast<Focusable*>(house.focused());
    QHash<Focusable*, QSet<Focusable*>> before; // the keys that an arrow leads from
    QSet<Focusable*> reached{first};
    QQueue<Focusable*> waiting{{first}};
    while (!waiting.isEmpty()) {
        Focusable* const key = waiting.dequeue();
        for (const int arrow : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
            house.board()->focus(key);
            house.press(arrow);
            auto* const next = qobject_cast<Focusable*>(house.focused());
            before[next].insert(key);
            if (!reached.contains(next))
                waiting.enqueue(next);
            reached.insert(next);
        }
    }
    QCOMPARE(reached.size(), house.keys().size());
    QSet<Focusable*> leaving{first};
    waiting.enqueue(first);
    while (!waiting.isEmpty()) {
        const auto sources = before[waiting.dequeue()];
        for (Focusable* const key : sources) {
            if (!leaving.contains(key))
                waiting.enqueue(key);
            leaving.insert(key);
        }
    }
    QCOMPARE(leaving, reached);
}

void OnScreenKeyboardTest::anArrowAtItsEdgeStaysOnIt()
{
    TypingHouse house;
    house.open();
    house.press(Qt::Key_Up);
    house.press(Qt::Key_Left);
    QCOMPARE(house.key(), u"a"_s);
    house.walkTo(u"Search"_s);
    house.press(Qt::Key_Down);
    house.press(Qt::Key_Right);
    QCOMPARE(house.key(), u"Search"_s);
}

void OnScreenKeyboardTest::aFocusedKeyTouchesNoOther()
{
    TypingHouse house;
    house.open();
    const auto keys = house.keys();
    for (const QString& caption : {u"n"_s, u"Delete"_s, u"Space"_s, u"Search"_s}) {
        house.walkTo(caption);
        house.stage.settle();
        const QQuickItem* const focused = house.focused();
        const QRectF area = Stage::area(Stage::first(house.focused(), "StationPlate"));
        for (const QQuickItem* key : keys)
            QVERIFY2(key == focused || !Stage::area(key).intersects(area), qPrintable(caption));
    }
}

void OnScreenKeyboardTest::itStandsInTheLowerHalfOfWhatEveryDisplayShows()
{
    TypingHouse house;
    house.open();
    const QRectF room(80, 540, 1920 - 2 * 80, 540 - 60);
    // Under the focus a key is larger than at rest.
    house.walkTo(u"Search"_s);
    house.stage.settle();
    const QQuickItem* const plate = Stage::first(house.focused(), "StationPlate");
    QVERIFY(plate->scale() > 1);
    QVERIFY(room.contains(plate->mapRectToItem(house.house, QRectF(QPointF(), plate->size()))));
    const auto keys = house.keys();
    QCOMPARE(keys.size(), 42);
    for (const QQuickItem* key : keys) {
        const QRectF area = key->mapRectToItem(house.house, QRectF(QPointF(), key->size()));
        QVERIFY2(room.adjusted(-0.01, 0, 0.01, 0.01).contains(area), qPrintable(key->property("text").toString()));
    }
}

void OnScreenKeyboardTest::everyCaptionIsLargeAndFitsItsKey()
{
    TypingHouse house;
    house.open();
    const auto keys = house.keys();
    for (QQuickItem* key : keys) {
        const QQuickItem* const caption = Stage::first(key, "StationText");
        QVERIFY(caption->property("font").value<QFont>().pixelSize() >= 24);
        QVERIFY2(caption->implicitWidth() <= key->width() - 20, qPrintable(key->property("text").toString()));
        QVERIFY(caption->implicitHeight() <= key->height());
    }
}

void OnScreenKeyboardTest::aRealKeyboardTypesWhileItIsThere()
{
    TypingHouse house;
    house.open();
    house.press(Qt::Key_Right);
    house.strikeAll(u"Cit y"_s);
    house.strike(Qt::Key_Backspace, u"\b"_s);
    house.compose(u"´"_s);
    house.compose({}, u"é"_s);
    QCOMPARE(house.text(), u"Cit é"_s);
    QCOMPARE(house.key(), u"b"_s);
}

void OnScreenKeyboardTest::aReturnKeySearchesAfterTypingAndSelectsAfterAnArrow()
{
    TypingHouse house;
    house.open();
    house.strikeAll(u"ab"_s);
    house.press(Qt::Key_Right);
    house.strikeReturn();
    QCOMPARE(house.text(), u"abb"_s);
    QCOMPARE(house.submissions(), 0);
    house.strikeAll(u"c"_s);
    house.strikeReturn();
    QCOMPARE(house.text(), u"abbc"_s);
    QCOMPARE(house.submissions(), 1);
    QVERIFY(!house.isOpen());
}

QTEST_MAIN(OnScreenKeyboardTest)
#include "OnScreenKeyboardTest.moc"
