#pragma once

#include <QObject>
#include <QString>

/** A parody rating. */
struct TapeRating
{
    Q_GADGET
    Q_PROPERTY(QString code MEMBER code)
    Q_PROPERTY(QString full MEMBER full)

public:
    QString code; ///< the short mark printed in the rating box
    QString full; ///< the long wording

    bool operator==(const TapeRating&) const = default;
};

size_t qHash(const TapeRating& rating, size_t seed = 0) noexcept;
