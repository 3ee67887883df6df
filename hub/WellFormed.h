#pragma once

#include <QString>

/** The text with each lone surrogate replaced by U+FFFD, so that it can be encoded in UTF-8. Thread-safe. */
QString wellFormed(QString text);
