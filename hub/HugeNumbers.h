#pragma once

#include <QByteArray>

/**
 * Returns the JSON text with every number outside the range of a double replaced by a fraction, padded with spaces to
 * the same length. The parser would reject the whole document because of such a number. Only well-formed numbers
 * outside strings are replaced, so a malformed document stays malformed. Thread-safe.
 */
QByteArray withoutHugeNumbers(QByteArray json);
