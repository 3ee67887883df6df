#include "NewsStatus.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests the list of stations for the tuner strip. */
class StationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultStatusHasBuiltInStation()
    {
        const QList<TunerStation> expected{{u"5"_s, u"5 O'Clock News"_s, u"/live/news/index.m3u8"_s}};
        QCOMPARE(NewsStatus().stations(), expected);
    }

    void stationsHaveNamePathAndOrder()
    {
        NewsStatus news;
        news.hlsURL = u"https://elsewhere.test/news.m3u8"_s;
        news.channels = {{u"3"_s, {u""_s, u"council"_s}},  {u"12"_s, {u"Parks"_s, u"/live/parks/index.m3u8"_s}},
                         {u"x"_s, {u"Misc"_s, u"misc"_s}}, {u"9"_s, {u"Gone"_s, u""_s}},
                         {u"7"_s, {u"Seven"_s, u"/"_s}},   {u"8"_s, {u"Eight"_s, u"a/b"_s}}};
        const QList<TunerStation> expected{{u"3"_s, u"Channel 3"_s, u"/live/council/index.m3u8"_s},
                                           {u"5"_s, u"5 O'Clock News"_s, u"https://elsewhere.test/news.m3u8"_s},
                                           {u"7"_s, u"Seven"_s, u"/"_s},
                                           {u"8"_s, u"Eight"_s, u"/live/a/b/index.m3u8"_s},
                                           {u"12"_s, u"Parks"_s, u"/live/parks/index.m3u8"_s},
                                           {u"x"_s, u"Misc"_s, u"/live/misc/index.m3u8"_s}};
        QCOMPARE(news.stations(), expected);
    }

    void stationsAreSortedByNumber_data()
    {
        // Numbers by the previous station among 5, 98, 99 and 100; empty if they are the first.
        const QMap<QString, QStringList> numbersByPrevious{
            {u""_s, {u"-6"_s, u"0"_s, u"-9223372036854775808"_s}},
            {u"5"_s, {u"6"_s, u"+6"_s, u"006"_s}},
            {u"100"_s, {u"9223372036854775807"_s, u"1000000000000"_s}},
            // All of these are sorted as 99, next to the existing 99.
            {u"98"_s,
             {u""_s, u"7a"_s, u" 7"_s, u"7 "_s, u"+"_s, u"-"_s, u"+-7"_s, u"--7"_s, u"7.0"_s, u"1e1"_s, u"0x7"_s,
              u"٧"_s, u"７"_s, u"-9223372036854775809"_s, u"9223372036854775808"_s, u"x"_s, u"7\n"_s}}};
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("previous");
        for (auto group = numbersByPrevious.constBegin(); group != numbersByPrevious.constEnd(); ++group) {
            for (const QString& number : *group)
                QTest::newRow(number.toUtf8().toPercentEncoding().constData()) << number << group.key();
        }
    }

    void stationsAreSortedByNumber()
    {
        QFETCH(QString, number);
        QFETCH(QString, previous);
        NewsStatus news;
        for (const QString& other : {u"98"_s, u"99"_s, u"100"_s, number})
            news.channels.insert(other, {u"Other"_s, u"other"_s});
        QStringList numbers;
        for (const TunerStation& station : news.stations())
            numbers.append(station.number);
        // The order of equal numbers is not tested here, so the existing 99 is removed.
        numbers.removeAll(u"99"_s);
        const qsizetype index = numbers.indexOf(number);
        QCOMPARE(index == 0 ? u""_s : numbers.at(index - 1), previous);
    }

    void builtInStationIsFirstAmongEqualNumbers()
    {
        NewsStatus news;
        for (const QString& number : {u"5"_s, u"+5"_s, u"05"_s, u"4"_s})
            news.channels.insert(number, {u"Other"_s, u"other"_s});
        const QList<TunerStation> stations = news.stations();
        QCOMPARE(stations.size(), 5);
        QCOMPARE(stations.at(0).number, u"4"_s);
        QCOMPARE(stations.at(1).label, u"5 O'Clock News"_s);
    }
};

QUILLMERE_TEST(StationsTest, TestMain::NoApplication)

} // namespace quillmere

#include "StationsTest.moc"
