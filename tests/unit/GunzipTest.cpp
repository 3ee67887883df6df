#include "Gunzip.h"

#include <QTest>

#include <zlib.h>

#include <array>

namespace {

QByteArray packed(const QByteArray& bytes)
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

/** The unpacking of bodies, in pieces of any size. */
class GunzipTest : public QObject
{
    Q_OBJECT

    static constexpr qint64 enough = 1'000'000;

private Q_SLOTS:
    void aBodyIsUnpacked_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("expected");
        const QByteArray one = packed("one");
        const QByteArray two = packed(QByteArray(100'000, '2'));
        const QByteArray both = "one" + QByteArray(100'000, '2');
        QTest::newRow("one member") << one << QByteArray("one");
        QTest::newRow("two members") << one + two << both;
        QTest::newRow("an empty member between") << one + packed("") + two << both;
        QTest::newRow("zeros behind it") << one + QByteArray(512, '\0') << QByteArray("one");
        QTest::newRow("words behind it") << one + "\n<!-- served by 7 -->" << QByteArray("one");
        QTest::newRow("words behind two") << one + two + "trailing" << both;
        QTest::newRow("half a mark behind it") << one + '\x1F' << QByteArray("one");
        QTest::newRow("half a mark and words behind it") << one + "\x1F words" << QByteArray("one");
        QTest::newRow("words and a member behind it") << one + "words" + two << QByteArray("one");
    }
    void aBodyIsUnpacked()
    {
        QFETCH(QByteArray, bytes);
        for (const qsizetype size : {bytes.size(), qsizetype(3), qsizetype(1)}) {
            Gunzip gunzip;
            QByteArray body;
            for (qsizetype offset = 0; offset < bytes.size(); offset += size)
                QVERIFY(gunzip.add(bytes.mid(offset, size), body, enough));
            QVERIFY(gunzip.isWhole());
            QTEST(body, "expected");
        }
    }

    void aBodyThatEndsWithinAMemberIsNotWhole_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("in the first") << packed("one").chopped(1);
        QTest::newRow("in its mark") << packed("one").first(1);
        QTest::newRow("in the second") << packed("one") + packed("two").chopped(1);
        QTest::newRow("behind the second's mark") << packed("one") + packed("two").first(2);
    }
    void aBodyThatEndsWithinAMemberIsNotWhole()
    {
        QFETCH(QByteArray, bytes);
        Gunzip gunzip;
        QByteArray body;
        QVERIFY(gunzip.add(bytes, body, enough));
        QVERIFY(!gunzip.isWhole());
    }

    void aBodyThatIsDamagedIsRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QByteArray damaged = packed(QByteArray(1000, 'a'));
        damaged[damaged.size() - 6] = char(damaged.at(damaged.size() - 6) ^ 1); // in the checksum
        QTest::newRow("the checksum") << damaged;
        QTest::newRow("the second's checksum") << packed("one") + damaged;
        QTest::newRow("from its start") << QByteArray("this is not gzip at all");
    }
    void aBodyThatIsDamagedIsRefused()
    {
        QFETCH(QByteArray, bytes);
        Gunzip gunzip;
        QByteArray body;
        QVERIFY(!gunzip.add(bytes, body, enough));
    }

    void noMoreIsUnpackedThanTheLimitAndOne()
    {
        const QByteArray bytes = packed(QByteArray(100'000, 'a'));
        for (const qint64 limit : {0, 1, 99'998, 99'999}) {
            Gunzip gunzip;
            QByteArray body;
            QVERIFY(gunzip.add(bytes, body, limit));
            QCOMPARE(body.size(), limit + 1);
        }
    }
};

QTEST_GUILESS_MAIN(GunzipTest)
#include "GunzipTest.moc"
