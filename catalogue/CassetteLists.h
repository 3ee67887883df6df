#pragma once

#include "Shelf.h"

#include <QtQml/qqml.h>

// Tells the QML compiler and linter that the lists of covers and shelves are lists; nobody else needs these.

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
