#include "TestMain.h"
#include "TypingFixture.h"

#include <QAccessible>
#include <QClipboard>
#include <QStyleHints>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

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
    TypingFixture fixture;
    const auto shown = [&] {
        const auto texts = TestScreen::texts(fixture.named("field"));
        return texts.isEmpty() ? QString() : texts.first()->property("text").toString();
    };
    QCOMPARE(shown(), u"Search"_s);
    fixture.compose(u"´"_s);
    QCOMPARE(shown(), QString());
    fixture.compose({});
    QCOMPARE(shown(), u"Search"_s);
    fixture.typeText(u" "_s);
    QCOMPARE(shown(), QString());
}

void SearchFieldTest::fieldHasAccessibleRoleAndText()
{
    TypingFixture fixture;
    const auto accessibleName = [&] {
        const auto* const interface = QAccessible::queryAccessibleInterface(fixture.named("field"));
        return interface->text(QAccessible::Name);
    };
    QCOMPARE(QAccessible::queryAccessibleInterface(fixture.named("field"))->role(), QAccessible::EditableText);
    QCOMPARE(accessibleName(), u"Search"_s);
    fixture.typeText(u"dam"_s);
    QCOMPARE(accessibleName(), u"dam"_s);
}

void SearchFieldTest::typedCharactersAppearInField()
{
    TypingFixture fixture;
    fixture.typeText(u"Zoning Éx 7"_s);
    QCOMPARE(fixture.text(), u"Zoning Éx 7"_s);
    fixture.typeKey(Qt::Key_Backspace, u"\b"_s);
    QCOMPARE(fixture.text(), u"Zoning Éx "_s);
    QVERIFY(fixture.isFieldFocused());
    QCOMPARE(fixture.submissions(), 0);
}

void SearchFieldTest::committedTextOfInputMethodIsInserted()
{
    TypingFixture fixture;
    fixture.compose(u"shi"_s);
    fixture.compose(u"shichou"_s);
    fixture.compose({}, u"市長"_s);
    QCOMPARE(fixture.text(), u"市長"_s);
    fixture.typeReturn();
    QCOMPARE(fixture.submissions(), 1);
}

void SearchFieldTest::preeditTextIsNotPartOfText()
{
    TypingFixture fixture;
    fixture.typeText(u"caf"_s);
    fixture.compose(u"´"_s);
    QCOMPARE(fixture.text(), u"caf"_s);
    fixture.compose({}, u"é"_s);
    QCOMPARE(fixture.text(), u"café"_s);
}

void SearchFieldTest::inputMethodQueriesDescribeTextAndCursor()
{
    TypingFixture fixture;
    QCOMPARE(fixture.inputMethodQuery(Qt::ImEnabled).toBool(), true);
    const QRectF before = fixture.inputMethodQuery(Qt::ImCursorRectangle).toRectF();
    fixture.typeText(u"dam"_s);
    QCOMPARE(fixture.inputMethodQuery(Qt::ImSurroundingText).toString(), u"dam"_s);
    QCOMPARE(fixture.inputMethodQuery(Qt::ImCursorPosition).toInt(), 3);
    const QRectF after = fixture.inputMethodQuery(Qt::ImCursorRectangle).toRectF();
    QVERIFY(after.left() > before.left() + 20);
    QVERIFY(QRectF(QPointF(), fixture.named("field")->size()).contains(after));

    // While the on-screen keyboard is open, the line is far from the focused key.
    const QRectF line = fixture.focused()->mapRectToScene(after);
    fixture.open();
    fixture.waitUntilIdle();
    QCOMPARE(fixture.inputMethodQuery(Qt::ImEnabled).toBool(), true);
    QCOMPARE(fixture.inputMethodQuery(Qt::ImSurroundingText).toString(), u"dam"_s);
    const QRectF rect = fixture.focused()->mapRectToScene(fixture.inputMethodQuery(Qt::ImCursorRectangle).toRectF());
    QVERIFY((rect.topLeft() - line.topLeft()).manhattanLength() < 1);
}

void SearchFieldTest::pastedTextIsInsertedUpToMaximumLength()
{
    TypingFixture fixture;
    QGuiApplication::clipboard()->setText(u"water main"_s);
    fixture.typeKey(Qt::Key_V, u"\x16"_s, Qt::ControlModifier);
    QCOMPARE(fixture.text(), u"water main"_s);
    fixture.typeReturn();
    QCOMPARE(fixture.submissions(), 1);
    QGuiApplication::clipboard()->setText(QString(100'000, u'x'));
    fixture.typeKey(Qt::Key_V, u"\x16"_s, Qt::ControlModifier);
    fixture.typeText(u"y"_s);
    QCOMPARE(fixture.text(), u"water main"_s + QString(190, u'x'));
}

void SearchFieldTest::leftAndRightMoveCursorAndDownMovesFocus()
{
    TypingFixture fixture;
    fixture.typeText(u"dm"_s);
    fixture.press(Qt::Key_Left);
    fixture.typeText(u"a"_s);
    QCOMPARE(fixture.text(), u"dam"_s);
    fixture.press(Qt::Key_Right, 3);
    fixture.typeText(u"s"_s);
    QCOMPARE(fixture.text(), u"dams"_s);
    fixture.press(Qt::Key_Down);
    QCOMPARE(fixture.focused()->objectName(), u"below"_s);
    fixture.typeText(u"x"_s);
    QCOMPARE(fixture.text(), u"dams"_s);
    fixture.press(Qt::Key_Up);
    QVERIFY(fixture.isFieldFocused());
}

void SearchFieldTest::returnSubmitsAfterTyping()
{
    TypingFixture fixture;
    fixture.typeText(u"dam"_s);
    fixture.typeReturn();
    QCOMPARE(fixture.submissions(), 1);
    QVERIFY(!fixture.isOpen());
    QCOMPARE(fixture.text(), u"dam"_s);
}

void SearchFieldTest::returnOpensKeyboardBeforeTyping()
{
    TypingFixture fixture;
    fixture.typeReturn();
    QVERIFY(fixture.isOpen());
    QCOMPARE(fixture.submissions(), 0);
}

void SearchFieldTest::remoteSelectOpensKeyboardAfterTyping()
{
    TypingFixture fixture;
    fixture.typeText(u"dam"_s);
    fixture.press(Qt::Key_Select);
    QVERIFY(fixture.isOpen());
    QCOMPARE(fixture.submissions(), 0);
}

void SearchFieldTest::backIsNotAccepted()
{
    TypingFixture fixture;
    fixture.typeText(u"dam"_s);
    QKeyEvent back(QEvent::KeyPress, Qt::Key_Back, Qt::NoModifier);
    QCoreApplication::sendEvent(fixture.focused(), &back);
    QVERIFY(!back.isAccepted());
    QCOMPARE(fixture.text(), u"dam"_s);
}

void SearchFieldTest::noFrameIsDrawnAtRest()
{
    QGuiApplication::styleHints()->setCursorFlashTime(40);
    TypingFixture fixture;
    fixture.typeText(u"dam"_s);
    fixture.waitUntilIdle();
    const int frames = fixture.frames();
    QTest::qWait(200);
    QCOMPARE(fixture.frames(), frames);
}

QUILLMERE_TEST(SearchFieldTest, QGuiApplication)

} // namespace quillmere

#include "SearchFieldTest.moc"
