#pragma once

#include "CatalogSummary.h"
#include "NewsStatus.h"

#include <QtQml/qqmlregistration.h>

/** The status of tower and shop. A default-constructed one is used until the hub's first response. */
struct TVStatus
{
    Q_GADGET
    QML_VALUE_TYPE(tvStatus)
    Q_PROPERTY(NewsStatus news MEMBER news)
    Q_PROPERTY(CatalogSummary rewindery MEMBER rewindery)

public:
    NewsStatus news;
    CatalogSummary rewindery;

    bool operator==(const TVStatus&) const = default;
};
