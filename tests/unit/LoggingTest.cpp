#include "Logging.h"
#include "Rows.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests what is kept out of the log. */
class LoggingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void queriesAreRemoved_data()
    {
        rows<QString, QString>(
            {"text", "logged"},
            {{"no query", u"https://hub/api/tv/tapes"_s, u"https://hub/api/tv/tapes"_s},
             {"one parameter", u"/api/tv/tapes?q=noise"_s, u"/api/tv/tapes"_s},
             {"two parameters", u"/api/tv/tapes?market=lantern&q=noise"_s, u"/api/tv/tapes"_s},
             {"in a sentence", u"GET /tapes?a=1&b=2 failed"_s, u"GET /tapes failed"_s},
             {"in quotation marks", u"cannot open '/live.m3u8?key=1&day=2'."_s, u"cannot open '/live.m3u8'."_s},
             {"two addresses", u"/a?x=1&y=2 then \"/b?z=3\""_s, u"/a then \"/b\""_s}});
    }
    void queriesAreRemoved()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, logged);
        QCOMPARE(logging::withoutQueries(text), logged);
    }
};

QUILLMERE_TEST(LoggingTest, QCoreApplication)

} // namespace quillmere

#include "LoggingTest.moc"
