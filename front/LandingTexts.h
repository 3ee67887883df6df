#pragma once

#include "NewsStatus.h"

#include <QColor>

#include <optional>

/** Texts of the front screen, as pure functions of the state. */

QString newsDoorSubtitle(const NewsStatus& news);

QString storeDoorSubtitle(qint64 tapes, qint64 markets);

/** Status line under the doors. */
struct StatusLine
{
    QString text;
    int size; ///< of the font, in points
    QColor color;

    bool operator==(const StatusLine&) const = default;
};

StatusLine statusLine(const std::optional<QString>& lastError, bool isLoading, bool hasLoadedOnce);
