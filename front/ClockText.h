#pragma once

#include <QString>

/**
 * A position in seconds as a clock reads: "2:05", "1:02:05"; fractions are dropped, what is no position reads "0:00". No
 * locale has a say. Any thread.
 */
QString clockText(double seconds);
