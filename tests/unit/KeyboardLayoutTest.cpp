#include "KeyboardLayout.h"

#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace KeyboardLayout;

Q_DECLARE_METATYPE(KeyboardLayout::Page)

namespace {

void addPages()
{
    QTest::addColumn<Page>("page");
    QTest::newRow("letters") << Page::Letters;
    QTest::newRow("accented letters") << Page::AccentedLetters;
    QTest::newRow("punctuation") << Page::Punctuation;
}

/** All characters of a page in the order in which they are read. */
QString characters(Page page)
{
    QString text;
    const auto all = keys(page);
    for (const Key& key : all) {
        if (key.action == Action::Write)
            text += key.text;
    }
    return text;
}

Key keyAt(Page page, int row, int column)
{
    const auto all = keys(page);
    for (const Key& key : all) {
        if (key.row == row && key.column == column)
            return key;
    }
    return {};
}

} // namespace

/** What the pages of the on-screen keyboard hold, and where. */
class KeyboardLayoutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theKeysOfAPageFillTheWholeGridOnce_data();
    void theKeysOfAPageFillTheWholeGridOnce();
    void lettersStandInTheirOrderAndDigitsBehindThem();
    void accentedLettersStandInTheOrderOfTheirLetters();
    void noCharacterButSpaceStandsTwice();
    void everyPageHasEveryCommand_data();
    void everyPageHasEveryCommand();
    void theKeyThatLedToAPageLeadsBack();
};

void KeyboardLayoutTest::theKeysOfAPageFillTheWholeGridOnce_data()
{
    addPages();
}

void KeyboardLayoutTest::theKeysOfAPageFillTheWholeGridOnce()
{
    QFETCH(Page, page);
    QSet<std::pair<int, int>> taken;
    int cells = 0;
    const auto all = keys(page);
    for (const Key& key : all) {
        for (int column = key.column; column < key.column + key.span; ++column, ++cells) {
            QVERIFY(key.row >= 0 && key.row < rows && column >= 0 && column < columns);
            taken.insert({key.row, column});
        }
    }
    QCOMPARE(cells, rows * columns);
    QCOMPARE(taken.size(), rows * columns);
}

void KeyboardLayoutTest::lettersStandInTheirOrderAndDigitsBehindThem()
{
    QCOMPARE(characters(Page::Letters), u"abcdefghijklmnopqrstuvwxyz0123456789 "_s);
}

void KeyboardLayoutTest::accentedLettersStandInTheOrderOfTheirLetters()
{
    QChar last;
    const QString text = characters(Page::AccentedLetters).chopped(1);
    for (const QChar letter : text) {
        QVERIFY(letter.isLower());
        if (letter.decomposition().isEmpty())
            continue;
        const QChar base = letter.decomposition().front();
        QVERIFY2(base >= last, qPrintable(QString(letter)));
        last = base;
    }
}

void KeyboardLayoutTest::noCharacterButSpaceStandsTwice()
{
    const QString all = characters(Page::Letters).chopped(1) + characters(Page::AccentedLetters).chopped(1) +
                        characters(Page::Punctuation).chopped(1);
    QCOMPARE(QSet<QChar>(all.begin(), all.end()).size(), all.size());
}

void KeyboardLayoutTest::everyPageHasEveryCommand_data()
{
    addPages();
}

void KeyboardLayoutTest::everyPageHasEveryCommand()
{
    QFETCH(Page, page);
    QStringList captions;
    const auto all = keys(page);
    for (const Key& key : all) {
        if (key.action != Action::Write && key.action != Action::ShowPage)
            captions.append(key.caption);
        // What is no character stands at one place.
        if (key.action != Action::Write)
            QCOMPARE(keyAt(Page::Letters, key.row, key.column).action, key.action);
    }
    QCOMPARE(captions, (QStringList{u"Delete"_s, u"Clear"_s, u"Search"_s}));
    QVERIFY(characters(page).endsWith(u' '));
}

void KeyboardLayoutTest::theKeyThatLedToAPageLeadsBack()
{
    QSet<Page> led;
    const auto all = keys(Page::Letters);
    for (const Key& key : all) {
        if (key.action != Action::ShowPage)
            continue;
        led.insert(key.page);
        const Key back = keyAt(key.page, key.row, key.column);
        QCOMPARE(back.action, Action::ShowPage);
        QCOMPARE(back.page, Page::Letters);
    }
    QCOMPARE(led, (QSet<Page>{Page::AccentedLetters, Page::Punctuation}));
}

QTEST_GUILESS_MAIN(KeyboardLayoutTest)
#include "KeyboardLayoutTest.moc"
