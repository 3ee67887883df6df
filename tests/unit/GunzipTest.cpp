#include "Gunzip.h"
#include "TestMain.h"

#include <QTest>

#include <zlib.h>

#include <array>

namespace quillmere {

namespace {

QByteArray compressed(const QByteArray& bytes)
{
    constexpr int gzipFormat = 16 + MAX_WBITS;
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, gzipFormat, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY);
    QByteArray result(qsizetype(deflateBound(&stream, uLong(bytes.size()))), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = uInt(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = uInt(result.size());
    deflate(&stream, Z_FINISH);
    result.chop(qsizetype(stream.avail_out));
    deflateEnd(&stream);
    return result;
}

} // namespace

/** Tests the decompression of gzip bodies that arrive in pieces of any size. */
class GunzipTest : public QObject
{
    Q_OBJECT

    static constexpr qint64 limit = 1'000'000;

private Q_SLOTS:
    void bodyIsDecompressed_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("expected");
        const QByteArray one = compressed("one");
        const QByteArray two = compressed(QByteArray(100'000, '2'));
        const QByteArray both = "one" + QByteArray(100'000, '2');
        QTest::newRow("one member") << one << QByteArray("one");
        QTest::newRow("two members") << one + two << both;
        QTest::newRow("an empty member between two") << one + compressed("") + two << both;
        QTest::newRow("zeros after the member") << one + QByteArray(512, '\0') << QByteArray("one");
        QTest::newRow("text after the member") << one + "\n<!-- served by 7 -->" << QByteArray("one");
        QTest::newRow("text after two members") << one + two + "trailing" << both;
        QTest::newRow("first magic byte after the member") << one + '\x1F' << QByteArray("one");
        QTest::newRow("first magic byte and text after the member") << one + "\x1F words" << QByteArray("one");
        QTest::newRow("text and a member after the member") << one + "words" + two << QByteArray("one");
    }
    void bodyIsDecompressed()
    {
        QFETCH(QByteArray, bytes);
        for (const qsizetype size : {bytes.size(), qsizetype(3), qsizetype(1)}) {
            Gunzip gunzip;
            QByteArray body;
            for (qsizetype offset = 0; offset < bytes.size(); offset += size)
                QVERIFY(gunzip.add(bytes.mid(offset, size), body, limit));
            QVERIFY(gunzip.isComplete());
            QTEST(body, "expected");
        }
    }

    void bodyThatEndsInsideMemberIsIncomplete_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("in the first member") << compressed("one").chopped(1);
        QTest::newRow("in the magic bytes") << compressed("one").first(1);
        QTest::newRow("in the second member") << compressed("one") + compressed("two").chopped(1);
        QTest::newRow("after the second member's magic bytes") << compressed("one") + compressed("two").first(2);
    }
    void bodyThatEndsInsideMemberIsIncomplete()
    {
        QFETCH(QByteArray, bytes);
        Gunzip gunzip;
        QByteArray body;
        QVERIFY(gunzip.add(bytes, body, limit));
        QVERIFY(!gunzip.isComplete());
    }

    void damagedBodyIsRejected_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QByteArray damaged = compressed(QByteArray(1000, 'a'));
        damaged[damaged.size() - 6] = char(damaged.at(damaged.size() - 6) ^ 1); // a byte of the checksum
        QTest::newRow("checksum") << damaged;
        QTest::newRow("checksum of the second member") << compressed("one") + damaged;
        QTest::newRow("no gzip") << QByteArray("this is not gzip at all");
    }
    void damagedBodyIsRejected()
    {
        QFETCH(QByteArray, bytes);
        Gunzip gunzip;
        QByteArray body;
        QVERIFY(!gunzip.add(bytes, body, limit));
    }

    void atMostOneByteOverLimitIsDecompressed()
    {
        const QByteArray bytes = compressed(QByteArray(100'000, 'a'));
        for (const qint64 limit : {0, 1, 99'998, 99'999}) {
            Gunzip gunzip;
            QByteArray body;
            QVERIFY(gunzip.add(bytes, body, limit));
            QCOMPARE(body.size(), limit + 1);
        }
    }
};

QUILLMERE_TEST(GunzipTest, QCoreApplication)

} // namespace quillmere

#include "GunzipTest.moc"
