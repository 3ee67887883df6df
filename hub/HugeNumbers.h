#pragma once

#include <QByteArray>

/**
 * The JSON text with every number beyond a double's range, which the parser would refuse with the whole document,
 * replaced by a fraction, padded with spaces to the same length. Only well-formed numbers outside strings are
 * touched, so a malformed document stays one. Any thread.
 */
QByteArray withoutHugeNumbers(QByteArray json);
