#include "RemoteControl.h"
#include "Rows.h"
#include "TestMain.h"
#include "TypingFixture.h"
#include "XConnection.h"

#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Dead keys and the compose key of a physical keyboard, as the display server sends them. */
class DeadKeyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QStringList layout{u"us"_s, u"-variant"_s, u"intl"_s, u"-option"_s, u"compose:ralt"_s};
        QCOMPARE(QProcess::execute(u"setxkbmap"_s, layout), 0);
    }

    void composedCharactersAppearInField_data()
    {
        rows<bool>({"open"}, {{"field has focus", false}, {"on-screen key has focus", true}});
    }

    void composedCharactersAppearInField()
    {
        QFETCH(bool, open);
        TypingFixture fixture;
        if (open)
            fixture.open();
        RemoteControl keyboard(XConnection::open());
        QVERIFY(keyboard.focusTopWindow());
        for (const auto& key : {u"c"_s, u"a"_s, u"f"_s})
            keyboard.press(key);
        // Wait: composed characters would overtake keys that are still queued.
        QTRY_COMPARE(fixture.text(), u"caf"_s);
        for (const auto& key : {u"dead_acute"_s, u"e"_s})
            keyboard.press(key);
        QTRY_COMPARE(fixture.text(), u"café"_s);
        for (const auto& key : {u"Multi_key"_s, u"o"_s, u"e"_s})
            keyboard.press(key);
        QTRY_COMPARE(fixture.text(), u"caféœ"_s);
        QCOMPARE(fixture.isOpen(), open);
    }

    void returnSubmitsComposedText()
    {
        TypingFixture fixture;
        RemoteControl keyboard(XConnection::open());
        QVERIFY(keyboard.focusTopWindow());
        for (const auto& key : {u"dead_acute"_s, u"e"_s, u"Return"_s})
            keyboard.press(key);
        QTRY_COMPARE(fixture.submissions(), 1);
        QCOMPARE(fixture.text(), u"é"_s);
        QVERIFY(!fixture.isOpen());
    }
};

QUILLMERE_TEST(DeadKeyTest, QGuiApplication)

} // namespace quillmere

#include "DeadKeyTest.moc"
