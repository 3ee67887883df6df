#pragma once

#include "Tape.h"

/** One page of tapes from a list or a search. */
struct TapePage
{
    qint64 total = 0;    ///< matches over all pages
    qint64 page = 1;     ///< counted from 1
    qint64 perPage = 60; ///< what is assumed when the hub leaves it out
    QList<Tape> items;
};
