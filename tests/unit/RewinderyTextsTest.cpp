#include "RewinderyTexts.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

class RewinderyTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stockLineHasNoSingularAndNoGrouping_data();
    void stockLineHasNoSingularAndNoGrouping();
    void yearSpanUsesOnlyWholeNumbers_data();
    void yearSpanUsesOnlyWholeNumbers();
    void captionHasBodiesAndYears_data();
    void captionHasBodiesAndYears();
    void messageIsErrorOrEmptyShelfText();
    void creditsAreOneLine();
};

void RewinderyTextsTest::stockLineHasNoSingularAndNoGrouping_data()
{
    QTest::addColumn<qint64>("tapes");
    QTest::addColumn<QString>("line");
    const QString rest =
        u" tapes in stock — pull one off the shelf and push it into the set. Every tape here plays on this television."_s;
    QTest::newRow("none") << qint64(0) << u"0"_s + rest;
    QTest::newRow("one") << qint64(1) << u"1"_s + rest;
    QTest::newRow("many") << qint64(1234567) << u"1234567"_s + rest;
    QTest::newRow("more than a 32-bit number holds") << qint64(9007199254740993) << u"9007199254740993"_s + rest;
}

void RewinderyTextsTest::stockLineHasNoSingularAndNoGrouping()
{
    QFETCH(qint64, tapes);
    QTEST(RewinderyTexts::stockLine(tapes), "line");
}

void RewinderyTextsTest::yearSpanUsesOnlyWholeNumbers_data()
{
    QTest::addColumn<QStringList>("years");
    QTest::addColumn<QString>("span");
    QTest::newRow("no covers") << QStringList() << QString();
    QTest::newRow("none known") << QStringList{u"19XX"_s, u"19XX"_s} << QString();
    QTest::newRow("one") << QStringList{u"2021"_s} << u"2021"_s;
    QTest::newRow("all the same") << QStringList{u"2021"_s, u"2021"_s} << u"2021"_s;
    QTest::newRow("two") << QStringList{u"2024"_s, u"2019"_s} << u"2019–2024"_s;
    QTest::newRow("unknown years between known ones")
        << QStringList{u"2020"_s, u"19XX"_s, u"2019"_s, u"2024"_s, u"2022"_s} << u"2019–2024"_s;
    QTest::newRow("empty") << QStringList{QString()} << QString();
    QTest::newRow("spaces") << QStringList{u" 202"_s, u"202 "_s} << QString();
    QTest::newRow("a sign") << QStringList{u"+202"_s, u"-202"_s} << QString();
    QTest::newRow("a fraction") << QStringList{u"20.2"_s, u"2e03"_s} << QString();
    QTest::newRow("digits of another script") << QStringList{u"٢٠٢٤"_s, u"２０２４"_s} << QString();
    QTest::newRow("leading zeros") << QStringList{u"0042"_s} << u"42"_s;
    QTest::newRow("the same number written in two ways") << QStringList{u"0042"_s, u"42"_s} << u"42"_s;
    QTest::newRow("compared as numbers") << QStringList{u"0999"_s, u"2024"_s, u"998"_s} << u"998–2024"_s;
    QTest::newRow("too large a number") << QStringList{u"99999999999999999999"_s} << QString();
}

void RewinderyTextsTest::yearSpanUsesOnlyWholeNumbers()
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

void RewinderyTextsTest::captionHasBodiesAndYears_data()
{
    QTest::addColumn<QStringList>("bodies");
    QTest::addColumn<QString>("year");
    QTest::addColumn<QString>("caption");
    QTest::newRow("no year") << QStringList{u"City Council"_s} << u"19XX"_s << u"City Council"_s;
    QTest::newRow("a year") << QStringList{u"City Council"_s} << u"2021"_s << u"City Council · 2021"_s;
    QTest::newRow("four bodies, a year") << QStringList{u"A"_s, u"B"_s, u"A"_s, u"C"_s, u"D"_s} << u"2021"_s
                                         << u"A · B +2 more · 2021"_s;
    QTest::newRow("no covers") << QStringList() << QString() << QString();
}

void RewinderyTextsTest::captionHasBodiesAndYears()
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

void RewinderyTextsTest::messageIsErrorOrEmptyShelfText()
{
    QCOMPARE(RewinderyTexts::message({}), u"No tapes on the shelf for this view."_s);
    QCOMPARE(RewinderyTexts::message(u"X"_s), u"X"_s);
}

void RewinderyTextsTest::creditsAreOneLine()
{
    QCOMPARE(RewinderyTexts::creditLine(), u"Rewindery Home Video"_s + u" — "_s +
                                               u"A Captain Lowe of the Waterways Production"_s + u". "_s +
                                               u"Be Kind, Please Rewind."_s);
    QVERIFY(!RewinderyTexts::disclaimer().contains(u'\n'));
}

QUILLMERE_TEST(RewinderyTextsTest, QCoreApplication)

} // namespace quillmere

#include "RewinderyTextsTest.moc"
