#pragma once

#include <QString>

/**
 * The date at the start of a text, in English: "2024-03-05T19:00" gives "March 5, 2024". Empty if the first ten
 * characters are not a Gregorian date as year-month-day in ASCII digits. A pure function, valid for any text.
 */
QString dateLabel(QStringView text);
