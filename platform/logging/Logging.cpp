#include "Logging.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace quillmere {

// The threshold QtCriticalMsg keeps the categories silent until a logging rule enables them.
Q_LOGGING_CATEGORY(logDisplay, "quillmere.display", QtCriticalMsg)
Q_LOGGING_CATEGORY(logFocus, "quillmere.focus", QtCriticalMsg)
Q_LOGGING_CATEGORY(logHttp, "quillmere.http", QtCriticalMsg)
Q_LOGGING_CATEGORY(logHub, "quillmere.hub", QtCriticalMsg)
Q_LOGGING_CATEGORY(logPlayback, "quillmere.playback", QtCriticalMsg)
Q_LOGGING_CATEGORY(logScreen, "quillmere.screen", QtCriticalMsg)
Q_LOGGING_CATEGORY(logVideo, "quillmere.video", QtCriticalMsg)

void logging::silenceLibraries()
{
    // Rules from the environment (QT_LOGGING_RULES) override these.
    QLoggingCategory::setFilterRules(u"default.warning=false\nqt.*.warning=false"_s);
}

QString logging::withoutQueries(QString text)
{
    static const QRegularExpression query(u"\\?[^\\s'\"]*"_s);
    return text.remove(query);
}

} // namespace quillmere
