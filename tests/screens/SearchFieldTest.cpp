#include "TypingHouse.h"

#include <QAccessible>
#include <QClipboard>
#include <QStyleHints>
#include <QTest>

using namespace Qt::StringLiterals;

/** Typing into the search field with a real keyboard and with input methods. */
class SearchFieldTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itInvitesUntilThereIsAText();
    void itIsHeardAsAFieldWithItsText();
    void charactersGoIntoIt();
    void anInputMethodWritesIntoIt();
    void whatIsStillBeingComposedIsNoTextYet();
    void anInputMethodIsToldOfTheLine();
    void aPasteGoesIntoItAndItsLengthIsBounded();
    void leftAndRightMoveTheCursorAndDownLeavesIt();
    void returnSearchesAfterTyping();
    void returnOpensTheKeyboardBeforeTyping();
    void aRemotesSelectOpensTheKeyboardAfterTypingToo();
    void backIsLeftToItsScreen();
    void aSetAtRestDrawsNothing();
};

void SearchFieldTest::itInvitesUntilThereIsAText()
{
    TypingHouse house;
    const auto shown = [&] {
        const auto texts = Stage::texts(house.named("field"));
        return texts.isEmpty() ? QString() : texts.first()->property("text").toString();
    };
    QCOMPARE(shown(), u"Search"_s);
    house.compose(u"´"_s);
    QCOMPARE(shown(), QString());
    house.compose({});
    QCOMPARE(shown(), u"Search"_s);
    house.strikeAll(u" "_s);
    QCOMPARE(shown(), QString());
}

void SearchFieldTest::itIsHeardAsAFieldWithItsText()
{
    TypingHouse house;
    const auto heard = [&] {
        const auto* const interface = QAccessible::queryAccessibleInterface(house.named("field"));
        return interface->text(QAccessible::Name);
    };
    QCOMPARE(QAccessible::queryAccessibleInterface(house.named("field"))->role(), QAccessible::EditableText);
    QCOMPARE(heard(), u"Search"_s);
    house.strikeAll(u"dam"_s);
    QCOMPARE(heard(), u"dam"_s);
}

void SearchFieldTest::charactersGoIntoIt()
{
    TypingHouse house;
    house.strikeAll(u"Zoning Éx 7"_s);
    QCOMPARE(house.text(), u"Zoning Éx 7"_s);
    house.strike(Qt::Key_Backspace, u"\b"_s);
    QCOMPARE(house.text(), u"Zoning Éx "_s);
    QVERIFY(house.isFieldFocused());
    QCOMPARE(house.submissions(), 0);
}

void SearchFieldTest::anInputMethodWritesIntoIt()
{
    TypingHouse house;
    house.compose(u"shi"_s);
    house.compose(u"shichou"_s);
    house.compose({}, u"市長"_s);
    QCOMPARE(house.text(), u"市長"_s);
    house.strikeReturn();
    QCOMPARE(house.submissions(), 1);
}

void SearchFieldTest::whatIsStillBeingComposedIsNoTextYet()
{
    TypingHouse house;
    house.strikeAll(u"caf"_s);
    house.compose(u"´"_s);
    QCOMPARE(house.text(), u"caf"_s);
    house.compose({}, u"é"_s);
    QCOMPARE(house.text(), u"café"_s);
}

