#pragma once

#include <QLoggingCategory>
#include <QString>

/**
 * What the set tells whoever looks for a fault: nothing unless asked by Qt's own means, for instance by
 * QT_LOGGING_RULES="quillmere.*=true"; then one line an event, on standard error. Of the viewer it tells no more than
 * paths: never what was searched for. docs/operating.md lists the categories. Any thread.
 */
Q_DECLARE_LOGGING_CATEGORY(logDisplay)  ///< the display's sleep
Q_DECLARE_LOGGING_CATEGORY(logFocus)    ///< what has the focus
Q_DECLARE_LOGGING_CATEGORY(logHttp)     ///< every request, with its outcome and time
Q_DECLARE_LOGGING_CATEGORY(logHub)      ///< what the hub's answers are to the set
Q_DECLARE_LOGGING_CATEGORY(logPlayback) ///< every state of the player, and why a stream broke
Q_DECLARE_LOGGING_CATEGORY(logScreen)   ///< which screens come and go
Q_DECLARE_LOGGING_CATEGORY(logVideo)    ///< the engine's and the sound system's own words

namespace logging {

/** Silences what libraries warn of; to be called before the first of them is used. */
void prepare();

/** A text without the queries of the addresses in it. */
QString withoutQueries(QString text);

} // namespace logging
