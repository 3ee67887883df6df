#pragma once

#include "NewsStatus.h"
#include "Tape.h"

#include <QtQml/qqml.h>

// These types register lists of records as lists for the QML compiler and linter. C++ does not use them.

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
