#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/** A station on the tuner strip. Computed from a NewsStatus, not decoded from JSON. The number identifies it. */
struct TunerStation
{
    Q_GADGET
    QML_VALUE_TYPE(tunerStation)
    Q_PROPERTY(QString number MEMBER number)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString path MEMBER path)

public:
    QString number; ///< the channel number shown on the tuner, "5" for the built-in station
    QString label;
    QString path; ///< hub path or absolute address of the HLS playlist

    bool operator==(const TunerStation&) const = default;
};

inline size_t qHash(const TunerStation& station, size_t seed = 0) noexcept
{
    return qHashMulti(seed, station.number, station.label, station.path);
}
