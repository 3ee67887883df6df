#pragma once

#include <QByteArray>

#include <optional>
#include <string_view>

namespace quillmere {

// Functions for the numbers in JSON texts, which a double cannot always represent. Thread-safe.

/**
 * The value of a JSON number if it is exactly a signed 64-bit integer, in any notation (1.0, 1e3, -0.5e1). Returns
 * nothing if it has a fraction or is out of range. `token` must be a well-formed JSON number; the decimal point may be
 * any character that is not a digit, because the parser passes it as the locale of the process writes it.
 */
std::optional<qint64> exactJsonInteger(std::string_view token);

/**
 * Returns the JSON text with every number outside the range of a double replaced by 0.5, a value that no integer field
 * accepts, padded with spaces to the same length. The parser would reject the whole document because of such a number.
 * Only well-formed numbers outside strings are replaced, so a malformed document stays malformed.
 */
QByteArray withoutHugeNumbers(QByteArray json);

} // namespace quillmere
