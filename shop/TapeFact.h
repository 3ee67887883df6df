#pragma once

#include <QString>

/** One fact about a tape, shown as a row on its screen. */
struct TapeFact
{
    QString label; ///< in capitals
    QString value;

    bool operator==(const TapeFact&) const = default;
};
