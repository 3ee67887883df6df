#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

namespace quillmere {

/** Contents of an INI file. The functions may be called on any thread, but only one at a time for the same file. */
struct IniFile
{
    QMap<QString, QVariant> values; ///< all values that could be read, even from a damaged file
    bool isDamaged = false;         ///< the file exists and is not completely valid INI

    /** Reads the file. A missing or unreadable file is treated as empty. */
    static IniFile read(const QString& path);

    /**
     * Merges `changes` into the file (an invalid value removes its key) and replaces the whole file. Creates the folder
     * if needed. A damaged file is renamed first, and `allValues` is written as a new file. On failure returns false
     * and leaves the old file unchanged.
     */
    static bool write(const QString& path, const QMap<QString, QVariant>& changes,
                      const QMap<QString, QVariant>& allValues);
};

} // namespace quillmere
