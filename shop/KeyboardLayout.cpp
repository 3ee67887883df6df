#include "KeyboardLayout.h"

#include <array>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

using namespace KeyboardLayout;

constexpr int characterColumns = 9;
constexpr int characterRows = 4;

using Characters = std::array<QStringView, characterRows>;

constexpr Characters letters{u"abcdefghi", u"jklmnopqr", u"stuvwxyz0", u"123456789"};
constexpr Characters accentedLetters{u"àáâãäåæçð", u"èéêëìíîïł", u"ñòóôõöøœß", u"šùúûüýÿþž"};
constexpr Characters punctuation{u".,?!:;'\"-", u"&@#$%+=*/", u"()[]{}<>_", u"¿¡“”‘’–—…"};

const Characters& characters(Page page)
{
    switch (page) {
    case Page::AccentedLetters:
        return accentedLetters;
    case Page::Punctuation:
        return punctuation;
    default:
        return letters;
    }
}

Key pageKey(Page page)
{
    switch (page) {
    case Page::AccentedLetters:
        return {u"à é ñ"_s, u"Accented letters"_s, Action::ShowPage, {}, page};
    case Page::Punctuation:
        return {u". ? !"_s, u"Punctuation"_s, Action::ShowPage, {}, page};
    default:
        return {u"a b c"_s, u"Letters"_s, Action::ShowPage, {}, page};
    }
}

/** The key at the right of each row of characters. The key that opens a page becomes one that returns to letters. */
std::array<Key, characterRows> sideKeys(Page page)
{
    const bool isAccented = page == Page::AccentedLetters;
    const bool isPunctuation = page == Page::Punctuation;
    return {Key{u"Delete"_s, u"Delete"_s, Action::Delete, {}}, Key{u"Clear"_s, u"Clear"_s, Action::Clear, {}},
            pageKey(isAccented ? Page::Letters : Page::AccentedLetters),
            pageKey(isPunctuation ? Page::Letters : Page::Punctuation)};
}

Key keyAt(Key key, int row, int column, int span)
{
    key.row = row;
    key.column = column;
    key.span = span;
    return key;
}

} // namespace

QList<Key> KeyboardLayout::keys(Page page)
{
    QList<Key> keys;
    const auto side = sideKeys(page);
    for (int row = 0; row < characterRows; ++row) {
        for (int column = 0; column < characterColumns; ++column) {
            const QString character = characters(page)[size_t(row)].mid(column, 1).toString();
            keys.append(keyAt({character, character, Action::Write, character}, row, column, 1));
        }
        keys.append(keyAt(side[size_t(row)], row, characterColumns, columns - characterColumns));
    }
    constexpr int spaceSpan = 7;
    keys.append(keyAt({u"Space"_s, u"Space"_s, Action::Write, u" "_s}, characterRows, 0, spaceSpan));
    keys.append(keyAt({u"Search"_s, u"Search"_s, Action::Search, {}}, characterRows, spaceSpan, columns - spaceSpan));
    return keys;
}

} // namespace quillmere
