#include "Dressing.h"
#include "TestMain.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

/** Converts a row of the table. The id is a text there, as QJsonValue does not hold all 64-bit integers exactly. */
Tape tapeOf(const QJsonObject& row)
{
    Tape tape;
    tape.id = row[u"id"_s].toString().toLongLong();
    tape.title = row[u"title"_s].toString();
    if (row.contains(u"date"_s))
        tape.meetingDate = row[u"date"_s].toString();
    if (row.contains(u"body"_s)) {
        const QJsonObject body = row[u"body"_s].toObject();
        tape.body = TapeBody{body[u"slug"_s].toString(), body[u"name"_s].toString(), body[u"kind"_s].toString()};
    }
    return tape;
}

QString digits(const QList<int>& widths)
{
    QString text;
    for (const int width : widths)
        text += QString::number(width);
    return text;
}

} // namespace

/** Tests the fields of cassettes against values in dressings.json that were computed without this program. */
class DressingTableTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tapeOfTableHasExpectedCover_data()
    {
        QTest::addColumn<QJsonObject>("row");
        QFile file(QFINDTESTDATA("dressings.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QJsonArray rows = QJsonDocument::fromJson(file.readAll()).array();
        QCOMPARE_GE(rows.size(), 80);
        for (const auto row : rows)
            QTest::newRow(qPrintable(row.toObject()[u"row"_s].toString())) << row.toObject();
    }

    void tapeOfTableHasExpectedCover()
    {
        QFETCH(QJsonObject, row);
        const QJsonObject expected = row[u"expected"_s].toObject();
        const auto text = [&expected](const char* key) { return expected[QLatin1String(key)].toString(); };
        const Tape tape = tapeOf(row);
        const VHSCover cover = dress(tape);

        QCOMPARE(cover.id, tape.id);
        QCOMPARE(cover.title, text("coverTitle"));
        QCOMPARE(cover.bodyName, text("bodyName"));
        QCOMPARE(dressingSeed(tape.id, cover.title), quint32(expected[u"seed"_s].toInteger()));
        QCOMPARE(cover.genre, text("genre"));
        QCOMPARE(cover.shelf, text("shelf"));
        QCOMPARE(cover.year, text("year"));
        QCOMPARE(cover.dateLabel, text("dateLabel"));
        QCOMPARE(cover.runtime, expected[u"runtime"_s].toInt());
        QCOMPARE(cover.speed, text("speed"));
        QCOMPARE(cover.rating.code, text("rating"));
        QCOMPARE(cover.tagline, text("tagline"));
        QCOMPARE(cover.hue, expected[u"hue"_s].toDouble());
        QCOMPARE(cover.spineTitle, text("spineTitle"));
        QCOMPARE(cover.catalogNo, text("catalogNo"));
        QVERIFY2(cover.synopsis.startsWith(text("opening")), qPrintable(cover.synopsis));
        QCOMPARE(digits(cover.barcode), text("barcode"));
    }
};

QUILLMERE_TEST(DressingTableTest, QCoreApplication)

} // namespace quillmere

#include "DressingTableTest.moc"
