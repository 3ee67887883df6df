#include "RewinderyTexts.h"
#include "Rows.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

class RewinderyTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stockLineHasNoSingularAndNoGrouping_data()
    {
        const QString rest = u" tapes in stock — pull one off the shelf and push it into the set. "
                             "Every tape here plays on this television."_s;
        rows<qint64, QString>({"tapes", "line"},
                              {{"none", 0, u"0"_s + rest},
                               {"one", 1, u"1"_s + rest},
                               {"many", 1234567, u"1234567"_s + rest},
                               {"more than a 32-bit number holds", 9007199254740993, u"9007199254740993"_s + rest}});
    }

    void stockLineHasNoSingularAndNoGrouping()
    {
        QFETCH(qint64, tapes);
        QTEST(RewinderyTexts::stockLine(tapes), "line");
    }

    void yearSpanUsesOnlyWholeNumbers_data()
    {
        rows<QStringList, QString>({"years", "span"},
                                   {{"no covers", {}, {}},
                                    {"none known", {u"19XX"_s, u"19XX"_s}, {}},
                                    {"one", {u"2021"_s}, u"2021"_s},
                                    {"all the same", {u"2021"_s, u"2021"_s}, u"2021"_s},
                                    {"two", {u"2024"_s, u"2019"_s}, u"2019–2024"_s},
                                    {"unknown years between known ones",
                                     {u"2020"_s, u"19XX"_s, u"2019"_s, u"2024"_s, u"2022"_s},
                                     u"2019–2024"_s},
                                    {"empty", {QString()}, {}},
                                    {"spaces", {u" 202"_s, u"202 "_s}, {}},
                                    {"a sign", {u"+202"_s, u"-202"_s}, {}},
                                    {"a fraction", {u"20.2"_s, u"2e03"_s}, {}},
                                    {"digits of another script", {u"٢٠٢٤"_s, u"２０２４"_s}, {}},
                                    {"leading zeros", {u"0042"_s}, u"42"_s},
                                    {"the same number written in two ways", {u"0042"_s, u"42"_s}, u"42"_s},
                                    {"compared as numbers", {u"0999"_s, u"2024"_s, u"998"_s}, u"998–2024"_s},
                                    {"too large a number", {u"99999999999999999999"_s}, {}}});
    }

    void yearSpanUsesOnlyWholeNumbers()
    {
        QFETCH(const QStringList, years);
        QList<VHSCover> covers;
        for (const QString& year : years) {
            VHSCover cover;
            cover.year = year;
            covers.append(cover);
        }
        QTEST(RewinderyTexts::yearSpan(covers), "span");
    }

    void captionHasBodiesAndYears_data()
    {
        rows<QStringList, QString, QString>(
            {"bodies", "year", "caption"},
            {{"no year", {u"City Council"_s}, u"19XX"_s, u"City Council"_s},
             {"a year", {u"City Council"_s}, u"2021"_s, u"City Council · 2021"_s},
             {"four bodies, a year", {u"A"_s, u"B"_s, u"A"_s, u"C"_s, u"D"_s}, u"2021"_s, u"A · B +2 more · 2021"_s},
             {"no covers", {}, {}, {}}});
    }

    void captionHasBodiesAndYears()
    {
        QFETCH(const QStringList, bodies);
        QFETCH(QString, year);
        QList<VHSCover> covers;
        for (const QString& body : bodies) {
            VHSCover cover;
            cover.bodyName = body;
            cover.year = year;
            covers.append(cover);
        }
        QTEST(RewinderyTexts::caption(covers), "caption");
    }

    void creditsAreOneLine()
    {
        QCOMPARE(RewinderyTexts::creditLine(),
                 u"Rewindery Home Video — A Captain Lowe of the Waterways Production. Be Kind, Please Rewind."_s);
        QVERIFY(!RewinderyTexts::disclaimer().contains(u'\n'));
    }
};

QUILLMERE_TEST(RewinderyTextsTest, QCoreApplication)

} // namespace quillmere

#include "RewinderyTextsTest.moc"
