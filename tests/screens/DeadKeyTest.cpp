#include "RemoteControl.h"
#include "TypingHouse.h"
#include "XConnection.h"

#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

/** Dead keys and the compose key of a real keyboard, as a display sends them. */
class DeadKeyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theyWriteIntoTheField_data();
    void theyWriteIntoTheField();
    void returnSearchesWhatTheyWrote();
};

void DeadKeyTest::initTestCase()
{
    const QStringList layout{u"us"_s, u"-variant"_s, u"intl"_s, u"-option"_s, u"compose:ralt"_s};
    QCOMPARE(QProcess::execute(u"setxkbmap"_s, layout), 0);
}

void DeadKeyTest::theyWriteIntoTheField_data()
{
    QTest::addColumn<bool>("open");
    QTest::newRow("the field has the focus") << false;
    QTest::newRow("a key of the on-screen keyboard has it") << true;
}

void DeadKeyTest::theyWriteIntoTheField()
{
    QFETCH(bool, open);
    TypingHouse house;
    if (open)
        house.open();
    RemoteControl keyboard(XConnection::open());
    QVERIFY(keyboard.giveFocus());
    for (const auto& key : {u"c"_s, u"a"_s, u"f"_s})
        keyboard.press(key);
    // What is composed overtakes keys that still wait.
    QTRY_COMPARE(house.text(), u"caf"_s);
    for (const auto& key : {u"dead_acute"_s, u"e"_s})
        keyboard.press(key);
    QTRY_COMPARE(house.text(), u"café"_s);
    for (const auto& key : {u"Multi_key"_s, u"o"_s, u"e"_s})
        keyboard.press(key);
    QTRY_COMPARE(house.text(), u"caféœ"_s);
    QCOMPARE(house.isOpen(), open);
}

void DeadKeyTest::returnSearchesWhatTheyWrote()
{
    TypingHouse house;
    RemoteControl keyboard(XConnection::open());
    QVERIFY(keyboard.giveFocus());
    for (const auto& key : {u"dead_acute"_s, u"e"_s, u"Return"_s})
        keyboard.press(key);
    QTRY_COMPARE(house.submissions(), 1);
    QCOMPARE(house.text(), u"é"_s);
    QVERIFY(!house.isOpen());
}

QTEST_MAIN(DeadKeyTest)
#include "DeadKeyTest.moc"
