#include "NewsTexts.h"

#include <QTest>

using namespace Qt::StringLiterals;

/** Which words the news channel's graphics show. */
class NewsTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTowerLineTellsWhatTheSetDoes();
    void withoutAProgrammeTheChannelIsNamed_data();
    void withoutAProgrammeTheChannelIsNamed();
    void theNoteComesBeforeTheTagline_data();
    void theNoteComesBeforeTheTagline();
    void theStationIsSetInCapitalsOnOneLine();
    void nothingIsLongerThanAScreen();
};

void NewsTextsTest::theTowerLineTellsWhatTheSetDoes()
{
    QCOMPARE(NewsTexts::towerLine(true), u"CHECKING THE TOWER…"_s);
    QCOMPARE(NewsTexts::towerLine(false), u"TRANSMISSION WILL RESUME — THIS SET IS WATCHING THE TOWER"_s);
    QCOMPARE(NewsTexts::heading(), u"5 O'CLOCK NEWS"_s);
    QCOMPARE(NewsTexts::channels(), u"channels"_s);
}

void NewsTextsTest::withoutAProgrammeTheChannelIsNamed_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("title");
    QTest::newRow("none") << QString() << u"5 O'Clock News"_s;
    QTest::newRow("one") << u"City Council"_s << u"City Council"_s;
    QTest::newRow("blank") << u" "_s << u" "_s;
}

void NewsTextsTest::withoutAProgrammeTheChannelIsNamed()
{
    QFETCH(QString, program);
    QTEST(NewsTexts::onAirTitle(program), "title");
    QCOMPARE(NewsTexts::cardLine(program), program);
}

void NewsTextsTest::theNoteComesBeforeTheTagline_data()
{
    QTest::addColumn<QString>("note");
    QTest::addColumn<QString>("tagline");
    QTest::addColumn<QString>("detail");
    QTest::newRow("neither") << QString() << QString() << QString();
    QTest::newRow("note") << u"note"_s << QString() << u"note"_s;
    QTest::newRow("tagline") << QString() << u"tagline"_s << u"tagline"_s;
    QTest::newRow("both") << u"note"_s << u"tagline"_s << u"note"_s;
    QTest::newRow("lines") << u"one\ntwo\r\nthree"_s << QString() << u"one two three"_s;
}

void NewsTextsTest::theNoteComesBeforeTheTagline()
{
    QFETCH(QString, note);
    QFETCH(QString, tagline);
    QTEST(NewsTexts::onAirDetail(note, tagline), "detail");
}

void NewsTextsTest::theStationIsSetInCapitalsOnOneLine()
{
    QCOMPARE(NewsTexts::onAirStation(u"5 O'Clock\nNews"_s), u"5 O'CLOCK NEWS"_s);
}

void NewsTextsTest::nothingIsLongerThanAScreen()
{
    const QString endless(1'000'000, u'W');
    for (const QString& text :
         {NewsTexts::cardLine(endless), NewsTexts::onAirTitle(endless), NewsTexts::onAirStation(endless)})
        QCOMPARE(text.size(), 5001);
    QCOMPARE(NewsTexts::onAirDetail(endless, {}).size(), 1001);
}

QTEST_APPLESS_MAIN(NewsTextsTest)
#include "NewsTextsTest.moc"
