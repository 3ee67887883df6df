#include "TapeDetailTexts.h"
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

QStringList labelsOf(const QList<TapeFact>& facts)
{
    QStringList labels;
    for (const TapeFact& fact : facts)
        labels.append(fact.label);
    return labels;
}

} // namespace

class TapeDetailTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void playButtonOffersToResume_data();
    void playButtonOffersToResume();
    void otherButtonsHaveTexts();
    void badgesShowRuntimeAndSpeed();
    void agendaHasBadge();
    void taglineIsInCurlyQuotes();
    void catalogueLineEndsWithFullRating();
    void longTitleAndSynopsisAreNotCut();
    void veryLongTitleAndSynopsisAreCut();
    void sizeIsInMegabytesBelowOneGigabyte_data();
    void sizeIsInMegabytesBelowOneGigabyte();
    void threeDocumentsAreNamedAndOthersCounted_data();
    void threeDocumentsAreNamedAndOthersCounted();
    void veryLongDocumentTitleDoesNotHideCount();
    void factsAreInOrder();
    void emptyFactHasNoRow_data();
    void emptyFactHasNoRow();
    void emptyBodyHasRow();
    void tapeWithoutTranscriptShowsNoneHarvested();
    void documentsAreInLastRow();
    void veryLongValueIsCut();
};

void TapeDetailTextsTest::initTestCase()
{
    // No number may depend on the system locale. If this locale is not installed, the test detects less.
    setlocale(LC_ALL, "de_DE.UTF-8");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
}

void TapeDetailTextsTest::playButtonOffersToResume_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<QString>("text");
    QTest::newRow("no position") << 0.0 << u"Push it in"_s;
    QTest::newRow("less than a minute") << 59.4 << u"Resume at 0:59"_s;
    QTest::newRow("nearly an hour") << 3599.9 << u"Resume at 59:59"_s;
    QTest::newRow("an hour") << 3600.0 << u"Resume at 1:00:00"_s;
}

void TapeDetailTextsTest::playButtonOffersToResume()
{
    QFETCH(const double, position);
    QTEST(TapeDetailTexts::play(position), "text");
}

void TapeDetailTextsTest::otherButtonsHaveTexts()
{
    QCOMPARE(TapeDetailTexts::startOver(), u"Start over"_s);
    QCOMPARE(TapeDetailTexts::readTranscript(), u"Read the transcript"_s);
}

void TapeDetailTextsTest::badgesShowRuntimeAndSpeed()
{
    VHSCover cover;
    cover.runtime = 214;
    cover.speed = u"EP"_s;
    QCOMPARE(TapeDetailTexts::runtimeBadge(cover), u"214 MIN"_s);
    QCOMPARE(TapeDetailTexts::speedBadge(cover), u"EP MODE"_s);
}

void TapeDetailTextsTest::agendaHasBadge()
{
    VHSCover cover;
    QCOMPARE(TapeDetailTexts::agendaBadge(cover), QString());
    cover.hasAgenda = true;
    QCOMPARE(TapeDetailTexts::agendaBadge(cover), u"◈ AGENDA ENCLOSED"_s);
}

void TapeDetailTextsTest::taglineIsInCurlyQuotes()
{
    VHSCover cover;
    cover.tagline = u"Every vote leaves a wake."_s;
    QCOMPARE(TapeDetailTexts::tagline(cover), u"\u201CEvery vote leaves a wake.\u201D"_s);
}

void TapeDetailTextsTest::catalogueLineEndsWithFullRating()
{
    VHSCover cover;
    cover.catalogNo = u"RW 1130 · SP"_s;
    cover.rating = {u"N.R."_s, u"NO RECESS — mature deliberation"_s};
    QCOMPARE(TapeDetailTexts::catalogueLine(cover), u"Cat. RW 1130 · SP · NO RECESS — mature deliberation"_s);
}

void TapeDetailTextsTest::longTitleAndSynopsisAreNotCut()
{
    VHSCover cover;
    cover.title = QString(4000, u't');
    cover.synopsis = QString(3000, u's');
    QCOMPARE(TapeDetailTexts::title(cover), cover.title);
    QCOMPARE(TapeDetailTexts::synopsis(cover), cover.synopsis);
}

void TapeDetailTextsTest::veryLongTitleAndSynopsisAreCut()
{
    VHSCover cover;
    cover.title = QString(1'000'000, u't');
    cover.synopsis = cover.title;
    QCOMPARE(TapeDetailTexts::title(cover), QString(4000, u't') + u'…');
    QCOMPARE(TapeDetailTexts::synopsis(cover), QString(4000, u't') + u'…');
}

void TapeDetailTextsTest::sizeIsInMegabytesBelowOneGigabyte_data()
{
    constexpr qint64 mebibyte = 1048576;
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << qint64(0) << u"0 MB · self-hosted"_s;
    QTest::newRow("half is rounded down to even") << mebibyte / 2 << u"0 MB · self-hosted"_s;
    QTest::newRow("more than half") << mebibyte / 2 + 1 << u"1 MB · self-hosted"_s;
    QTest::newRow("half is rounded up to even") << mebibyte * 3 / 2 << u"2 MB · self-hosted"_s;
    QTest::newRow("megabytes") << 500 * mebibyte << u"500 MB · self-hosted"_s;
    QTest::newRow("nearly a gigabyte") << qint64(1023.6 * mebibyte) << u"1024 MB · self-hosted"_s;
    QTest::newRow("a byte less than a gigabyte") << 1024 * mebibyte - 1 << u"1024 MB · self-hosted"_s;
    QTest::newRow("a gigabyte") << qint64(1073741824) << u"1.0 GB · self-hosted"_s;
    QTest::newRow("half of a tenth") << 1280 * mebibyte << u"1.2 GB · self-hosted"_s;
    QTest::newRow("gigabytes") << 2600 * mebibyte << u"2.5 GB · self-hosted"_s;
    QTest::newRow("no grouping") << 2048000 * mebibyte << u"2000.0 GB · self-hosted"_s;
    QTest::newRow("largest integer") << std::numeric_limits<qint64>::max() << u"8589934592.0 GB · self-hosted"_s;
    QTest::newRow("negative") << -5 * mebibyte << u"-5 MB · self-hosted"_s;
}

