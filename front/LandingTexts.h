#pragma once

#include "NewsStatus.h"

#include <QColor>

#include <optional>

/** What the front screen says: pure functions of what the set knows. */

QString newsDoorSubtitle(const NewsStatus& news);

QString storeDoorSubtitle(qint64 tapes, qint64 markets);

/** The line under the doors. */
struct StatusLine
{
    QString text;
    int size; ///< points
    QColor color;

    bool operator==(const StatusLine&) const = default;
};

StatusLine statusLine(const std::optional<QString>& lastError, bool isLoading, bool hasLoadedOnce);
