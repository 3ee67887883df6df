#pragma once

#include "Tape.h"
#include "TunerStation.h"

#include <QtQml/qqml.h>

// Tells the QML compiler and linter that the lists of records are lists; nobody else needs these.

struct TapeListForQml
{
    Q_GADGET
    QML_ANONYMOUS
    QML_FOREIGN(QList<Tape>)
    QML_SEQUENTIAL_CONTAINER(Tape)
};

struct TapeMarketListForQml
{
    Q_GADGET
    QML_ANONYMOUS
    QML_FOREIGN(QList<TapeMarket>)
    QML_SEQUENTIAL_CONTAINER(TapeMarket)
};

struct TapeDocumentListForQml
{
    Q_GADGET
    QML_ANONYMOUS
    QML_FOREIGN(QList<TapeDocument>)
    QML_SEQUENTIAL_CONTAINER(TapeDocument)
};

struct TunerStationListForQml
{
    Q_GADGET
    QML_ANONYMOUS
    QML_FOREIGN(QList<TunerStation>)
    QML_SEQUENTIAL_CONTAINER(TunerStation)
};
