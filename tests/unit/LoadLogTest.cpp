#include "LoadLog.h"
#include "Rows.h"
#include "TestMain.h"

#include <QTest>

namespace quillmere {

using Cause = VideoFailure::Cause;

/** Tests what is read from the player library's log messages about a failure. */
class LoadLogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void causeIsReadFromMessages_data()
    {
        QTest::addColumn<QByteArrayList>("messages");
        QTest::addColumn<int>("cause");
        QTest::addColumn<int>("status");
        const auto row = [](const char* name, const QByteArrayList& messages, Cause cause, int status = 0) {
            QTest::newRow(name) << messages << int(cause) << status;
        };
        row("no messages", {}, Cause::Unknown);
        row("message without a cause", {"Failed to open https://hub/x.\n"}, Cause::Unknown);
        row("not found", {"https: HTTP error 404 Not Found\n", "Failed to open https://hub/x.\n"}, Cause::Status, 404);
        row("server error", {"https: HTTP error 503 Service Unavailable\n"}, Cause::Status, 503);
        row("refused", {"tcp: Connection to tcp://localhost:1 failed: Connection refused\n"}, Cause::Refused);
        row("certificate", {"tls: Peer certificate failed verification\n"}, Cause::Certificate);
        row("other host", {"tls: The certificate's owner does not match hostname hub\n"}, Cause::Certificate);
        row("old TLS", {"tls: Unable to set up TLS session\n", "tls: A TLS fatal alert has been received.\n"},
            Cause::Certificate);
        row("timeout", {"tcp: Connection to tcp://hub:443 failed: Connection timed out\n"}, Cause::TimedOut);
        row("unknown host name", {"tcp: Failed to resolve hostname hub: Name or service not known\n"}, Cause::Network);
        row("forbidden address", {"ffmpeg: Protocol 'file' not on whitelist 'https,tls,tcp'!\n"}, Cause::Unplayable);
    }
    void causeIsReadFromMessages()
    {
        QFETCH(const QByteArrayList, messages);
        LoadLog log;
        for (const QByteArray& message : messages)
            log.add(message);
        QTEST(int(log.failure().cause), "cause");
        QTEST(log.failure().httpStatus, "status");
    }

    void skippedDataIsDetected_data()
    {
        rows<QByteArray, bool>({"message", "isDetected"},
                               {{"a segment", "hls: Failed to open segment 5 of playlist 0\n", true},
                                {"the stream", "Failed to open https://hub/x.\n", false},
                                {"a cut segment", "mpegts: Packet corrupt (stream = 0, dts = 1024490).\n", false}});
    }
    void skippedDataIsDetected()
    {
        QFETCH(const QByteArray, message);
        QTEST(LoadLog::reportsSkippedSegment(message), "isDetected");
    }
};

QUILLMERE_TEST(LoadLogTest, TestMain::NoApplication)

} // namespace quillmere

#include "LoadLogTest.moc"
