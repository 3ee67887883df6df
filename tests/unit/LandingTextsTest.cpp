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
    void newsDoorShowsTowerState_data();
    void newsDoorShowsTowerState();
    void shopDoorShowsTapeCount_data();
    void shopDoorShowsTapeCount();
    void statusLinePrefersError_data();
    void statusLinePrefersError();
    void hubTextIsShownUnchanged();
    void veryLongTextIsShortened();
    void lineBreakIsReplacedBySpace_data();
    void lineBreakIsReplacedBySpace();
};

void LandingTextsTest::newsDoorShowsTowerState_data()
{
    QTest::addColumn<bool>("towerLive");
    QTest::addColumn<QString>("programTitle");
    QTest::addColumn<QString>("nextBroadcastLabel");
    QTest::addColumn<QString>("subtitle");

    QTest::newRow("live, with a title") << true << u"Harbour Council"_s << u"Tonight"_s << u"Harbour Council"_s;
    QTest::newRow("live, without a title") << true << u""_s << u"Tonight"_s << u"The tower is lit — tune in."_s;
    QTest::newRow("dark, with a label") << false << u"Harbour Council"_s << u"Tue 5 PM"_s
                                        << u"Next broadcast · Tue 5 PM"_s;
    QTest::newRow("dark, without a label") << false << u"Harbour Council"_s << u""_s
                                           << u"The tower is dark. Colour bars and a countdown until it isn't."_s;
}

void LandingTextsTest::newsDoorShowsTowerState()
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

void LandingTextsTest::shopDoorShowsTapeCount_data()
{
    QTest::addColumn<qint64>("tapes");
    QTest::addColumn<qint64>("markets");
    QTest::addColumn<QString>("subtitle");

    const QString checking = u"Checking what's on the shelf…"_s;
    QTest::newRow("no tapes, no markets") << qint64(0) << qint64(0) << checking;
    QTest::newRow("no tapes in three markets") << qint64(0) << qint64(3) << checking;
    QTest::newRow("negative count") << qint64(-5) << qint64(3) << checking;
    QTest::newRow("one tape, one market")
        << qint64(1) << qint64(1) << u"1 tapes in stock · 1 market · every one plays right here"_s;
    QTest::newRow("no markets") << qint64(12) << qint64(0)
                                << u"12 tapes in stock · 0 markets · every one plays right here"_s;
    QTest::newRow("no digit grouping") << qint64(123456) << qint64(3)
                                       << u"123456 tapes in stock · 3 markets · every one plays right here"_s;
}

void LandingTextsTest::shopDoorShowsTapeCount()
{
    QFETCH(qint64, tapes);
    QFETCH(qint64, markets);
    QTEST(storeDoorSubtitle(tapes, markets), "subtitle");
}

void LandingTextsTest::statusLinePrefersError_data()
{
    QTest::addColumn<QString>("lastError");
    QTest::addColumn<bool>("isLoading");
    QTest::addColumn<bool>("hasLoadedOnce");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("size");
    QTest::addColumn<QColor>("color");

    const QString error = u"The hub answered 503."_s;
    const QColor red(217, 43, 43);
    const QColor cream(247, 244, 236);
    QTest::newRow("error, not loading") << error << false << true << error << 24 << red;
    QTest::newRow("error during first load") << error << true << false << error << 24 << red;
    QTest::newRow("first load") << QString() << true << false << u"Tuning in…"_s << 24
                                << StationPalette::faded(cream, 0.6);
    QTest::newRow("later load") << QString() << true << true << u"Press ▶︎ to refresh"_s << 22
                                << StationPalette::faded(cream, 0.4);
    QTest::newRow("before any load") << QString() << false << false << u"Press ▶︎ to refresh"_s << 22
                                     << StationPalette::faded(cream, 0.4);
    QTest::newRow("loaded") << QString() << false << true << u"Press ▶︎ to refresh"_s << 22
                            << StationPalette::faded(cream, 0.4);
}

void LandingTextsTest::statusLinePrefersError()
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

void LandingTextsTest::hubTextIsShownUnchanged()
{
    NewsStatus news;
    news.towerLive = true;
    news.programTitle = u"  <b>市議會</b> \U0001F6A2 "_s;
    QCOMPARE(newsDoorSubtitle(news), news.programTitle);
}

void LandingTextsTest::veryLongTextIsShortened()
{
    const QString whole(1000, u'a');
    QCOMPARE(shortenedText(whole), whole);
    QCOMPARE(shortenedText(whole + u'b'), whole + u'…');
    // Half of a surrogate pair would be drawn as a box.
    const QString split = QString(999, u'a') + u"\U0001F4FA and on"_s;
    QCOMPARE(shortenedText(split), QString(999, u'a') + u'…');
}

void LandingTextsTest::lineBreakIsReplacedBySpace_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("line feed") << u"Zoning\nand more"_s;
    QTest::newRow("carriage return and line feed") << u"Zoning\r\nand more"_s;
    QTest::newRow("carriage return") << u"Zoning\rand more"_s;
    QTest::newRow("line separator") << u"Zoning\u2028and more"_s;
    QTest::newRow("paragraph separator") << u"Zoning\u2029and more"_s;
    QTest::newRow("several") << u"Zoning\n\nand more"_s;
}

void LandingTextsTest::lineBreakIsReplacedBySpace()
{
    QFETCH(const QString, text);
    QCOMPARE(shortenedLine(text), u"Zoning and more"_s);
}

QUILLMERE_TEST(LandingTextsTest, QCoreApplication)

} // namespace quillmere

#include "LandingTextsTest.moc"
