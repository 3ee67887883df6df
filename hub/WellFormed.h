#pragma once

#include <QString>

/** The text with U+FFFD in the place of each half of a surrogate pair, so that it has a form in UTF-8. Any thread. */
QString wellFormed(QString text);
