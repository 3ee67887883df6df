#pragma once

#include "Shelf.h"

#include <QtQml/qqml.h>

// These types register lists of covers and shelves as lists for the QML compiler and linter. C++ does not use them.

struct VHSCoverListForQml
{
    Q_GADGET
    QML_ANONYMOUS
    QML_FOREIGN(QList<VHSCover>)
    QML_SEQUENTIAL_CONTAINER(VHSCover)
};

struct ShelfListForQml
{
    Q_GADGET
    QML_ANONYMOUS
    QML_FOREIGN(QList<Shelf>)
    QML_SEQUENTIAL_CONTAINER(Shelf)
};
