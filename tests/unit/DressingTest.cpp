#include "Dressing.h"
#include "RecordDecoder.h"
#include "Rows.h"
#include "TestMain.h"

#include <QRandomGenerator>
#include <QSet>
#include <QTest>

#include <array>
#include <limits>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

Tape tape(qint64 id, const QString& title)
{
    Tape result;
    result.id = id;
    result.title = title;
    return result;
}

Tape tapeOfCouncil()
{
    Tape result = tape(42, u"City Council Regular Meeting"_s);
    result.meetingDate = u"2024-03-05"_s;
    result.body = TapeBody{u"city-council"_s, u"City Council"_s, u"council"_s};
    result.hasAgenda = true;
    return result;
}

/** A text of up to `longest` pieces, each of which is difficult to handle. */
QString awkwardText(QRandomGenerator& random, int longest)
{
    static const QStringList pieces = u"City Council|Zoning| |\t|-|–|—|:|·|\u0301|\u200D|\r\n|\r|\u00A0|\u3000|İ|ẞ|Σ|"
                                      u"\U0001F469|\U0001F1FA|\u0600|board|2024-03-05"_s.split(u'|')
                                      << QChar(0xD83D) << QChar(0xDC69);
    QString text;
    for (int remaining = random.bounded(longest + 1); remaining > 0; --remaining)
        text += pieces[random.bounded(pieces.size())];
    return text;
}

Tape awkwardTape(QRandomGenerator& random)
{
    Tape result = tape(qint64(random.generate64()), awkwardText(random, 8));
    if (random.bounded(3) > 0)
        result.meetingDate = awkwardText(random, 3);
    if (random.bounded(3) > 0)
        result.body = TapeBody{awkwardText(random, 1), awkwardText(random, 3), awkwardText(random, 1)};
    result.hasAgenda = random.bounded(2) == 0;
    result.hasTranscript = random.bounded(2) == 0;
    return result;
}

} // namespace

class DressingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void coverHasRatingInFullAndTellsOfDocuments()
    {
        const VHSCover cover = dress(tapeOfCouncil());
        QCOMPARE(cover.rating, (TapeRating{u"P.G."_s, u"PUBLIC GOVERNANCE — all citizens admitted"_s}));
        QVERIFY(cover.hasAgenda);
        QVERIFY(!cover.hasTranscript);
    }

    void synopsisNamesBodyDateAndAgenda()
    {
        QCOMPARE(
            dress(tapeOfCouncil()).synopsis,
            u"When City Council convenes on March 5, 2024, First Mate Coral dives for the sunken agenda while Captain "
            u"Lowe raises his lantern over the murk of civic jargon. Tally tallies every vote from the wheelhouse of "
            u"the steamboat \"Public Record.\" SPECIAL FEATURE: the original agenda packet is enclosed on this tape. "
            u"Captain Lowe and his crew sail the municipal waterways, lifting the fog off the public record so anyone "
            u"can follow along."_s);
    }

    void synopsisWithoutDateAndAgendaSaysSo()
    {
        QCOMPARE(
            dress(tape(1, u"Open Mic"_s)).synopsis,
            u"When Open Mic convenes, First Mate Coral dives for the sunken agenda while Captain Lowe raises his "
            u"lantern over the murk of civic jargon. Tally tallies every vote from the wheelhouse of the steamboat "
            u"\"Public Record.\" Recorded live off the public record — no agenda packet located. Captain Lowe and his "
            u"crew sail the municipal waterways, lifting the fog off the public record so anyone can follow along."_s);
    }

    void bodyWithoutNameAndSlugGetsBothFromTitle()
    {
        Tape nameless = tape(10, u"Harbor Board - Special Meeting"_s);
        const VHSCover without = dress(nameless);
        nameless.body = TapeBody{};
        QCOMPARE(dress(nameless).bodyName, u"Harbor Board"_s);
        QCOMPARE(dress(nameless), without);
    }

    void tapesOfOneBodyHaveSameHue()
    {
        Tape one = tape(1, u"Monthly"_s);
        Tape other = tape(99, u"Something else"_s);
        one.body = TapeBody{u"harbor"_s, u"Harbor Board"_s, {}};
        other.body = TapeBody{u"harbor"_s, u"The Board of the Harbor"_s, {}};
        QCOMPARE(dress(one).hue, dress(other).hue);
    }

    void sizeStreamAndLocationDoNotChangeCover()
    {
        Tape other = tapeOfCouncil();
        other.sizeBytes = 1'000'000'000;
        other.streamURLPath = u"/elsewhere"_s;
        other.location = u"Elsewhere"_s;
        QCOMPARE(dress(other), dress(tapeOfCouncil()));
    }

    void hashIsComputedFromUtf16CodeUnits_data()
    {
        rows<QString, quint32>({"text", "hash"},
                               {{"empty", QString(), 0x811C9DC5U},
                                {"a letter, same hash as for bytes", u"a"_s, 0xE40C292CU},
                                {"a word, same hash as for bytes", u"foobar"_s, 0xBF9CF968U},
                                {"a code unit above 255", u"—"_s, (0x811C9DC5U ^ 0x2014U) * 0x01000193U},
                                {"a surrogate pair is two code units", u"\U0001F469"_s,
                                 (((0x811C9DC5U ^ 0xD83DU) * 0x01000193U) ^ 0xDC69U) * 0x01000193U}});
    }

    void hashIsComputedFromUtf16CodeUnits()
    {
        QFETCH(QString, text);
        QTEST(fnv1a32(text), "hash");
    }

    void seedIsHashOfIdAndTitle()
    {
        for (const qint64 id :
             {qint64(0), qint64(-1), std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()})
            QCOMPARE(dressingSeed(id, u"Zoning — é"), fnv1a32(QString::number(id) + u"|Zoning — é"_s));
    }

    void seedIsComputedFromWholeTitle_data()
    {
        QTest::addColumn<QString>("title");
        for (const int length : {30, 19'999, 20'000, 20'001, 100'000, 1'000'000})
            QTest::addRow("%d", length) << u"Council "_s.repeated(length / 8 + 1).first(length - 1) + u'!';
        QTest::newRow("a surrogate pair at 20,000") << QString(19'999, u'a') + u"\U0001F4FC and more"_s;
        QTest::newRow("spaces at both ends") << QString(30'000, u' ') + u"Council"_s + QString(30'000, u' ');
    }

    void seedIsComputedFromWholeTitle()
    {
        QFETCH(QString, title);
        // Decoded from JSON, as from the hub.
        const auto record = decodeRecord<Tape>("{\"id\": 42, \"title\": \"" + title.toUtf8() + "\"}");
        const VHSCover cover = dress(record.value());
        const quint32 seed = fnv1a32(u"42|"_s + title.trimmed());
        QCOMPARE(cover.runtime, int(seed % 173) + 42);
        QCOMPARE(cover.catalogNo.first(7), u"RW %1"_s.arg(seed % 8999 + 1000));
    }

    void hueIsComputedFromWholeSlugOrName()
    {
        const QString name = QString(30'000, u'a') + u'!';
        const auto withBody = [](const QString& slug, const QString& name) {
            const QByteArray json =
                "{\"body\": {\"slug\": \"" + slug.toUtf8() + "\", \"name\": \"" + name.toUtf8() + "\"}}";
            return decodeRecord<Tape>(json).value();
        };
        constexpr std::array hues{4, 20, 36, 145, 168, 200, 210, 262, 291, 330};
        for (const QString& key : {name, name + u'?', name + u"??"_s}) {
            QCOMPARE(dress(withBody({}, key)).hue, hues.at(fnv1a32(key) % 10));
            QCOMPARE(dress(withBody(key, u"Council"_s)).hue, hues.at(fnv1a32(key) % 10));
        }
    }

    void veryLongTitleAndBodyNameAreCut()
    {
        Tape endless = tape(42, QString(19'999, u'a') + u"\U0001F4FC and more"_s);
        endless.body = TapeBody{{}, QString(30'000, u'b'), {}};
        const VHSCover cover = dress(endless);
        QCOMPARE(cover.title, QString(19'999, u'a'));
        QCOMPARE(cover.bodyName, QString(20'000, u'b'));
    }

    void randomTapeHasValidCover()
    {
        QRandomGenerator random(20240305);
        for (int round = 0; round < 20'000; ++round) {
            const Tape awkward = awkwardTape(random);
            const VHSCover cover = dress(awkward);
            QVERIFY(!cover.title.isEmpty() && !cover.spineTitle.isEmpty() && !cover.bodyName.isEmpty());
            QVERIFY(cover.runtime >= 42 && cover.runtime <= 214);
            QCOMPARE(cover.speed, cover.runtime <= 95 ? u"SP"_s : cover.runtime <= 150 ? u"LP"_s : u"EP"_s);
            const int number = cover.catalogNo.sliced(3, 4).toInt();
            QVERIFY(number >= 1000 && number <= 9998);
            QCOMPARE(cover.catalogNo.size(), 3 + 4 + 3 + 2);
            QCOMPARE(cover.barcode.size(), 28);
            QVERIFY(std::all_of(cover.barcode.begin(), cover.barcode.end(), [](int w) { return w >= 1 && w <= 4; }));
            QCOMPARE(dress(awkward), cover);
        }
    }

    void everyTableEntryIsUsed()
    {
        QSet<QString> ratings;
        QSet<QString> taglines;
        QSet<QString> speeds;
        QSet<double> hues;
        for (int id = 0; id < 2000; ++id) {
            const VHSCover cover = dress(tape(id, u"Body %1"_s.arg(id)));
            ratings.insert(cover.rating.code);
            taglines.insert(cover.tagline);
            speeds.insert(cover.speed);
            hues.insert(cover.hue);
        }
        QCOMPARE(ratings, (QSet<QString>{u"P.G."_s, u"N.R."_s, u"Q.M."_s, u"F.O.I.A."_s}));
        QCOMPARE(taglines.size(), 8);
        QCOMPARE(speeds.size(), 3);
        QCOMPARE(hues, (QSet<double>{4, 20, 36, 145, 168, 200, 210, 262, 291, 330}));
    }

    void coversAreEqualOnlyIfAllFieldsAre()
    {
        const VHSCover cover = dress(tapeOfCouncil());
        VHSCover other = cover;
        QCOMPARE(other, cover);
        QCOMPARE(qHash(other), qHash(cover));
        other.hasTranscript = true;
        QVERIFY(!(other == cover));
        QVERIFY(qHash(other) != qHash(cover));
        other = cover;
        other.rating.full += u'!';
        QVERIFY(!(other == cover));
        QVERIFY(qHash(other) != qHash(cover));
    }
};

QUILLMERE_TEST(DressingTest, QCoreApplication)

} // namespace quillmere

#include "DressingTest.moc"
