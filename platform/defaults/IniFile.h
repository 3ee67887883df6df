#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

/** What an INI file holds. A value type; the functions run on any thread, one at a time for a file. */
struct IniFile
{
    QMap<QString, QVariant> values; ///< what could be read, of a damaged file too
    bool isDamaged = false;         ///< it is there and is not, or not wholly, an INI file

    /** Reads `path`; a missing or unreadable file is an empty one. */
    static IniFile read(const QString& path);

    /**
     * Brings `changes` into the file at `path` (an invalid value takes its key out) and replaces it as a whole, with
     * its folder made where there is none. A damaged file is set aside first and `whole` written in its place.
     * False, and the old file untouched, where that cannot be done.
     */
    static bool write(const QString& path, const QMap<QString, QVariant>& changes,
                      const QMap<QString, QVariant>& whole);
};
