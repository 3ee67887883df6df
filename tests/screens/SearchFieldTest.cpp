#include "Rows.h"
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
    void placeholderIsShownWhileFieldIsEmpty()
    {
        TypingFixture fixture;
        const auto shown = [&] { return TestScreen::words(fixture.named("field")).value(0); };
        QCOMPARE(shown(), u"Search"_s);
        fixture.compose(u"´"_s);
        QCOMPARE(shown(), QString());
        fixture.compose({});
        QCOMPARE(shown(), u"Search"_s);
        fixture.typeText(u" "_s);
        QCOMPARE(shown(), QString());
    }

    void fieldHasAccessibleRoleAndText()
    {
        TypingFixture fixture;
        const auto* const interface = QAccessible::queryAccessibleInterface(fixture.named("field"));
        QCOMPARE(interface->role(), QAccessible::EditableText);
        QCOMPARE(interface->text(QAccessible::Name), u"Search"_s);
        fixture.typeText(u"dam"_s);
        QCOMPARE(interface->text(QAccessible::Name), u"dam"_s);
    }

    void typedCharactersAppearInField()
    {
        TypingFixture fixture;
        fixture.typeText(u"Zoning Éx 7"_s);
        QCOMPARE(fixture.text(), u"Zoning Éx 7"_s);
        fixture.typeKey(Qt::Key_Backspace, u"\b"_s);
        QCOMPARE(fixture.text(), u"Zoning Éx "_s);
        QVERIFY(fixture.isFieldFocused());
        QCOMPARE(fixture.submissions(), 0);
    }

    void committedTextOfInputMethodIsInserted()
    {
        TypingFixture fixture;
        fixture.compose(u"shi"_s);
        fixture.compose(u"shichou"_s);
        fixture.compose({}, u"市長"_s);
        QCOMPARE(fixture.text(), u"市長"_s);
        fixture.typeReturn();
        QCOMPARE(fixture.submissions(), 1);
    }

    void preeditTextIsNotPartOfText()
    {
        TypingFixture fixture;
        fixture.typeText(u"caf"_s);
        fixture.compose(u"´"_s);
        QCOMPARE(fixture.text(), u"caf"_s);
        fixture.compose({}, u"é"_s);
        QCOMPARE(fixture.text(), u"café"_s);
    }

    void inputMethodQueriesDescribeTextAndCursor()
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
        const QRectF rect =
            fixture.focused()->mapRectToScene(fixture.inputMethodQuery(Qt::ImCursorRectangle).toRectF());
        QVERIFY((rect.topLeft() - line.topLeft()).manhattanLength() < 1);
    }

    void pastedTextIsInsertedUpToMaximumLength()
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

    void leftAndRightMoveCursorAndDownMovesFocus()
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

    void returnSubmitsAfterTypingAndRemoteOpensKeyboard_data()
    {
        rows<QString, bool, bool>({"typed", "isReturn", "opens"}, {{"return after typing", u"dam"_s, true, false},
                                                                   {"return before typing", QString(), true, true},
                                                                   {"remote after typing", u"dam"_s, false, true}});
    }

    void returnSubmitsAfterTypingAndRemoteOpensKeyboard()
    {
        QFETCH(QString, typed);
        QFETCH(bool, isReturn);
        QFETCH(bool, opens);
        TypingFixture fixture;
        fixture.typeText(typed);
        if (isReturn)
            fixture.typeReturn();
        else
            fixture.press(Qt::Key_Select);
        QCOMPARE(fixture.isOpen(), opens);
        QCOMPARE(fixture.submissions(), opens ? 0 : 1);
        QCOMPARE(fixture.text(), typed);
    }

    void backIsNotAccepted()
    {
        TypingFixture fixture;
        fixture.typeText(u"dam"_s);
        QKeyEvent back(QEvent::KeyPress, Qt::Key_Back, Qt::NoModifier);
        QCoreApplication::sendEvent(fixture.focused(), &back);
        QVERIFY(!back.isAccepted());
        QCOMPARE(fixture.text(), u"dam"_s);
    }

    void noFrameIsDrawnAtRest()
    {
        QGuiApplication::styleHints()->setCursorFlashTime(40);
        TypingFixture fixture;
        fixture.typeText(u"dam"_s);
        fixture.waitUntilIdle();
        const int frames = fixture.frames();
        QTest::qWait(200);
        QCOMPARE(fixture.frames(), frames);
    }
};

QUILLMERE_TEST(SearchFieldTest, QGuiApplication)

} // namespace quillmere

#include "SearchFieldTest.moc"
