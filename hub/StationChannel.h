#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/** One entry of the news channel map. */
struct StationChannel
{
    Q_GADGET
    QML_VALUE_TYPE(stationChannel)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString path MEMBER path)

public:
    QString label;
    QString path;

    bool operator==(const StationChannel&) const = default;
};

inline size_t qHash(const StationChannel& channel, size_t seed = 0) noexcept
{
    return qHashMulti(seed, channel.label, channel.path);
}
