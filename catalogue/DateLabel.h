#pragma once

#include <QString>

/**
 * The date at the front of a text, written out in English: "2024-03-05T19:00" gives "March 5, 2024". Empty unless the
 * text's first ten characters are a date of the Gregorian calendar, year-month-day in ASCII digits. Pure and total.
 */
QString dateLabel(QStringView text);
