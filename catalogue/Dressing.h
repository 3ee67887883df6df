#pragma once

#include "Shelf.h"

#include <QStringView>

namespace quillmere {

/** Computes cassette covers from recordings. All functions are pure, valid for any argument, and thread-safe. */

/** The cassette cover of a tape. */
VHSCover dress(const Tape& tape);

/** Computes all covers and groups them by shelf. Shelves and covers are in order of first appearance. */
QList<Shelf> buildShelves(const QList<Tape>& tapes);

/** One line with the names of the bodies on a shelf: the first two, and the number of others. */
QString bodySummary(const QList<VHSCover>& covers);

/** The seed for every choice in a cover. `title` is the trimmed title, or the replacement for an empty one. */
quint32 dressingSeed(qint64 id, QStringView title);

/** 32-bit FNV-1a over the UTF-16 code units. */
quint32 fnv1a32(QStringView text);

} // namespace quillmere
