#include "TapeDetailTexts.h"
#include "Rows.h"
#include "TestMain.h"

#include <QTest>

#include <limits>
#include <locale.h>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

Tape plainTape()
{
    Tape tape;
    tape.title = u"Harbour Council"_s;
    tape.market.name = u"Springfield"_s;
    tape.location = u"Town Hall"_s;
    tape.sizeBytes = 524288000;
    tape.hasTranscript = true;
    return tape;
}

VHSCover plainCover()
{
    VHSCover cover;
    cover.bodyName = u"Council"_s;
    cover.dateLabel = u"March 5, 2024"_s;
    return cover;
}

QList<TapeDocument> documentsNamed(const QStringList& titles)
{
    QList<TapeDocument> documents;
    for (const QString& title : titles) {
        TapeDocument document;
        document.title = title;
        documents.append(document);
    }
    return documents;
}

QString labelsOf(const QList<TapeFact>& facts)
{
    QStringList labels;
    for (const TapeFact& fact : facts)
        labels.append(fact.label);
    return labels.join(u", "_s);
}

} // namespace

class TapeDetailTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // No number may depend on the system locale. If this locale is not installed, the test detects less.
        setlocale(LC_ALL, "de_DE.UTF-8");
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    }

    void playButtonOffersToResume_data()
    {
        rows<double, QString>({"position", "text"}, {{"no position", 0.0, u"Push it in"_s},
                                                     {"less than a minute", 59.4, u"Resume at 0:59"_s},
                                                     {"nearly an hour", 3599.9, u"Resume at 59:59"_s},
                                                     {"an hour", 3600.0, u"Resume at 1:00:00"_s}});
    }

    void playButtonOffersToResume()
    {
        QFETCH(const double, position);
        QTEST(TapeDetailTexts::play(position), "text");
    }

    void otherButtonsHaveTexts()
    {
        QCOMPARE(TapeDetailTexts::startOver(), u"Start over"_s);
        QCOMPARE(TapeDetailTexts::readTranscript(), u"Read the transcript"_s);
    }

    void onlyVeryLongTitleAndSynopsisAreCut()
    {
        VHSCover cover;
        cover.title = QString(4000, u't');
        cover.synopsis = QString(3000, u's');
        QCOMPARE(TapeDetailTexts::title(cover), cover.title);
        QCOMPARE(TapeDetailTexts::synopsis(cover), cover.synopsis);
        cover.title = QString(1'000'000, u't');
        cover.synopsis = cover.title;
        QCOMPARE(TapeDetailTexts::title(cover), QString(4000, u't') + u'…');
        QCOMPARE(TapeDetailTexts::synopsis(cover), QString(4000, u't') + u'…');
    }

    void sizeIsInMegabytesBelowOneGigabyte_data()
    {
        constexpr qint64 mebibyte = 1048576;
        rows<qint64, QString>(
            {"bytes", "text"},
            {{"zero", 0, u"0 MB · self-hosted"_s},
             {"half is rounded down to even", mebibyte / 2, u"0 MB · self-hosted"_s},
             {"more than half", mebibyte / 2 + 1, u"1 MB · self-hosted"_s},
             {"half is rounded up to even", mebibyte * 3 / 2, u"2 MB · self-hosted"_s},
             {"megabytes", 500 * mebibyte, u"500 MB · self-hosted"_s},
             {"nearly a gigabyte", qint64(1023.6 * mebibyte), u"1024 MB · self-hosted"_s},
             {"a byte less than a gigabyte", 1024 * mebibyte - 1, u"1024 MB · self-hosted"_s},
             {"a gigabyte", 1073741824, u"1.0 GB · self-hosted"_s},
             {"half of a tenth", 1280 * mebibyte, u"1.2 GB · self-hosted"_s},
             {"gigabytes", 2600 * mebibyte, u"2.5 GB · self-hosted"_s},
             {"no grouping", 2048000 * mebibyte, u"2000.0 GB · self-hosted"_s},
             {"largest integer", std::numeric_limits<qint64>::max(), u"8589934592.0 GB · self-hosted"_s},
             {"negative", -5 * mebibyte, u"-5 MB · self-hosted"_s}});
    }

    void sizeIsInMegabytesBelowOneGigabyte()
    {
        QFETCH(const qint64, bytes);
        QTEST(TapeDetailTexts::size(bytes), "text");
    }

    void threeDocumentsAreNamedAndOthersCounted_data()
    {
        rows<QStringList, QString>({"titles", "text"},
                                   {{"none", {}, {}},
                                    {"one", {u"A"_s}, u"A"_s},
                                    {"two", {u"A"_s, u"B"_s}, u"A · B"_s},
                                    {"three", {u"A"_s, u"B"_s, u"C"_s}, u"A · B · C"_s},
                                    {"four", {u"A"_s, u"B"_s, u"C"_s, u"D"_s}, u"A · B · C +1 more"_s},
                                    {"five", {u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s}, u"A · B · C +2 more"_s},
                                    {"a very long title",
                                     {QString(1'000'000, u'A'), u"B"_s, u"C"_s, u"D"_s},
                                     QString(1000, u'A') + u"… · B · C +1 more"_s},
                                    {"without a title", {u""_s, u"B"_s}, u" · B"_s}});
    }

    void threeDocumentsAreNamedAndOthersCounted()
    {
        QFETCH(const QStringList, titles);
        QTEST(TapeDetailTexts::documents(documentsNamed(titles)), "text");
    }

    void factsAreInOrder()
    {
        const QList<TapeFact> expected{{u"BODY"_s, u"Council"_s},
                                       {u"RECORDED"_s, u"March 5, 2024"_s},
                                       {u"MARKET"_s, u"Springfield"_s},
                                       {u"LOCATION"_s, u"Town Hall"_s},
                                       {u"TAPE SIZE"_s, u"500 MB · self-hosted"_s},
                                       {u"TRANSCRIPT"_s, u"Searchable transcript on file (CC)"_s},
                                       {u"BONUS MATERIALS"_s, u"Agenda · Minutes"_s}};
        Tape tape = plainTape();
        tape.documents = documentsNamed({u"Agenda"_s, u"Minutes"_s});
        QCOMPARE(TapeDetailTexts::facts(tape, plainCover()), expected);
    }

    void emptyFactHasNoRow_data()
    {
        rows<QString, QString, QString, QString>(
            {"date", "market", "location", "labels"},
            {{"no date", {}, u"M"_s, u"L"_s, u"BODY, MARKET, LOCATION, TAPE SIZE, TRANSCRIPT"_s},
             {"no market", u"D"_s, {}, u"L"_s, u"BODY, RECORDED, LOCATION, TAPE SIZE, TRANSCRIPT"_s},
             {"no location", u"D"_s, u"M"_s, {}, u"BODY, RECORDED, MARKET, TAPE SIZE, TRANSCRIPT"_s},
             {"none of them", {}, {}, {}, u"BODY, TAPE SIZE, TRANSCRIPT"_s}});
    }

    void emptyFactHasNoRow()
    {
        QFETCH(const QString, date);
        QFETCH(const QString, market);
        QFETCH(const QString, location);
        VHSCover cover = plainCover();
        cover.dateLabel = date;
        Tape tape = plainTape();
        tape.market.name = market;
        tape.location = location;
        QTEST(labelsOf(TapeDetailTexts::facts(tape, cover)), "labels");
    }

    void emptyBodyHasRow()
    {
        const TapeFact first = TapeDetailTexts::facts({}, {}).constFirst();
        QCOMPARE(first.label, u"BODY"_s);
        QCOMPARE(first.value, QString());
    }

    void veryLongValueIsCut()
    {
        Tape tape = plainTape();
        tape.location = QString(1'000'000, u'x');
        QCOMPARE(TapeDetailTexts::facts(tape, plainCover()).at(3).value.size(), 4001);
    }
};

QUILLMERE_TEST(TapeDetailTextsTest, QCoreApplication)

} // namespace quillmere

#include "TapeDetailTextsTest.moc"
