#include "NewsTexts.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests the texts of the news channel's graphics. */
class NewsTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void towerLineShowsCheckingState();
    void titleIsChannelNameWithoutProgramme_data();
    void titleIsChannelNameWithoutProgramme();
    void noteIsPreferredToTagline_data();
    void noteIsPreferredToTagline();
    void stationIsShownInCapitalsOnOneLine();
    void veryLongTextIsCut();
};

void NewsTextsTest::towerLineShowsCheckingState()
{
    QCOMPARE(NewsTexts::towerLine(true), u"CHECKING THE TOWER…"_s);
    QCOMPARE(NewsTexts::towerLine(false), u"TRANSMISSION WILL RESUME — THIS SET IS WATCHING THE TOWER"_s);
    QCOMPARE(NewsTexts::heading(), u"5 O'CLOCK NEWS"_s);
    QCOMPARE(NewsTexts::channels(), u"channels"_s);
}

void NewsTextsTest::titleIsChannelNameWithoutProgramme_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("title");
    QTest::newRow("none") << QString() << u"5 O'Clock News"_s;
    QTest::newRow("one") << u"City Council"_s << u"City Council"_s;
    QTest::newRow("blank") << u" "_s << u" "_s;
}

void NewsTextsTest::titleIsChannelNameWithoutProgramme()
{
    QFETCH(QString, program);
    QTEST(NewsTexts::onAirTitle(program), "title");
    QCOMPARE(NewsTexts::cardLine(program), program);
}

void NewsTextsTest::noteIsPreferredToTagline_data()
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

void NewsTextsTest::noteIsPreferredToTagline()
{
    QFETCH(QString, note);
    QFETCH(QString, tagline);
    QTEST(NewsTexts::onAirDetail(note, tagline), "detail");
}

void NewsTextsTest::stationIsShownInCapitalsOnOneLine()
{
    QCOMPARE(NewsTexts::onAirStation(u"5 O'Clock\nNews"_s), u"5 O'CLOCK NEWS"_s);
}

void NewsTextsTest::veryLongTextIsCut()
{
    const QString endless(1'000'000, u'W');
    for (const QString& text :
         {NewsTexts::cardLine(endless), NewsTexts::onAirTitle(endless), NewsTexts::onAirStation(endless)})
        QCOMPARE(text.size(), 5001);
    QCOMPARE(NewsTexts::onAirDetail(endless, {}).size(), 1001);
}

QUILLMERE_TEST(NewsTextsTest, TestMain::NoApplication)

} // namespace quillmere

#include "NewsTextsTest.moc"
