#pragma once

#include "NewsStatus.h"
#include "Tape.h"

#include <QtQml/qqml.h>

namespace quillmere {

// These types register lists of records as lists for the QML compiler and linter. C++ does not use them.

struct TapeListForQml
{
    Q_GADGET
    QML_ANONYMOUS
    QML_FOREIGN(QList<quillmere::Tape>)
    QML_SEQUENTIAL_CONTAINER(quillmere::Tape)
};

struct TapeMarketListForQml
{
    Q_GADGET
    QML_ANONYMOUS
    QML_FOREIGN(QList<quillmere::TapeMarket>)
    QML_SEQUENTIAL_CONTAINER(quillmere::TapeMarket)
};

struct TapeDocumentListForQml
{
    Q_GADGET
    QML_ANONYMOUS
    QML_FOREIGN(QList<quillmere::TapeDocument>)
    QML_SEQUENTIAL_CONTAINER(quillmere::TapeDocument)
};

struct TunerStationListForQml
{
    Q_GADGET
    QML_ANONYMOUS
    QML_FOREIGN(QList<quillmere::TunerStation>)
    QML_SEQUENTIAL_CONTAINER(quillmere::TunerStation)
};

} // namespace quillmere
