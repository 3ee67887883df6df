#include "LoadLog.h"

#include <QTest>

using Cause = VideoFailure::Cause;

/** What the player's messages say about a failure. */
class LoadLogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theCauseIsReadFromTheMessages_data();
    void theCauseIsReadFromTheMessages();
    void dataLeftOutAreTold_data();
    void dataLeftOutAreTold();
};

void LoadLogTest::theCauseIsReadFromTheMessages_data()
{
    QTest::addColumn<QByteArrayList>("messages");
    QTest::addColumn<int>("cause");
    QTest::addColumn<int>("status");
    const auto row = [](const char* name, const QByteArrayList& messages, Cause cause, int status = 0) {
        QTest::newRow(name) << messages << int(cause) << status;
    };
    row("nothing said", {}, Cause::Unknown);
    row("words that say nothing", {"Failed to open https://hub/x.\n"}, Cause::Unknown);
    row("missing", {"https: HTTP error 404 Not Found\n", "Failed to open https://hub/x.\n"}, Cause::Status, 404);
    row("broken server", {"https: HTTP error 503 Service Unavailable\n"}, Cause::Status, 503);
    row("refused", {"tcp: Connection to tcp://localhost:1 failed: Connection refused\n"}, Cause::Refused);
    row("certificate", {"tls: Peer certificate failed verification\n"}, Cause::Certificate);
    row("other host", {"tls: The certificate's owner does not match hostname hub\n"}, Cause::Certificate);
    row("old TLS", {"tls: Unable to set up TLS session\n", "tls: A TLS fatal alert has been received.\n"},
        Cause::Certificate);
    row("silence", {"tcp: Connection to tcp://hub:443 failed: Connection timed out\n"}, Cause::TimedOut);
    row("no name", {"tcp: Failed to resolve hostname hub: Name or service not known\n"}, Cause::Network);
    row("forbidden address", {"ffmpeg: Protocol 'file' not on whitelist 'https,tls,tcp'!\n"}, Cause::Unplayable);
}

void LoadLogTest::theCauseIsReadFromTheMessages()
{
    QFETCH(const QByteArrayList, messages);
    LoadLog log;
    for (const QByteArray& message : messages)
        log.add(message);
    QTEST(int(log.failure().cause), "cause");
    QTEST(log.failure().httpStatus, "status");
}

void LoadLogTest::dataLeftOutAreTold_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<bool>("told");
    QTest::newRow("a segment") << QByteArray("hls: Failed to open segment 5 of playlist 0\n") << true;
    QTest::newRow("the stream") << QByteArray("Failed to open https://hub/x.\n") << false;
    QTest::newRow("a cut segment") << QByteArray("mpegts: Packet corrupt (stream = 0, dts = 1024490).\n") << false;
}

void LoadLogTest::dataLeftOutAreTold()
{
    QFETCH(const QByteArray, message);
    QTEST(LoadLog::tellsOfSkippedData(message), "told");
}

QTEST_APPLESS_MAIN(LoadLogTest)
#include "LoadLogTest.moc"
