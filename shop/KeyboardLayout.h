#pragma once

#include <QList>
#include <QString>

/** What the on-screen keyboard has on each of its pages, and where. Pure functions; any thread. */
namespace KeyboardLayout {

enum class Page { Letters, AccentedLetters, Punctuation };

enum class Action { Write, Delete, Clear, ShowPage, Search };

struct Key
{
    QString caption; ///< what it shows
    QString title;   ///< what is heard
    Action action = Action::Write;
    QString text;              ///< what it writes
    Page page = Page::Letters; ///< what it shows
    int row = 0;
    int column = 0; ///< in columns of one character's width
    int span = 1;   ///< columns
    bool operator==(const Key&) const = default;
};

inline constexpr int rows = 5;
inline constexpr int columns = 11;

/** The keys of a page, row by row from left to right; what is no character stands at one place on every page. */
QList<Key> keys(Page page);

} // namespace KeyboardLayout
