#include "KeyboardLayout.h"
#include "TestMain.h"

#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

using namespace KeyboardLayout;

namespace {

/** All characters of a page in reading order. */
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

/** Tests the keys of the on-screen keyboard's pages and their positions. */
class KeyboardLayoutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyPageFillsGridAndHasCommandKeys_data()
    {
        QTest::addColumn<Page>("page");
        QTest::newRow("letters") << Page::Letters;
        QTest::newRow("accented letters") << Page::AccentedLetters;
        QTest::newRow("punctuation") << Page::Punctuation;
    }

    void everyPageFillsGridAndHasCommandKeys()
    {
        QFETCH(Page, page);
        QSet<std::pair<int, int>> occupied;
        int cells = 0;
        QStringList commands;
        const auto all = keys(page);
        for (const Key& key : all) {
            for (int column = key.column; column < key.column + key.span; ++column, ++cells) {
                QVERIFY(key.row >= 0 && key.row < rows && column >= 0 && column < columns);
                occupied.insert({key.row, column});
            }
            if (key.action != Action::Write && key.action != Action::ShowPage)
                commands.append(key.caption);
            // A key that writes no character has the same position and action on every page.
            if (key.action != Action::Write)
                QCOMPARE(keyAt(Page::Letters, key.row, key.column).action, key.action);
        }
        QCOMPARE(cells, rows * columns);
        QCOMPARE(occupied.size(), rows * columns);
        QCOMPARE(commands, (QStringList{u"Delete"_s, u"Clear"_s, u"Search"_s}));
        QVERIFY(characters(page).endsWith(u' '));
    }

    void lettersAreInOrderAndDigitsFollow()
    {
        QCOMPARE(characters(Page::Letters), u"abcdefghijklmnopqrstuvwxyz0123456789 "_s);
    }

    void accentedLettersAreInOrderOfBaseLetters()
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

    void onlySpaceIsOnSeveralPages()
    {
        const QString all = characters(Page::Letters).chopped(1) + characters(Page::AccentedLetters).chopped(1) +
                            characters(Page::Punctuation).chopped(1);
        QCOMPARE(QSet<QChar>(all.begin(), all.end()).size(), all.size());
    }

    void pageKeyLeadsBackFromSamePosition()
    {
        QSet<Page> opened;
        const auto all = keys(Page::Letters);
        for (const Key& key : all) {
            if (key.action != Action::ShowPage)
                continue;
            opened.insert(key.page);
            const Key back = keyAt(key.page, key.row, key.column);
            QCOMPARE(back.action, Action::ShowPage);
            QCOMPARE(back.page, Page::Letters);
        }
        QCOMPARE(opened, (QSet<Page>{Page::AccentedLetters, Page::Punctuation}));
    }
};

QUILLMERE_TEST(KeyboardLayoutTest, QCoreApplication)

} // namespace quillmere

#include "KeyboardLayoutTest.moc"