void TapeDetailTextsTest::sizeIsInMegabytesBelowOneGigabyte()
{
    QFETCH(const qint64, bytes);
    QTEST(TapeDetailTexts::size(bytes), "text");
}

void TapeDetailTextsTest::threeDocumentsAreNamedAndOthersCounted_data()
{
    QTest::addColumn<QStringList>("titles");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << QStringList{} << QString();
    QTest::newRow("one") << QStringList{u"A"_s} << u"A"_s;
    QTest::newRow("two") << QStringList{u"A"_s, u"B"_s} << u"A · B"_s;
    QTest::newRow("three") << QStringList{u"A"_s, u"B"_s, u"C"_s} << u"A · B · C"_s;
    QTest::newRow("four") << QStringList{u"A"_s, u"B"_s, u"C"_s, u"D"_s} << u"A · B · C +1 more"_s;
    QTest::newRow("five") << QStringList{u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s} << u"A · B · C +2 more"_s;
    QTest::newRow("without a title") << QStringList{u""_s, u"B"_s} << u" · B"_s;
}

void TapeDetailTextsTest::threeDocumentsAreNamedAndOthersCounted()
{
    QFETCH(const QStringList, titles);
    QTEST(TapeDetailTexts::documents(documentsNamed(titles)), "text");
}

void TapeDetailTextsTest::veryLongDocumentTitleDoesNotHideCount()
{
    const QString text = TapeDetailTexts::documents(documentsNamed({QString(1'000'000, u'A'), u"B"_s, u"C"_s, u"D"_s}));
    QVERIFY(text.size() < 1100);
    QVERIFY(text.endsWith(u"A… · B · C +1 more"_s));
}

void TapeDetailTextsTest::factsAreInOrder()
{
    const QList<TapeFact> expected{{u"BODY"_s, u"Council"_s},
                                   {u"RECORDED"_s, u"March 5, 2024"_s},
                                   {u"MARKET"_s, u"Springfield"_s},
                                   {u"LOCATION"_s, u"Town Hall"_s},
                                   {u"TAPE SIZE"_s, u"500 MB · self-hosted"_s},
                                   {u"TRANSCRIPT"_s, u"Searchable transcript on file (CC)"_s}};
    QCOMPARE(TapeDetailTexts::facts(plainTape(), plainCover()), expected);
}

void TapeDetailTextsTest::emptyFactHasNoRow_data()
{
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("market");
    QTest::addColumn<QString>("location");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("no date") << u""_s << u"M"_s << u"L"_s
                             << QStringList{u"BODY"_s, u"MARKET"_s, u"LOCATION"_s, u"TAPE SIZE"_s, u"TRANSCRIPT"_s};
    QTest::newRow("no market") << u"D"_s << u""_s << u"L"_s
                               << QStringList{u"BODY"_s, u"RECORDED"_s, u"LOCATION"_s, u"TAPE SIZE"_s, u"TRANSCRIPT"_s};
    QTest::newRow("no location") << u"D"_s << u"M"_s << u""_s
                                 << QStringList{u"BODY"_s, u"RECORDED"_s, u"MARKET"_s, u"TAPE SIZE"_s, u"TRANSCRIPT"_s};
    QTest::newRow("none of them") << u""_s << u""_s << u""_s << QStringList{u"BODY"_s, u"TAPE SIZE"_s, u"TRANSCRIPT"_s};
}

void TapeDetailTextsTest::emptyFactHasNoRow()
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

void TapeDetailTextsTest::emptyBodyHasRow()
{
    const TapeFact first = TapeDetailTexts::facts({}, {}).constFirst();
    QCOMPARE(first.label, u"BODY"_s);
    QCOMPARE(first.value, QString());
}

void TapeDetailTextsTest::tapeWithoutTranscriptShowsNoneHarvested()
{
    Tape tape = plainTape();
    tape.hasTranscript = false;
    QCOMPARE(TapeDetailTexts::facts(tape, plainCover()).constLast().value, u"None harvested"_s);
}

void TapeDetailTextsTest::documentsAreInLastRow()
{
    Tape tape = plainTape();
    tape.documents = documentsNamed({u"Agenda"_s, u"Minutes"_s});
    const TapeFact last = TapeDetailTexts::facts(tape, plainCover()).constLast();
    QCOMPARE(last.label, u"BONUS MATERIALS"_s);
    QCOMPARE(last.value, u"Agenda · Minutes"_s);
}

void TapeDetailTextsTest::veryLongValueIsCut()
{
    Tape tape = plainTape();
    tape.location = QString(1'000'000, u'x');
    QCOMPARE(TapeDetailTexts::facts(tape, plainCover()).at(3).value.size(), 4001);
}

QUILLMERE_TEST(TapeDetailTextsTest, QCoreApplication)

} // namespace quillmere

#include "TapeDetailTextsTest.moc"
