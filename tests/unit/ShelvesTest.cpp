#include "Dressing.h"
#include "Rows.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

/** Tapes with these titles; the ids are 1, 2, and so on. */
QList<Tape> tapes(const QStringList& titles)
{
    QList<Tape> all(titles.size());
    for (qsizetype index = 0; index < titles.size(); ++index) {
        all[index].id = index + 1;
        all[index].title = titles[index];
    }
    return all;
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
            buildShelves(tapes({u"Open Mic"_s, u"Zoning B"_s, u"City Council"_s, u"Zoning A"_s, u"Another Evening"_s}));
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
        QStringList names;
        for (const Shelf& shelf : buildShelves(tapes({u"Work Session"_s, u"Planning"_s, u"Finance"_s, u"Commission"_s,
                                                      u"Committee"_s, u"Board"_s, u"Council"_s, u"Parade"_s})))
            names.append(shelf.name);
        QCOMPARE(names, (QStringList{u"Slow Burn & Study Sessions"_s, u"City-Building Epics"_s, u"Money on the Table"_s,
                                     u"After Dark: Commission Noir"_s, u"Procedurals"_s, u"Boardroom Thrillers"_s,
                                     u"Chamber Drama — New Releases"_s, u"Staff Picks"_s}));
    }

    void tapesWithSameIdBothHaveCoversAndMapHasLater()
    {
        QList<Tape> repeated = tapes({u"Zoning, early"_s, u"Council"_s, u"Zoning, late"_s});
        repeated[2].id = 1;
        const QList<Shelf> shelves = buildShelves(repeated);
        QCOMPARE(titles(shelves[0]), (QStringList{u"Zoning, early"_s, u"Zoning, late"_s}));
        QCOMPARE(shelves[0].tapesByID.size(), 2);
        QCOMPARE(shelves[0].tapesByID.value(1).title, u"Zoning, late"_s);
    }

    void shelvesShareOneMapOfAllTapes()
    {
        const QList<Shelf> shelves = buildShelves(tapes({u"Zoning"_s, u"Council"_s, u"Parade"_s}));
        for (const Shelf& shelf : shelves) {
            QCOMPARE(shelf.tapesByID.size(), 3);
            QVERIFY(shelf.tapesByID.isSharedWith(shelves.first().tapesByID));
        }
    }

    void shelvesAreEqualByNameAndCoversAndHashOnlyByName()
    {
        const Shelf shelf = buildShelves(tapes({u"Zoning"_s})).first();
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
        const QString council = u"City Council"_s;
        const QString school = u"School Board"_s;
        rows<QStringList, QString>(
            {"bodies", "summary"},
            {{"none", {}, QString()},
             {"one", {council}, council},
             {"one, twice", {council, council}, council},
             {"exactly two", {council, school, council}, u"City Council · School Board"_s},
             {"three", {council, school, u"A"_s}, u"City Council · School Board +1 more"_s},
             {"five",
              {council, council, school, u"A"_s, u"B"_s, u"A"_s, u"C"_s},
              u"City Council · School Board +3 more"_s},
             {"compared exactly", {council, u"CITY COUNCIL"_s}, u"City Council · CITY COUNCIL"_s},
             {"a body without a name is included", {QString(), council}, u" · City Council"_s}});
    }

    void bodySummaryNamesTwoBodies()
    {
        QFETCH(QStringList, bodies);
        QList<VHSCover> covers(bodies.size());
        for (qsizetype index = 0; index < bodies.size(); ++index)
            covers[index].bodyName = bodies[index];
        QTEST(bodySummary(covers), "summary");
    }
};

QUILLMERE_TEST(ShelvesTest, QCoreApplication)

} // namespace quillmere

#include "ShelvesTest.moc"
