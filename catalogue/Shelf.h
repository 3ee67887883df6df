#pragma once

#include "VHSCover.h"

#include <QHash>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

using TapesByID = QHash<qint64, Tape>;

/**
 * A named row of cassettes. Equality compares name and covers; the hash uses only the name. Neither uses the tape map,
 * which all shelves of one buildShelves() call share.
 */
struct Shelf
{
    Q_GADGET
    QML_VALUE_TYPE(shelf)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QList<quillmere::VHSCover> covers MEMBER covers)

public:
    QString name;
    QList<VHSCover> covers; ///< in the order of their tapes
    TapesByID tapesByID;    ///< all tapes of the buildShelves() call, implicitly shared by its shelves

    bool operator==(const Shelf& other) const { return name == other.name && covers == other.covers; }
};

inline size_t qHash(const Shelf& shelf, size_t seed = 0) noexcept
{
    return qHash(shelf.name, seed);
}

} // namespace quillmere
