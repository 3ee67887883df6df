#include "HubURL.h"
#include "TestMain.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests how a hub path is resolved to an address. */
class HubURLTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pathIsResolvedToAddress_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("address");
        const auto row = [](const QString& path, const QByteArray& address) {
            QTest::newRow(path.toUtf8().toPercentEncoding().constData()) << path << address;
        };
        row(u"/api/tv/status"_s, "https://hub.test:8443/api/tv/status");
        row(u"/live/news/index.m3u8"_s, "https://hub.test:8443/live/news/index.m3u8");
        row(u"council/index.m3u8"_s, "https://hub.test:8443/council/index.m3u8");
        row(u"../../council/./index.m3u8"_s, "https://hub.test:8443/council/index.m3u8");
        row(u"/api/tv/tapes?page=1&q=a%20b"_s, "https://hub.test:8443/api/tv/tapes?page=1&q=a%20b");
        row(u"?page=2"_s, "https://hub.test:8443?page=2");
        row(u"/"_s, "https://hub.test:8443/");
        row(u"/a:b/c"_s, "https://hub.test:8443/a:b/c");
        row(u"https://elsewhere.test/a/index.m3u8?x=1"_s, "https://elsewhere.test/a/index.m3u8?x=1");
        row(u"http://elsewhere.test:8080/a"_s, "http://elsewhere.test:8080/a");
        row(u"https://elsewhere.test"_s, "https://elsewhere.test");
        row(u"//elsewhere.test/a"_s, "https://elsewhere.test/a");
        row(u"HTTPS://elsewhere.test/a"_s, "https://elsewhere.test/a");
        // Characters that are not allowed in an address are percent-encoded; existing encodings are kept.
        row(u"/a b/é📼.m3u8"_s, "https://hub.test:8443/a%20b/%C3%A9%F0%9F%93%BC.m3u8");
        row(u"/a%20b/%C3%A9%2F.m3u8"_s, "https://hub.test:8443/a%20b/%C3%A9%2F.m3u8");
        row(u"/100%/x"_s, "https://hub.test:8443/100%25/x");
        row(u"/a\nb\tc"_s, "https://hub.test:8443/a%0Ab%09c");
        row(u"/a\\b"_s, "https://hub.test:8443/a%5Cb");
        row(u"/a\"<b>`"_s, "https://hub.test:8443/a%22%3Cb%3E%60");
        row(u" /a"_s, "https://hub.test:8443/%20/a");
        row(QString(u"/a\0b"_s), "https://hub.test:8443/a%00b");
        row(u"/half"_s + QChar(0xD83D), "https://hub.test:8443/half%EF%BF%BD");
    }

    void pathIsResolvedToAddress()
    {
        QFETCH(QString, path);
        const auto url = hubURL(path, m_base);
        QVERIFY(url);
        QTEST(url->toEncoded(), "address");
    }

    void invalidPathIsNoAddress_data()
    {
        QTest::addColumn<QString>("path");
        const QStringList paths{u""_s, u"https://"_s, u"http://"_s, u"https:///a"_s, u"http:/a"_s, u"https:a"_s,
                                u"https://a b/"_s, u"https://hub.test:port/"_s, u"https://hub.test:99999/"_s,
                                u"https://[::1/"_s, u"https://[nonsense]/"_s, u"https://a<b>/"_s, u"12:30/a"_s,
                                // Other schemes are never passed to the player or the network.
                                u"javascript:alert(1)"_s, u"file:///etc/passwd"_s, u"file:/etc/passwd"_s,
                                u"data:text/plain,a"_s, u"ftp://hub.test/a"_s, u"rtmp://hub.test/a"_s,
                                u"council:1/index.m3u8"_s};
        for (const QString& path : paths)
            QTest::newRow(path.toUtf8().constData()) << path;
    }

    void invalidPathIsNoAddress()
    {
        QFETCH(QString, path);
        QVERIFY(!hubURL(path, m_base));
    }

    void builtInBaseIsHttpsOriginAndResolvesPaths()
    {
        QCOMPARE(hubBase().scheme(), u"https"_s);
        QVERIFY(!hubBase().host().isEmpty());
        QVERIFY(hubBase().path().isEmpty());
        QCOMPARE(hubBase(), QUrl(QStringLiteral(QUILLMERE_HUB_BASE)));
        QCOMPARE(hubURL(u"/api/tv/status"_s)->toEncoded(), QByteArray(QUILLMERE_HUB_BASE "/api/tv/status"));
    }

    void builtInCertificatesEqualFile()
    {
        QByteArray whole;
        if (QFile file(QStringLiteral(QUILLMERE_HUB_CA)); !file.fileName().isEmpty()) {
            QVERIFY(file.open(QIODevice::ReadOnly));
            whole = file.readAll();
        }
        QCOMPARE(hubCertificates(), whole);
    }

private:
    const QUrl m_base{u"https://hub.test:8443"_s};
};

QUILLMERE_TEST(HubURLTest, TestMain::NoApplication)

} // namespace quillmere

#include "HubURLTest.moc"
