#pragma once

#include <QString>

/** One row of what is known of a tape. */
struct TapeFact
{
    QString label; ///< in capitals
    QString value;

    bool operator==(const TapeFact&) const = default;
};