void SearchFieldTest::anInputMethodIsToldOfTheLine()
{
    TypingHouse house;
    QCOMPARE(house.described(Qt::ImEnabled).toBool(), true);
    const QRectF before = house.described(Qt::ImCursorRectangle).toRectF();
    house.strikeAll(u"dam"_s);
    QCOMPARE(house.described(Qt::ImSurroundingText).toString(), u"dam"_s);
    QCOMPARE(house.described(Qt::ImCursorPosition).toInt(), 3);
    const QRectF after = house.described(Qt::ImCursorRectangle).toRectF();
    QVERIFY(after.left() > before.left() + 20);
    QVERIFY(QRectF(QPointF(), house.named("field")->size()).contains(after));

    // On the on-screen keyboard the line is far from what has the focus.
    const QRectF line = house.focused()->mapRectToScene(after);
    house.open();
    house.stage.settle();
    QCOMPARE(house.described(Qt::ImEnabled).toBool(), true);
    QCOMPARE(house.described(Qt::ImSurroundingText).toString(), u"dam"_s);
    const QRectF rect = house.focused()->mapRectToScene(house.described(Qt::ImCursorRectangle).toRectF());
    QVERIFY((rect.topLeft() - line.topLeft()).manhattanLength() < 1);
}

void SearchFieldTest::aPasteGoesIntoItAndItsLengthIsBounded()
{
    TypingHouse house;
    QGuiApplication::clipboard()->setText(u"water main"_s);
    house.strike(Qt::Key_V, u"\x16"_s, Qt::ControlModifier);
    QCOMPARE(house.text(), u"water main"_s);
    house.strikeReturn();
    QCOMPARE(house.submissions(), 1);
    QGuiApplication::clipboard()->setText(QString(100'000, u'x'));
    house.strike(Qt::Key_V, u"\x16"_s, Qt::ControlModifier);
    house.strikeAll(u"y"_s);
    QCOMPARE(house.text(), u"water main"_s + QString(190, u'x'));
}

void SearchFieldTest::leftAndRightMoveTheCursorAndDownLeavesIt()
{
    TypingHouse house;
    house.strikeAll(u"dm"_s);
    house.press(Qt::Key_Left);
    house.strikeAll(u"a"_s);
    QCOMPARE(house.text(), u"dam"_s);
    house.press(Qt::Key_Right, 3);
    house.strikeAll(u"s"_s);
    QCOMPARE(house.text(), u"dams"_s);
    house.press(Qt::Key_Down);
    QCOMPARE(house.focused()->objectName(), u"below"_s);
    house.strikeAll(u"x"_s);
    QCOMPARE(house.text(), u"dams"_s);
    house.press(Qt::Key_Up);
    QVERIFY(house.isFieldFocused());
}

void SearchFieldTest::returnSearchesAfterTyping()
{
    TypingHouse house;
    house.strikeAll(u"dam"_s);
    house.strikeReturn();
    QCOMPARE(house.submissions(), 1);
    QVERIFY(!house.isOpen());
    QCOMPARE(house.text(), u"dam"_s);
}

void SearchFieldTest::returnOpensTheKeyboardBeforeTyping()
{
    TypingHouse house;
    house.strikeReturn();
    QVERIFY(house.isOpen());
    QCOMPARE(house.submissions(), 0);
}

void SearchFieldTest::aRemotesSelectOpensTheKeyboardAfterTypingToo()
{
    TypingHouse house;
    house.strikeAll(u"dam"_s);
    house.press(Qt::Key_Select);
    QVERIFY(house.isOpen());
    QCOMPARE(house.submissions(), 0);
}

void SearchFieldTest::backIsLeftToItsScreen()
{
    TypingHouse house;
    house.strikeAll(u"dam"_s);
    QKeyEvent back(QEvent::KeyPress, Qt::Key_Back, Qt::NoModifier);
    QCoreApplication::sendEvent(house.focused(), &back);
    QVERIFY(!back.isAccepted());
    QCOMPARE(house.text(), u"dam"_s);
}

void SearchFieldTest::aSetAtRestDrawsNothing()
{
    QGuiApplication::styleHints()->setCursorFlashTime(40);
    TypingHouse house;
    house.strikeAll(u"dam"_s);
    house.stage.settle();
    const int frames = house.stage.frames();
    QTest::qWait(200);
    QCOMPARE(house.stage.frames(), frames);
}

QTEST_MAIN(SearchFieldTest)
#include "SearchFieldTest.moc"
