#pragma once

#include <QtGlobal>

#include <optional>
#include <string_view>

/**
 * The value of a JSON number if it is exactly a signed 64-bit integer, in any notation (1.0, 1e3, -0.5e1). Returns
 * nothing if it has a fraction or is out of range. `token` must be a well-formed JSON number; the decimal point may be
 * any character that is not a digit.
 */
std::optional<qint64> exactJsonInteger(std::string_view token);
