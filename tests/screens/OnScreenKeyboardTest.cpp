#include "TestMain.h"
#include "TypingHouse.h"

#include <QQueue>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

/** Typing with the on-screen keyboard and the remote. */
class OnScreenKeyboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void selectOnFieldOpensKeyboardAtFirstLetter();
    void wordNeedsFewKeyPresses();
    void spaceDeleteAndClearKeysEditText();
    void typedLetterIsInsertedAtCursor();
    void rewindButtonDeletesAndRepeatsWhileHeld();
    void searchClosesKeyboardAndSubmitsOnce_data();
    void searchClosesKeyboardAndSubmitsOnce();
    void backClosesKeyboardWithoutSubmitting();
    void pageKeysSwitchPagesAndKeepFocus();
    void keyboardOpensWithLetters();
    void everyKeyIsReachableInBothDirections();
    void arrowAtEdgeKeepsFocus();
    void focusedKeyDoesNotOverlapOthers();
    void keyboardIsInLowerHalfOfSafeArea();
    void captionsAreLargeAndFitTheirKeys();
    void physicalKeyboardTypesWhileKeyboardIsOpen();
    void returnKeySubmitsAfterTypingAndSelectsAfterArrow();
};

void OnScreenKeyboardTest::selectOnFieldOpensKeyboardAtFirstLetter()
{
    TypingHouse house;
    QVERIFY(house.isFieldFocused());
    QVERIFY(!house.isOpen());
    house.press(Qt::Key_Select);
    QVERIFY(house.isOpen());
    QCOMPARE(house.key(), u"a"_s);
    QCOMPARE(house.text(), QString());
}

void OnScreenKeyboardTest::wordNeedsFewKeyPresses()
{
    TypingHouse house;
    house.open();
    for (const QChar letter : u"zoning"_s)
        house.selectKey(letter);
    house.press(Qt::Key_MediaTogglePlayPause);
    QCOMPARE(house.text(), u"zoning"_s);
    QCOMPARE(house.submissions(), 1);
    QVERIFY2(house.presses <= 40, qPrintable(QString::number(house.presses)));
}

void OnScreenKeyboardTest::spaceDeleteAndClearKeysEditText()
{
    TypingHouse house;
    house.open();
    for (const QString& key : {u"a"_s, u"Space"_s, u"b"_s, u"7"_s})
        house.selectKey(key);
    QCOMPARE(house.text(), u"a b7"_s);
    house.selectKey(u"Delete"_s);
    QCOMPARE(house.text(), u"a b"_s);
    house.selectKey(u"Clear"_s);
    QCOMPARE(house.text(), QString());
    house.selectKey(u"Delete"_s);
    QCOMPARE(house.text(), QString());
    QVERIFY(house.isOpen());
    QCOMPARE(house.submissions(), 0);
}

void OnScreenKeyboardTest::typedLetterIsInsertedAtCursor()
{
    TypingHouse house;
    house.typeText(u"zonng"_s);
    house.press(Qt::Key_Left, 2);
    house.open();
    house.selectKey(u"i"_s);
    QCOMPARE(house.text(), u"zoning"_s);
}

void OnScreenKeyboardTest::rewindButtonDeletesAndRepeatsWhileHeld()
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

void OnScreenKeyboardTest::searchClosesKeyboardAndSubmitsOnce_data()
{
    QTest::addColumn<int>("button");
    QTest::newRow("play/pause") << int(Qt::Key_MediaTogglePlayPause);
    QTest::newRow("play") << int(Qt::Key_MediaPlay);
    QTest::newRow("search key") << int(Qt::Key_Select);
}

void OnScreenKeyboardTest::searchClosesKeyboardAndSubmitsOnce()
{
    QFETCH(int, button);
    TypingHouse house;
    house.open();
    house.selectKey(u"d"_s);
    if (button == Qt::Key_Select)
        house.focusKey(u"Search"_s);
    house.press(button);
    QVERIFY(!house.isOpen());
    QVERIFY(house.isFieldFocused());
    QCOMPARE(house.submissions(), 1);
    QCOMPARE(house.text(), u"d"_s);
}

void OnScreenKeyboardTest::backClosesKeyboardWithoutSubmitting()
{
    TypingHouse house;
    house.open();
    house.selectKey(u"d"_s);
    house.press(Qt::Key_Back);
    QVERIFY(!house.isOpen());
    QVERIFY(house.isFieldFocused());
    QCOMPARE(house.submissions(), 0);
    QCOMPARE(house.text(), u"d"_s);
}

