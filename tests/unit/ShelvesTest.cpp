#include "Dressing.h"
#include "TestMain.h"

#include <QTest>

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

VHSCover coverOf(const QString& bodyName)
{
    VHSCover cover;
    cover.bodyName = bodyName;
    return cover;
}

QStringList titles(const Shelf& shelf)
{
    QStringList all;
    for (const VHSCover& cover : shelf.covers)
        all.append(cover.title);
    return all;
}

} // namespace

class ShelvesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noTapesGiveNoShelves() { QVERIFY(buildShelves({}).isEmpty()); }

    void shelvesAndCoversAreInOrderOfFirstAppearance()
    {
        const QList<Shelf> shelves =
            buildShelves({tape(1, u"Open Mic"_s), tape(2, u"Zoning B"_s), tape(3, u"City Council"_s),
                          tape(4, u"Zoning A"_s), tape(5, u"Another Evening"_s)});
        QCOMPARE(shelves.size(), 3);
        QCOMPARE(shelves[0].name, u"Staff Picks"_s);
        QCOMPARE(titles(shelves[0]), (QStringList{u"Open Mic"_s, u"Another Evening"_s}));
        QCOMPARE(shelves[1].name, u"City-Building Epics"_s);
        QCOMPARE(titles(shelves[1]), (QStringList{u"Zoning B"_s, u"Zoning A"_s}));
        QCOMPARE(shelves[2].name, u"Chamber Drama — New Releases"_s);
        QCOMPARE(titles(shelves[2]), QStringList{u"City Council"_s});
    }

    void genreHasShelf()
    {
        const QList<Shelf> shelves = buildShelves(
            {tape(1, u"Work Session"_s), tape(2, u"Planning"_s), tape(3, u"Finance"_s), tape(4, u"Commission"_s),
             tape(5, u"Committee"_s), tape(6, u"Board"_s), tape(7, u"Council"_s), tape(8, u"Parade"_s)});
        QStringList names;
        for (const Shelf& shelf : shelves)
            names.append(shelf.name);
        QCOMPARE(names, (QStringList{u"Slow Burn & Study Sessions"_s, u"City-Building Epics"_s, u"Money on the Table"_s,
                                     u"After Dark: Commission Noir"_s, u"Procedurals"_s, u"Boardroom Thrillers"_s,
                                     u"Chamber Drama — New Releases"_s, u"Staff Picks"_s}));
    }

    void tapesWithSameIdBothHaveCoversAndMapHasLater()
    {
        const QList<Shelf> shelves =
            buildShelves({tape(1, u"Zoning, early"_s), tape(2, u"Council"_s), tape(1, u"Zoning, late"_s)});
        QCOMPARE(titles(shelves[0]), (QStringList{u"Zoning, early"_s, u"Zoning, late"_s}));
        QCOMPARE(shelves[0].tapesByID.size(), 2);
        QCOMPARE(shelves[0].tapesByID.value(1).title, u"Zoning, late"_s);
    }

    void shelvesShareOneMapOfAllTapes()
    {
        const QList<Shelf> shelves = buildShelves({tape(1, u"Zoning"_s), tape(2, u"Council"_s), tape(3, u"Parade"_s)});
        for (const Shelf& shelf : shelves) {
            QCOMPARE(shelf.tapesByID.size(), 3);
            QVERIFY(shelf.tapesByID.isSharedWith(shelves.first().tapesByID));
        }
    }

    void shelvesAreEqualByNameAndCoversAndHashOnlyByName()
    {
        const Shelf shelf = buildShelves({tape(1, u"Zoning"_s)}).first();
        Shelf other = shelf;
        other.tapesByID.clear();
        QCOMPARE(other, shelf);
        other.covers.clear();
        QVERIFY(!(other == shelf));
        QCOMPARE(qHash(other), qHash(shelf));
        other = shelf;
        other.name = u"Elsewhere"_s;
        QVERIFY(!(other == shelf));
    }

    void bodySummaryNamesTwoBodies_data()
    {
        QTest::addColumn<QStringList>("bodies");
        QTest::addColumn<QString>("summary");
        const QString council = u"City Council"_s;
        const QString school = u"School Board"_s;
        QTest::newRow("none") << QStringList() << QString();
        QTest::newRow("one") << QStringList{council} << council;
        QTest::newRow("one, twice") << QStringList{council, council} << council;
        QTest::newRow("exactly two") << QStringList{council, school, council} << u"City Council · School Board"_s;
        QTest::newRow("three") << QStringList{council, school, u"A"_s} << u"City Council · School Board +1 more"_s;
        QTest::newRow("five") << QStringList{council, u"City Council"_s, school, u"A"_s, u"B"_s, u"A"_s, u"C"_s}
                              << u"City Council · School Board +3 more"_s;
        QTest::newRow("compared exactly")
            << QStringList{council, u"CITY COUNCIL"_s} << u"City Council · CITY COUNCIL"_s;
        QTest::newRow("a body without a name is included") << QStringList{QString(), council} << u" · City Council"_s;
    }

    void bodySummaryNamesTwoBodies()
    {
        QFETCH(QStringList, bodies);
        QList<VHSCover> covers;
        for (const QString& body : bodies)
            covers.append(coverOf(body));
        QTEST(bodySummary(covers), "summary");
    }
};

QUILLMERE_TEST(ShelvesTest, QCoreApplication)

} // namespace quillmere

#include "ShelvesTest.moc"
