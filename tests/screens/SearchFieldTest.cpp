#include "TestMain.h"
#include "TypingHouse.h"

#include <QAccessible>
#include <QClipboard>
#include <QStyleHints>
#include <QTest>

using namespace Qt::StringLiterals;

/** Typing into the search field with a physical keyboard and with input methods. */
class SearchFieldTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placeholderIsShownWhileFieldIsEmpty();
    void fieldHasAccessibleRoleAndText();
    void typedCharactersAppearInField();
    void committedTextOfInputMethodIsInserted();
    void preeditTextIsNotPartOfText();
    void inputMethodQueriesDescribeTextAndCursor();
    void pastedTextIsInsertedUpToMaximumLength();
    void leftAndRightMoveCursorAndDownMovesFocus();
    void returnSubmitsAfterTyping();
    void returnOpensKeyboardBeforeTyping();
    void remoteSelectOpensKeyboardAfterTyping();
    void backIsNotAccepted();
    void noFrameIsDrawnAtRest();
};

void SearchFieldTest::placeholderIsShownWhileFieldIsEmpty()
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
    house.typeText(u" "_s);
    QCOMPARE(shown(), QString());
}

void SearchFieldTest::fieldHasAccessibleRoleAndText()
{
    TypingHouse house;
    const auto accessibleName = [&] {
        const auto* const interface = QAccessible::queryAccessibleInterface(house.named("field"));
        return interface->text(QAccessible::Name);
    };
    QCOMPARE(QAccessible::queryAccessibleInterface(house.named("field"))->role(), QAccessible::EditableText);
    QCOMPARE(accessibleName(), u"Search"_s);
    house.typeText(u"dam"_s);
    QCOMPARE(accessibleName(), u"dam"_s);
}

void SearchFieldTest::typedCharactersAppearInField()
{
    TypingHouse house;
    house.typeText(u"Zoning Éx 7"_s);
    QCOMPARE(house.text(), u"Zoning Éx 7"_s);
    house.typeKey(Qt::Key_Backspace, u"\b"_s);
    QCOMPARE(house.text(), u"Zoning Éx "_s);
    QVERIFY(house.isFieldFocused());
    QCOMPARE(house.submissions(), 0);
}

void SearchFieldTest::committedTextOfInputMethodIsInserted()
{
    TypingHouse house;
    house.compose(u"shi"_s);
    house.compose(u"shichou"_s);
    house.compose({}, u"市長"_s);
    QCOMPARE(house.text(), u"市長"_s);
    house.typeReturn();
    QCOMPARE(house.submissions(), 1);
}

void SearchFieldTest::preeditTextIsNotPartOfText()
{
    TypingHouse house;
    house.typeText(u"caf"_s);
    house.compose(u"´"_s);
    QCOMPARE(house.text(), u"caf"_s);
    house.compose({}, u"é"_s);
    QCOMPARE(house.text(), u"café"_s);
}

void SearchFieldTest::inputMethodQueriesDescribeTextAndCursor()
{
    TypingHouse house;
    QCOMPARE(house.inputMethodQuery(Qt::ImEnabled).toBool(), true);
    const QRectF before = house.inputMethodQuery(Qt::ImCursorRectangle).toRectF();
    house.typeText(u"dam"_s);
    QCOMPARE(house.inputMethodQuery(Qt::ImSurroundingText).toString(), u"dam"_s);
    QCOMPARE(house.inputMethodQuery(Qt::ImCursorPosition).toInt(), 3);
    const QRectF after = house.inputMethodQuery(Qt::ImCursorRectangle).toRectF();
    QVERIFY(after.left() > before.left() + 20);
    QVERIFY(QRectF(QPointF(), house.named("field")->size()).contains(after));

    // While the on-screen keyboard is open, the line is far from the focused key.
    const QRectF line = house.focused()->mapRectToScene(after);
    house.open();
    house.stage.waitUntilIdle();
    QCOMPARE(house.inputMethodQuery(Qt::ImEnabled).toBool(), true);
    QCOMPARE(house.inputMethodQuery(Qt::ImSurroundingText).toString(), u"dam"_s);
    const QRectF rect = house.focused()->mapRectToScene(house.inputMethodQuery(Qt::ImCursorRectangle).toRectF());
    QVERIFY((rect.topLeft() - line.topLeft()).manhattanLength() < 1);
}

void SearchFieldTest::pastedTextIsInsertedUpToMaximumLength()
{
    TypingHouse house;
    QGuiApplication::clipboard()->setText(u"water main"_s);
    house.typeKey(Qt::Key_V, u"\x16"_s, Qt::ControlModifier);
    QCOMPARE(house.text(), u"water main"_s);
    house.typeReturn();
    QCOMPARE(house.submissions(), 1);
    QGuiApplication::clipboard()->setText(QString(100'000, u'x'));
    house.typeKey(Qt::Key_V, u"\x16"_s, Qt::ControlModifier);
    house.typeText(u"y"_s);
    QCOMPARE(house.text(), u"water main"_s + QString(190, u'x'));
}

void SearchFieldTest::leftAndRightMoveCursorAndDownMovesFocus()
{
    TypingHouse house;
    house.typeText(u"dm"_s);
    house.press(Qt::Key_Left);
    house.typeText(u"a"_s);
    QCOMPARE(house.text(), u"dam"_s);
    house.press(Qt::Key_Right, 3);
    house.typeText(u"s"_s);
    QCOMPARE(house.text(), u"dams"_s);
    house.press(Qt::Key_Down);
    QCOMPARE(house.focused()->objectName(), u"below"_s);
    house.typeText(u"x"_s);
    QCOMPARE(house.text(), u"dams"_s);
    house.press(Qt::Key_Up);
    QVERIFY(house.isFieldFocused());
}

void SearchFieldTest::returnSubmitsAfterTyping()
{
    TypingHouse house;
    house.typeText(u"dam"_s);
    house.typeReturn();
    QCOMPARE(house.submissions(), 1);
    QVERIFY(!house.isOpen());
    QCOMPARE(house.text(), u"dam"_s);
}

void SearchFieldTest::returnOpensKeyboardBeforeTyping()
{
    TypingHouse house;
    house.typeReturn();
    QVERIFY(house.isOpen());
    QCOMPARE(house.submissions(), 0);
}

void SearchFieldTest::remoteSelectOpensKeyboardAfterTyping()
{
    TypingHouse house;
    house.typeText(u"dam"_s);
    house.press(Qt::Key_Select);
    QVERIFY(house.isOpen());
    QCOMPARE(house.submissions(), 0);
}

void SearchFieldTest::backIsNotAccepted()
{
    TypingHouse house;
    house.typeText(u"dam"_s);
    QKeyEvent back(QEvent::KeyPress, Qt::Key_Back, Qt::NoModifier);
    QCoreApplication::sendEvent(house.focused(), &back);
    QVERIFY(!back.isAccepted());
    QCOMPARE(house.text(), u"dam"_s);
}

void SearchFieldTest::noFrameIsDrawnAtRest()
{
    QGuiApplication::styleHints()->setCursorFlashTime(40);
    TypingHouse house;
    house.typeText(u"dam"_s);
    house.stage.waitUntilIdle();
    const int frames = house.stage.frames();
    QTest::qWait(200);
    QCOMPARE(house.stage.frames(), frames);
}

QUILLMERE_TEST(SearchFieldTest, QGuiApplication)
#include "SearchFieldTest.moc"
