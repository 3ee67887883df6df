#include "Rows.h"
#include "TestMain.h"
#include "TypingFixture.h"

#include <QQueue>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Typing with the on-screen keyboard and the remote. */
class OnScreenKeyboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void selectOnFieldOpensKeyboardAtFirstLetter()
    {
        TypingFixture fixture;
        QVERIFY(fixture.isFieldFocused());
        QVERIFY(!fixture.isOpen());
        fixture.press(Qt::Key_Select);
        QVERIFY(fixture.isOpen());
        QCOMPARE(fixture.key(), u"a"_s);
        QCOMPARE(fixture.text(), QString());
    }

    void wordNeedsFewKeyPresses()
    {
        OpenKeyboardFixture fixture;
        for (const QChar letter : u"zoning"_s)
            fixture.selectKey(letter);
        fixture.press(Qt::Key_MediaTogglePlayPause);
        QCOMPARE(fixture.text(), u"zoning"_s);
        QCOMPARE(fixture.submissions(), 1);
        QVERIFY2(fixture.presses <= 40, qPrintable(QString::number(fixture.presses)));
    }

    void spaceDeleteAndClearKeysEditText()
    {
        OpenKeyboardFixture fixture;
        for (const QString& key : {u"a"_s, u"Space"_s, u"b"_s, u"7"_s})
            fixture.selectKey(key);
        QCOMPARE(fixture.text(), u"a b7"_s);
        fixture.selectKey(u"Delete"_s);
        QCOMPARE(fixture.text(), u"a b"_s);
        fixture.selectKey(u"Clear"_s);
        QCOMPARE(fixture.text(), QString());
        fixture.selectKey(u"Delete"_s);
        QCOMPARE(fixture.text(), QString());
        QVERIFY(fixture.isOpen());
        QCOMPARE(fixture.submissions(), 0);
    }

    void typedLetterIsInsertedAtCursor()
    {
        TypingFixture fixture;
        fixture.typeText(u"zonng"_s);
        fixture.press(Qt::Key_Left, 2);
        fixture.open();
        fixture.selectKey(u"i"_s);
        QCOMPARE(fixture.text(), u"zoning"_s);
    }

    void rewindButtonDeletesAndRepeatsWhileHeld()
    {
        TypingFixture fixture;
        fixture.setText(u"council meeting"_s);
        fixture.open();
        fixture.press(Qt::Key_AudioRewind);
        QCOMPARE(fixture.text(), u"council meetin"_s);
        QCOMPARE(fixture.key(), u"a"_s);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_AudioRewind, Qt::NoModifier);
        QCoreApplication::sendEvent(&fixture.window(), &press);
        fixture.clock.advance(std::chrono::seconds(5));
        QTRY_VERIFY(fixture.text().size() < 13);
    }

    void keyboardClosesAndSubmitsOnceAtMost_data()
    {
        rows<int, int>({"button", "submissions"}, {{"play/pause", Qt::Key_MediaTogglePlayPause, 1},
                                                   {"play", Qt::Key_MediaPlay, 1},
                                                   {"search key", Qt::Key_Select, 1},
                                                   {"back", Qt::Key_Back, 0}});
    }

    void keyboardClosesAndSubmitsOnceAtMost()
    {
        QFETCH(int, button);
        OpenKeyboardFixture fixture;
        fixture.selectKey(u"d"_s);
        if (button == Qt::Key_Select)
            fixture.focusKey(u"Search"_s);
        fixture.press(button);
        QVERIFY(!fixture.isOpen());
        QVERIFY(fixture.isFieldFocused());
        QTEST(fixture.submissions(), "submissions");
        QCOMPARE(fixture.text(), u"d"_s);
    }

    void pageKeysSwitchPagesAndKeepFocus()
    {
        OpenKeyboardFixture fixture;
        fixture.selectKey(u"à é ñ"_s);
        QCOMPARE(fixture.key(), u"a b c"_s);
        fixture.selectKey(u"ñ"_s);
        fixture.selectKey(u". ? !"_s);
        QCOMPARE(fixture.key(), u"a b c"_s);
        fixture.selectKey(u"?"_s);
        fixture.selectKey(u"a b c"_s);
        QCOMPARE(fixture.key(), u". ? !"_s);
        fixture.selectKey(u"z"_s);
        QCOMPARE(fixture.text(), u"ñ?z"_s);
    }

    void keyboardOpensWithLetters()
    {
        OpenKeyboardFixture fixture;
        fixture.selectKey(u". ? !"_s);
        fixture.press(Qt::Key_Back);
        fixture.open();
        QCOMPARE(fixture.key(), u"a"_s);
    }

    void everyKeyIsReachableInBothDirections()
    {
        OpenKeyboardFixture fixture;
        auto* const first = qobject_cast<Focusable*>(fixture.focused());
        QHash<Focusable*, QSet<Focusable*>> before; // for each key, the keys from which an arrow leads to it
        QSet<Focusable*> reached{first};
        QQueue<Focusable*> waiting{{first}};
        while (!waiting.isEmpty()) {
            Focusable* const key = waiting.dequeue();
            for (const int arrow : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
                fixture.board()->focus(key);
                fixture.press(arrow);
                auto* const next = qobject_cast<Focusable*>(fixture.focused());
                before[next].insert(key);
                if (!reached.contains(next))
                    waiting.enqueue(next);
                reached.insert(next);
            }
        }
        QCOMPARE(reached.size(), fixture.keys().size());
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

    void arrowAtEdgeKeepsFocus()
    {
        OpenKeyboardFixture fixture;
        fixture.press(Qt::Key_Up);
        fixture.press(Qt::Key_Left);
        QCOMPARE(fixture.key(), u"a"_s);
        fixture.focusKey(u"Search"_s);
        fixture.press(Qt::Key_Down);
        fixture.press(Qt::Key_Right);
        QCOMPARE(fixture.key(), u"Search"_s);
    }

    void focusedKeyDoesNotOverlapOthers()
    {
        OpenKeyboardFixture fixture;
        const auto keys = fixture.keys();
        for (const QString& caption : {u"n"_s, u"Delete"_s, u"Space"_s, u"Search"_s}) {
            fixture.focusKey(caption);
            fixture.waitUntilIdle();
            const QQuickItem* const focused = fixture.focused();
            const QRectF area = TestScreen::area(TestScreen::first(fixture.focused(), "StationPlate"));
            for (const QQuickItem* key : keys)
                QVERIFY2(key == focused || !TestScreen::area(key).intersects(area), qPrintable(caption));
        }
    }

    void keyboardIsInLowerHalfOfSafeArea()
    {
        OpenKeyboardFixture fixture;
        const QRectF safeArea(80, 540, 1920 - 2 * 80, 540 - 60);
        // A focused key is larger than at rest.
        fixture.focusKey(u"Search"_s);
        fixture.waitUntilIdle();
        const QQuickItem* const plate = TestScreen::first(fixture.focused(), "StationPlate");
        QVERIFY(plate->scale() > 1);
        QVERIFY(safeArea.contains(fixture.areaOnCanvas(plate)));
        const auto keys = fixture.keys();
        QCOMPARE(keys.size(), 42);
        for (const QQuickItem* key : keys) {
            const QRectF area = fixture.areaOnCanvas(key);
            QVERIFY2(safeArea.adjusted(-0.01, 0, 0.01, 0.01).contains(area),
                     qPrintable(key->property("text").toString()));
        }
    }

    void captionsAreLargeAndFitTheirKeys()
    {
        OpenKeyboardFixture fixture;
        const auto keys = fixture.keys();
        for (QQuickItem* key : keys) {
            const QQuickItem* const caption = TestScreen::first(key, "StationText");
            QVERIFY(caption->property("font").value<QFont>().pixelSize() >= 24);
            QVERIFY2(caption->implicitWidth() <= key->width() - 20, qPrintable(key->property("text").toString()));
            QVERIFY(caption->implicitHeight() <= key->height());
        }
    }

    void physicalKeyboardTypesWhileKeyboardIsOpen()
    {
        OpenKeyboardFixture fixture;
        fixture.press(Qt::Key_Right);
        fixture.typeText(u"Cit y"_s);
        fixture.typeKey(Qt::Key_Backspace, u"\b"_s);
        fixture.compose(u"´"_s);
        fixture.compose({}, u"é"_s);
        QCOMPARE(fixture.text(), u"Cit é"_s);
        QCOMPARE(fixture.key(), u"b"_s);
    }

    void returnKeySubmitsAfterTypingAndSelectsAfterArrow()
    {
        OpenKeyboardFixture fixture;
        fixture.typeText(u"ab"_s);
        fixture.press(Qt::Key_Right);
        fixture.typeReturn();
        QCOMPARE(fixture.text(), u"abb"_s);
        QCOMPARE(fixture.submissions(), 0);
        fixture.typeText(u"c"_s);
        fixture.typeReturn();
        QCOMPARE(fixture.text(), u"abbc"_s);
        QCOMPARE(fixture.submissions(), 1);
        QVERIFY(!fixture.isOpen());
    }
};

QUILLMERE_TEST(OnScreenKeyboardTest, QGuiApplication)

} // namespace quillmere

#include "OnScreenKeyboardTest.moc"