void OnScreenKeyboardTest::pageKeysSwitchPagesAndKeepFocus()
{
    TypingHouse house;
    house.open();
    house.selectKey(u"à é ñ"_s);
    QCOMPARE(house.key(), u"a b c"_s);
    house.selectKey(u"ñ"_s);
    house.selectKey(u". ? !"_s);
    QCOMPARE(house.key(), u"a b c"_s);
    house.selectKey(u"?"_s);
    house.selectKey(u"a b c"_s);
    QCOMPARE(house.key(), u". ? !"_s);
    house.selectKey(u"z"_s);
    QCOMPARE(house.text(), u"ñ?z"_s);
}

void OnScreenKeyboardTest::keyboardOpensWithLetters()
{
    TypingHouse house;
    house.open();
    house.selectKey(u". ? !"_s);
    house.press(Qt::Key_Back);
    house.open();
    QCOMPARE(house.key(), u"a"_s);
}

void OnScreenKeyboardTest::everyKeyIsReachableInBothDirections()
{
    TypingHouse house;
    house.open();
    auto* const first = qobject_cast<Focusable*>(house.focused());
    QHash<Focusable*, QSet<Focusable*>> before; // for each key, the keys from which an arrow leads to it
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
    QSet<Focusable*> leadingToFirst{first};
    waiting.enqueue(first);
    while (!waiting.isEmpty()) {
        const auto sources = before[waiting.dequeue()];
        for (Focusable* const key : sources) {
            if (!leadingToFirst.contains(key))
                waiting.enqueue(key);
            leadingToFirst.insert(key);
        }
    }
    QCOMPARE(leadingToFirst, reached);
}

void OnScreenKeyboardTest::arrowAtEdgeKeepsFocus()
{
    TypingHouse house;
    house.open();
    house.press(Qt::Key_Up);
    house.press(Qt::Key_Left);
    QCOMPARE(house.key(), u"a"_s);
    house.focusKey(u"Search"_s);
    house.press(Qt::Key_Down);
    house.press(Qt::Key_Right);
    QCOMPARE(house.key(), u"Search"_s);
}

void OnScreenKeyboardTest::focusedKeyDoesNotOverlapOthers()
{
    TypingHouse house;
    house.open();
    const auto keys = house.keys();
    for (const QString& caption : {u"n"_s, u"Delete"_s, u"Space"_s, u"Search"_s}) {
        house.focusKey(caption);
        house.stage.waitUntilIdle();
        const QQuickItem* const focused = house.focused();
        const QRectF area = Stage::area(Stage::first(house.focused(), "StationPlate"));
        for (const QQuickItem* key : keys)
            QVERIFY2(key == focused || !Stage::area(key).intersects(area), qPrintable(caption));
    }
}

void OnScreenKeyboardTest::keyboardIsInLowerHalfOfSafeArea()
{
    TypingHouse house;
    house.open();
    const QRectF safeArea(80, 540, 1920 - 2 * 80, 540 - 60);
    // A focused key is larger than at rest.
    house.focusKey(u"Search"_s);
    house.stage.waitUntilIdle();
    const QQuickItem* const plate = Stage::first(house.focused(), "StationPlate");
    QVERIFY(plate->scale() > 1);
    QVERIFY(safeArea.contains(plate->mapRectToItem(house.house, QRectF(QPointF(), plate->size()))));
    const auto keys = house.keys();
    QCOMPARE(keys.size(), 42);
    for (const QQuickItem* key : keys) {
        const QRectF area = key->mapRectToItem(house.house, QRectF(QPointF(), key->size()));
        QVERIFY2(safeArea.adjusted(-0.01, 0, 0.01, 0.01).contains(area), qPrintable(key->property("text").toString()));
    }
}

void OnScreenKeyboardTest::captionsAreLargeAndFitTheirKeys()
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

void OnScreenKeyboardTest::physicalKeyboardTypesWhileKeyboardIsOpen()
{
    TypingHouse house;
    house.open();
    house.press(Qt::Key_Right);
    house.typeText(u"Cit y"_s);
    house.typeKey(Qt::Key_Backspace, u"\b"_s);
    house.compose(u"´"_s);
    house.compose({}, u"é"_s);
    QCOMPARE(house.text(), u"Cit é"_s);
    QCOMPARE(house.key(), u"b"_s);
}

void OnScreenKeyboardTest::returnKeySubmitsAfterTypingAndSelectsAfterArrow()
{
    TypingHouse house;
    house.open();
    house.typeText(u"ab"_s);
    house.press(Qt::Key_Right);
    house.typeReturn();
    QCOMPARE(house.text(), u"abb"_s);
    QCOMPARE(house.submissions(), 0);
    house.typeText(u"c"_s);
    house.typeReturn();
    QCOMPARE(house.text(), u"abbc"_s);
    QCOMPARE(house.submissions(), 1);
    QVERIFY(!house.isOpen());
}

QUILLMERE_TEST(OnScreenKeyboardTest, QGuiApplication)
#include "OnScreenKeyboardTest.moc"
