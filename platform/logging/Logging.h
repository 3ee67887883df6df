#pragma once

#include <QLoggingCategory>
#include <QString>

namespace quillmere {

/**
 * Logging categories for fault finding. They are silent unless enabled by Qt's logging rules, for instance by
 * QT_LOGGING_RULES="quillmere.*=true"; then each event is one line on standard error. For privacy only URL paths are
 * logged, never search terms. docs/operating.md lists the categories. Thread-safe.
 */
Q_DECLARE_LOGGING_CATEGORY(logDisplay)  ///< the display's sleep
Q_DECLARE_LOGGING_CATEGORY(logFocus)    ///< what has the focus
Q_DECLARE_LOGGING_CATEGORY(logHttp)     ///< every request, with its outcome and time
Q_DECLARE_LOGGING_CATEGORY(logHub)      ///< the outcome of every request to the hub, after decoding
Q_DECLARE_LOGGING_CATEGORY(logPlayback) ///< every state of the player, and why a stream broke
Q_DECLARE_LOGGING_CATEGORY(logScreen)   ///< which screens are opened and closed
Q_DECLARE_LOGGING_CATEGORY(logVideo)    ///< messages of the video engine and the sound system

namespace logging {

/** Disables Qt's own warnings. Must be called before Qt prints any. */
void silenceLibraries();

/** Returns the text without the query parts of URLs: everything from a "?" to the next space or quotation mark. */
QString withoutQueries(QString text);

} // namespace logging

} // namespace quillmere
