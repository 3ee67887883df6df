#include "NewsStatus.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

/** The tuner strip's stations. */
class StationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDarkTowerStillHasTheBuiltInStation();
    void stationsAreNamedPathedAndOrdered();
    void anUnnamedChannelIsCalledByItsKey();
    void aPathWithASlashIsUsedAsItIs();
    void theNumberDecidesThePlace_data();
    void theNumberDecidesThePlace();
    void theBuiltInStationComesFirstAmongEquals();
};

void StationsTest::aDarkTowerStillHasTheBuiltInStation()
{
    const QList<TunerStation> expected{{u"5"_s, u"5 O'Clock News"_s, u"/live/news/index.m3u8"_s}};
    QCOMPARE(NewsStatus().stations(), expected);
}

void StationsTest::stationsAreNamedPathedAndOrdered()
{
    NewsStatus news;
    news.hlsURL = u"https://elsewhere.test/news.m3u8"_s;
    news.channels = {{u"3"_s, {u""_s, u"council"_s}},
                     {u"12"_s, {u"Parks"_s, u"/live/parks/index.m3u8"_s}},
                     {u"x"_s, {u"Misc"_s, u"misc"_s}},
                     {u"9"_s, {u"Gone"_s, u""_s}}};
    const QList<TunerStation> expected{{u"3"_s, u"Channel 3"_s, u"/live/council/index.m3u8"_s},
                                       {u"5"_s, u"5 O'Clock News"_s, u"https://elsewhere.test/news.m3u8"_s},
                                       {u"12"_s, u"Parks"_s, u"/live/parks/index.m3u8"_s},
                                       {u"x"_s, u"Misc"_s, u"/live/misc/index.m3u8"_s}};
    QCOMPARE(news.stations(), expected);
}

void StationsTest::anUnnamedChannelIsCalledByItsKey()
{
    NewsStatus news;
    news.channels = {{u"7"_s, {u""_s, u"a"_s}}};
    QCOMPARE(news.stations().at(1).label, u"Channel 7"_s);
}

void StationsTest::aPathWithASlashIsUsedAsItIs()
{
    NewsStatus news;
    news.channels = {{u"7"_s, {u"Seven"_s, u"/"_s}}, {u"8"_s, {u"Eight"_s, u"a/b"_s}}};
    QCOMPARE(news.stations().at(1).path, u"/"_s);
    QCOMPARE(news.stations().at(2).path, u"/live/a/b/index.m3u8"_s);
}

void StationsTest::theNumberDecidesThePlace_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("follows"); // the station before it, of 5, 98, 99 and 100; none when it is the first
    const auto row = [](const QString& number, const QString& follows) {
        QTest::newRow(number.toUtf8().toPercentEncoding().constData()) << number << follows;
    };
    row(u"6"_s, u"5"_s);
    row(u"+6"_s, u"5"_s);
    row(u"006"_s, u"5"_s);
    row(u"-6"_s, u""_s);
    row(u"0"_s, u""_s);
    row(u"-9223372036854775808"_s, u""_s);
    row(u"9223372036854775807"_s, u"100"_s);
    row(u"1000000000000"_s, u"100"_s);
    // All of these count as 99, and come beside the 99 that is there.
    for (const QString& number :
         {u""_s, u"7a"_s, u" 7"_s, u"7 "_s, u"+"_s, u"-"_s, u"+-7"_s, u"--7"_s, u"7.0"_s, u"1e1"_s, u"0x7"_s, u"٧"_s,
          u"７"_s, u"-9223372036854775809"_s, u"9223372036854775808"_s, u"x"_s, u"7\n"_s})
        row(number, u"98"_s);
}

void StationsTest::theNumberDecidesThePlace()
{
    QFETCH(QString, number);
    QFETCH(QString, follows);
    NewsStatus news;
    for (const QString& other : {u"98"_s, u"99"_s, u"100"_s, number})
        news.channels.insert(other, {u"Other"_s, u"other"_s});
    QStringList numbers;
    for (const TunerStation& station : news.stations())
        numbers.append(station.number);
    // The order among equals is nobody's concern here: the 99 that is always there is left out.
    numbers.removeAll(u"99"_s);
    const qsizetype place = numbers.indexOf(number);
    QCOMPARE(place == 0 ? u""_s : numbers.at(place - 1), follows);
}

void StationsTest::theBuiltInStationComesFirstAmongEquals()
{
    NewsStatus news;
    for (const QString& number : {u"5"_s, u"+5"_s, u"05"_s, u"4"_s})
        news.channels.insert(number, {u"Other"_s, u"other"_s});
    const QList<TunerStation> stations = news.stations();
    QCOMPARE(stations.size(), 5);
    QCOMPARE(stations.at(0).number, u"4"_s);
    QCOMPARE(stations.at(1).label, u"5 O'Clock News"_s);
}

QTEST_APPLESS_MAIN(StationsTest)
#include "StationsTest.moc"
