#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

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

size_t qHash(const TapeRating& rating, size_t seed = 0) noexcept;
