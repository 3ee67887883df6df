#pragma once

#include "Shelf.h"

#include <QtQml/qqml.h>

namespace quillmere {

// These types register lists of covers and shelves as lists for the QML compiler and linter. C++ does not use them.

struct VHSCoverListForQml
{
    Q_GADGET
    QML_ANONYMOUS
    QML_FOREIGN(QList<quillmere::VHSCover>)
    QML_SEQUENTIAL_CONTAINER(quillmere::VHSCover)
};

struct ShelfListForQml
{
    Q_GADGET
    QML_ANONYMOUS
    QML_FOREIGN(QList<quillmere::Shelf>)
    QML_SEQUENTIAL_CONTAINER(quillmere::Shelf)
};

} // namespace quillmere
