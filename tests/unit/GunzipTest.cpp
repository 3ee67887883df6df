#include "Gunzip.h"
#include "Rows.h"
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
        const QByteArray one = compressed("one");
        const QByteArray two = compressed(QByteArray(100'000, '2'));
        const QByteArray both = "one" + QByteArray(100'000, '2');
        rows<QByteArray, QByteArray>({"bytes", "expected"},
                                     {{"one member", one, "one"},
                                      {"two members", one + two, both},
                                      {"an empty member between two", one + compressed("") + two, both},
                                      {"zeros after the member", one + QByteArray(512, '\0'), "one"},
                                      {"text after the member", one + "\n<!-- served by 7 -->", "one"},
                                      {"text after two members", one + two + "trailing", both},
                                      {"first magic byte after the member", one + '\x1F', "one"},
                                      {"first magic byte and text after the member", one + "\x1F words", "one"},
                                      {"text and a member after the member", one + "words" + two, "one"}});
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
        rows<QByteArray>({"bytes"},
                         {{"in the first member", compressed("one").chopped(1)},
                          {"in the magic bytes", compressed("one").first(1)},
                          {"in the second member", compressed("one") + compressed("two").chopped(1)},
                          {"after the second member's magic bytes", compressed("one") + compressed("two").first(2)}});
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
        QByteArray damaged = compressed(QByteArray(1000, 'a'));
        damaged[damaged.size() - 6] = char(damaged.at(damaged.size() - 6) ^ 1); // a byte of the checksum
        rows<QByteArray>({"bytes"}, {{"checksum", damaged},
                                     {"checksum of the second member", compressed("one") + damaged},
                                     {"no gzip", "this is not gzip at all"}});
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
