#pragma once

#include <QtGlobal>

#include <optional>
#include <string_view>

/**
 * The value of a JSON number's text when it is exactly an integer of 64 bits, in whatever form (1.0, 1e3, -0.5e1);
 * nothing when it has a fraction or is out of range. `token` is a well-formed JSON number; any decimal point will do.
 */
std::optional<qint64> exactJsonInteger(std::string_view token);
