#pragma once

#include <QString>

namespace quillmere {

/**
 * Formats a position in seconds as "2:05" or "1:02:05". Fractions are dropped; a negative number or NaN gives "0:00".
 * Independent of the locale. Any thread.
 */
QString clockText(double seconds);

} // namespace quillmere
