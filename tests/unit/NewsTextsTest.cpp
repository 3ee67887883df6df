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
    void towerLineShowsCheckingState()
    {
        QCOMPARE(NewsTexts::towerLine(true), u"CHECKING THE TOWER…"_s);
        QCOMPARE(NewsTexts::towerLine(false), u"TRANSMISSION WILL RESUME — THIS SET IS WATCHING THE TOWER"_s);
        QCOMPARE(NewsTexts::heading(), u"5 O'CLOCK NEWS"_s);
        QCOMPARE(NewsTexts::channels(), u"channels"_s);
    }

    void titleIsChannelNameWithoutProgramme()
    {
        QCOMPARE(NewsTexts::onAirTitle({}), u"5 O'Clock News"_s);
        QCOMPARE(NewsTexts::cardLine({}), QString());
        for (const QString& program : {u"City Council"_s, u" "_s}) {
            QCOMPARE(NewsTexts::onAirTitle(program), program);
            QCOMPARE(NewsTexts::cardLine(program), program);
        }
    }

    void noteIsPreferredToTagline()
    {
        QCOMPARE(NewsTexts::onAirDetail({}, {}), QString());
        QCOMPARE(NewsTexts::onAirDetail(u"note"_s, {}), u"note"_s);
        QCOMPARE(NewsTexts::onAirDetail({}, u"tagline"_s), u"tagline"_s);
        QCOMPARE(NewsTexts::onAirDetail(u"note"_s, u"tagline"_s), u"note"_s);
        QCOMPARE(NewsTexts::onAirDetail(u"one\ntwo\r\nthree"_s, {}), u"one two three"_s);
    }

    void stationIsShownInCapitalsOnOneLine()
    {
        QCOMPARE(NewsTexts::onAirStation(u"5 O'Clock\nNews"_s), u"5 O'CLOCK NEWS"_s);
    }

    void veryLongTextIsCut()
    {
        const QString endless(1'000'000, u'W');
        for (const QString& text :
             {NewsTexts::cardLine(endless), NewsTexts::onAirTitle(endless), NewsTexts::onAirStation(endless)})
            QCOMPARE(text.size(), 5001);
        QCOMPARE(NewsTexts::onAirDetail(endless, {}).size(), 1001);
    }
};

QUILLMERE_TEST(NewsTextsTest, TestMain::NoApplication)

} // namespace quillmere

#include "NewsTextsTest.moc"
