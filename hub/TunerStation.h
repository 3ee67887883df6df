#pragma once

#include <QObject>
#include <QString>

/** A station on the tuner strip; derived from a NewsStatus, never decoded. Its identity is its number. */
struct TunerStation
{
    Q_GADGET
    Q_PROPERTY(QString number MEMBER number)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString path MEMBER path)

public:
    QString number; ///< the channel number shown on the tuner, "5" for the built-in station
    QString label;
    QString path; ///< hub path or absolute address of the HLS playlist

    bool operator==(const TunerStation&) const = default;
};

size_t qHash(const TunerStation& station, size_t seed = 0) noexcept;
