#pragma once

#include "Shelf.h"

#include <QStringView>

/** Turns recordings into cassettes: pure functions of their arguments, total, usable from any thread. */

/** The whole dressing of one tape. */
VHSCover dress(const Tape& tape);

/** Dresses every tape and groups the covers, shelves and covers in order of first appearance. */
QList<Shelf> buildShelves(const QList<Tape>& tapes);

/** One line that names the bodies on a shelf: two of them, and how many more there are. */
QString bodySummary(const QList<VHSCover>& covers);

/** The seed behind every choice of a cassette. `title` is the cover's, trimmed or replaced. */
quint32 dressingSeed(qint64 id, QStringView title);

/** 32-bit FNV-1a over the UTF-16 code units. */
quint32 fnv1a32(QStringView text);
