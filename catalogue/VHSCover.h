#pragma once

#include "Tape.h"

#include <QList>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/** A parody of a film rating. */
struct TapeRating
{
    Q_GADGET
    QML_VALUE_TYPE(tapeRating)
    Q_PROPERTY(QString code MEMBER code)
    Q_PROPERTY(QString full MEMBER full)

public:
    QString code; ///< short form, in the rating box
    QString full; ///< long form

    bool operator==(const TapeRating&) const = default;
};

inline size_t qHash(const TapeRating& rating, size_t seed = 0) noexcept
{
    return qHashMulti(seed, rating.code, rating.full);
}

/** The content of a tape's cassette box. */
struct VHSCover
{
    Q_GADGET
    QML_VALUE_TYPE(vhsCover)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString spineTitle MEMBER spineTitle)
    Q_PROPERTY(QString bodyName MEMBER bodyName)
    Q_PROPERTY(QString genre MEMBER genre)
    Q_PROPERTY(QString shelf MEMBER shelf)
    Q_PROPERTY(QString year MEMBER year)
    Q_PROPERTY(QString dateLabel MEMBER dateLabel)
    Q_PROPERTY(int runtime MEMBER runtime)
    Q_PROPERTY(QString speed MEMBER speed)
    Q_PROPERTY(quillmere::TapeRating rating MEMBER rating)
    Q_PROPERTY(QString tagline MEMBER tagline)
    Q_PROPERTY(QString synopsis MEMBER synopsis)
    Q_PROPERTY(double hue MEMBER hue)
    Q_PROPERTY(QString catalogNo MEMBER catalogNo)
    Q_PROPERTY(QList<int> barcode MEMBER barcode)
    Q_PROPERTY(bool hasAgenda MEMBER hasAgenda)
    Q_PROPERTY(bool hasTranscript MEMBER hasTranscript)

public:
    qint64 id = 0; ///< id of the tape
    QString title;
    QString spineTitle; ///< the title without the body's name at its start
    QString bodyName;
    QString genre;     ///< upper-case
    QString shelf;     ///< name of its shelf
    QString year;      ///< four characters, "19XX" if unknown
    QString dateLabel; ///< the date in English, or empty
    int runtime = 42;  ///< minutes, 42 to 214
    QString speed;     ///< "SP", "LP" or "EP"
    TapeRating rating;
    QString tagline;
    QString synopsis;
    double hue = 0; ///< degrees; one of ten values
    QString catalogNo;
    QList<int> barcode; ///< 28 relative bar widths, 1 to 4
    bool hasAgenda = false;
    bool hasTranscript = false;

    bool operator==(const VHSCover&) const = default;
};

inline size_t qHash(const VHSCover& cover, size_t seed = 0) noexcept
{
    return qHashMulti(seed, cover.id, cover.title, cover.spineTitle, cover.bodyName, cover.genre, cover.shelf,
                      cover.year, cover.dateLabel, cover.runtime, cover.speed, cover.rating, cover.tagline,
                      cover.synopsis, cover.hue, cover.catalogNo, cover.barcode, cover.hasAgenda, cover.hasTranscript);
}

} // namespace quillmere
