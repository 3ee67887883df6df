#pragma once

#include "Tape.h"

/** One page of tapes from a list or a search. */
struct TapePage
{
    qint64 total = 0;    ///< number of matches on all pages
    qint64 page = 1;     ///< counted from 1
    qint64 perPage = 60; ///< the default if the hub does not send it
    QList<Tape> items;
};
