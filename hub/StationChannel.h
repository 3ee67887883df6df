#pragma once

#include <QObject>
#include <QString>

/** One entry of the news channel map. */
struct StationChannel
{
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString path MEMBER path)

public:
    QString label;
    QString path;

    bool operator==(const StationChannel&) const = default;
};

size_t qHash(const StationChannel& channel, size_t seed = 0) noexcept;
