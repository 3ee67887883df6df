#pragma once

#include "Shelf.h"

namespace quillmere {

using namespace Qt::StringLiterals;

/** Shelves for tests: tapes are given by their ids, and their titles contain the ids. */

inline Tape tapeOf(qint64 id)
{
    Tape tape;
    tape.id = id;
    tape.title = u"Tape %1"_s.arg(id);
    return tape;
}

inline Shelf shelfOf(const QString& name, const QList<qint64>& ids)
{
    Shelf shelf;
    shelf.name = name;
    for (const qint64 id : ids) {
        VHSCover cover;
        cover.id = id;
        cover.title = tapeOf(id).title;
        cover.bodyName = u"City Council"_s;
        cover.year = u"2024"_s;
        shelf.covers.append(cover);
        shelf.tapesByID.insert(id, tapeOf(id));
    }
    return shelf;
}

/** Creates shelves from a text "name: ids; name: ids". */
inline QList<Shelf> shelvesOf(const QString& text)
{
    QList<Shelf> all;
    const auto shelves = text.split(u"; "_s, Qt::SkipEmptyParts);
    for (const QString& shelf : shelves) {
        QList<qint64> ids;
        const auto words = shelf.section(u':', 1).split(u' ', Qt::SkipEmptyParts);
        for (const QString& id : words)
            ids.append(id.toLongLong());
        all.append(shelfOf(shelf.section(u':', 0, 0), ids));
    }
    return all;
}

} // namespace quillmere
