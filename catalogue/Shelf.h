#pragma once

#include "VHSCover.h"

#include <QHash>
#include <QtQml/qqmlregistration.h>

using TapesByID = QHash<qint64, Tape>;

/**
 * A named row of cassettes. Equality looks at name and covers, the hash at the name alone: the tape map, one for all
 * the shelves built together, takes no part in either.
 */
struct Shelf
{
    Q_GADGET
    QML_VALUE_TYPE(shelf)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QList<VHSCover> covers MEMBER covers)

public:
    QString name;
    QList<VHSCover> covers; ///< in the order in which their tapes came
    TapesByID tapesByID;    ///< every tape of the pass, implicitly shared by its shelves

    bool operator==(const Shelf& other) const { return name == other.name && covers == other.covers; }
};

size_t qHash(const Shelf& shelf, size_t seed = 0) noexcept;
