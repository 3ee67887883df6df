#pragma once

#include <QList>
#include <QString>

/** The keys of each page of the on-screen keyboard and their positions. Pure functions; any thread. */
namespace quillmere::KeyboardLayout {

enum class Page { Letters, AccentedLetters, Punctuation };

enum class Action { Write, Delete, Clear, ShowPage, Search };

struct Key
{
    QString caption; ///< text on the key
    QString title;   ///< name for screen readers
    Action action = Action::Write;
    QString text;              ///< the text that Action::Write inserts
    Page page = Page::Letters; ///< the page that Action::ShowPage shows
    int row = 0;
    int column = 0; ///< in columns; a character key is one column wide
    int span = 1;   ///< columns
    bool operator==(const Key&) const = default;
};

inline constexpr int rows = 5;
inline constexpr int columns = 11;

/**
 * The keys of a page, row by row from left to right. Keys that are not characters have the same position on all pages.
 */
QList<Key> keys(Page page);

} // namespace quillmere::KeyboardLayout
