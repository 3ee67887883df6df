#include "Rows.h"
#include "StationPalette.h"
#include "StationTexts.h"
#include "TestMain.h"
#include "Text.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

class LandingTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newsDoorShowsTowerState_data()
    {
        const QString anyForm = u"  <b>市議會</b> \U0001F6A2 "_s;
        rows<bool, QString, QString, QString>(
            {"towerLive", "programTitle", "nextBroadcastLabel", "subtitle"},
            {{"live, with a title", true, u"Harbour Council"_s, u"Tonight"_s, u"Harbour Council"_s},
             {"live, without a title", true, u""_s, u"Tonight"_s, u"The tower is lit — tune in."_s},
             {"live, with a title in any form", true, anyForm, u""_s, anyForm},
             {"dark, with a label", false, u"Harbour Council"_s, u"Tue 5 PM"_s, u"Next broadcast · Tue 5 PM"_s},
             {"dark, without a label", false, u"Harbour Council"_s, u""_s,
              u"The tower is dark. Colour bars and a countdown until it isn't."_s}});
    }

    void newsDoorShowsTowerState()
    {
        QFETCH(bool, towerLive);
        QFETCH(QString, programTitle);
        QFETCH(QString, nextBroadcastLabel);
        NewsStatus news;
        news.towerLive = towerLive;
        news.programTitle = programTitle;
        news.nextBroadcastLabel = nextBroadcastLabel;
        QTEST(newsDoorSubtitle(news), "subtitle");
    }

    void shopDoorShowsTapeCount_data()
    {
        const QString checking = u"Checking what's on the shelf…"_s;
        rows<qint64, qint64, QString>(
            {"tapes", "markets", "subtitle"},
            {{"no tapes, no markets", 0, 0, checking},
             {"no tapes in three markets", 0, 3, checking},
             {"negative count", -5, 3, checking},
             {"one tape, one market", 1, 1, u"1 tapes in stock · 1 market · every one plays right here"_s},
             {"no markets", 12, 0, u"12 tapes in stock · 0 markets · every one plays right here"_s},
             {"no digit grouping", 123456, 3, u"123456 tapes in stock · 3 markets · every one plays right here"_s}});
    }

    void shopDoorShowsTapeCount()
    {
        QFETCH(qint64, tapes);
        QFETCH(qint64, markets);
        QTEST(storeDoorSubtitle(tapes, markets), "subtitle");
    }

    void statusLinePrefersError_data()
    {
        const QString error = u"The hub answered 503."_s;
        const QColor red(217, 43, 43);
        const QColor cream(247, 244, 236);
        const QString refresh = u"Press ▶︎ to refresh"_s;
        const QColor faint = StationPalette::faded(cream, 0.4);
        rows<QString, bool, bool, QString, int, QColor>(
            {"lastError", "isLoading", "hasLoadedOnce", "text", "size", "color"},
            {{"error, not loading", error, false, true, error, 24, red},
             {"error during first load", error, true, false, error, 24, red},
             {"first load", QString(), true, false, u"Tuning in…"_s, 24, StationPalette::faded(cream, 0.6)},
             {"later load", QString(), true, true, refresh, 22, faint},
             {"before any load", QString(), false, false, refresh, 22, faint},
             {"loaded", QString(), false, true, refresh, 22, faint}});
    }

    void statusLinePrefersError()
    {
        QFETCH(QString, lastError);
        QFETCH(bool, isLoading);
        QFETCH(bool, hasLoadedOnce);
        const auto error = lastError.isNull() ? std::nullopt : std::optional(lastError);
        const StatusLine line = statusLine(error, isLoading, hasLoadedOnce);
        QTEST(line.text, "text");
        QTEST(line.size, "size");
        QTEST(line.color, "color");
    }

    void veryLongTextIsShortened()
    {
        const QString whole(1000, u'a');
        QCOMPARE(shortenedText(whole), whole);
        QCOMPARE(shortenedText(whole + u'b'), whole + u'…');
        // Half of a surrogate pair would be drawn as a box.
        const QString split = QString(999, u'a') + u"\U0001F4FA and on"_s;
        QCOMPARE(shortenedText(split), QString(999, u'a') + u'…');
    }

    void lineBreakIsReplacedBySpace()
    {
        for (const QString& lineBreak : {u"\n"_s, u"\r\n"_s, u"\r"_s, u"\u2028"_s, u"\u2029"_s, u"\n\n"_s})
            QCOMPARE(shortenedLine(u"Zoning"_s + lineBreak + u"and more"_s), u"Zoning and more"_s);
    }
};

QUILLMERE_TEST(LandingTextsTest, QCoreApplication)

} // namespace quillmere

#include "LandingTextsTest.moc"
