#include "ResponseParser.h"
#include "TestMain.h"

#include <QTest>

namespace quillmere {

/** Tests the parser of the HTTP answers that SocketReply reads. */
class ResponseParserTest : public QObject
{
    Q_OBJECT

    static constexpr int everything = 1 << 20;

    /** Parses the bytes in pieces of this size. Returns status, body and state as one text. */
    static QByteArray outcome(const QByteArray& bytes, bool ends, int pieceBytes)
    {
        ResponseParser parser;
        QByteArray body;
        for (qsizetype offset = 0; offset < bytes.size(); offset += pieceBytes) {
            parser.add(bytes.mid(offset, pieceBytes));
            body += parser.takeBody();
        }
        if (ends)
            parser.end();
        const char* const end = parser.hasFailed() ? "broken" : parser.isComplete() ? "whole" : "more";
        return QByteArray::number(parser.status()) + ' ' + body + ' ' + end;
    }

private Q_SLOTS:
    void answerIsParsedFromPiecesOfAnySize_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("ends");
        QTest::addColumn<QByteArray>("expected");
        const auto row = [](const char* name, const QByteArray& bytes, bool ends, const QByteArray& expected) {
            QTest::newRow(name) << bytes << ends << expected;
        };
        row("no bytes", "", false, "0  more");
        row("no bytes, connection closed", "", true, "0  broken");
        row("length", "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody", false, "200 body whole");
        row("bytes after the length", "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbodyHTTP/1.1 500 No\r\n\r\n", true,
            "200 body whole");
        row("length in capitals", "HTTP/1.1 200 OK\r\nCONTENT-LENGTH:4\r\n\r\nbody", false, "200 body whole");
        row("no reason phrase", "HTTP/1.1 200\r\nContent-Length: 4\r\n\r\nbody", false, "200 body whole");
        row("length, closed early", "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nbody", true, "200 body broken");
        row("no length", "HTTP/1.1 200 OK\r\n\r\nbody", false, "200 body more");
        row("no length, closed", "HTTP/1.1 200 OK\r\n\r\nbody", true, "200 body whole");
        row("length 0", "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n", false, "200  whole");
        row("one length twice", "HTTP/1.1 200 OK\r\nContent-Length: 4, 4\r\n\r\nbody", false, "200 body whole");
        row("two lengths", "HTTP/1.1 200 OK\r\nContent-Length: 4\r\nContent-Length: 5\r\n\r\nbody", false,
            "200  broken");
        row("negative length", "HTTP/1.1 200 OK\r\nContent-Length: -4\r\n\r\nbody", false, "200  broken");
        row("length of 20 digits", "HTTP/1.1 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\nbody", false,
            "200  broken");
        row("length is not a number", "HTTP/1.1 200 OK\r\nContent-Length: four\r\n\r\nbody", false, "200  broken");
        row("204 with a length", "HTTP/1.1 204 No\r\nContent-Length: 4\r\n\r\n", false, "204  whole");
        row("304 with a length", "HTTP/1.1 304 No\r\nContent-Length: 4\r\n\r\n", false, "304  whole");
        row("chunks", "HTTP/1.1 200 OK\r\nTransfer-Encoding: Chunked\r\n\r\n2\r\nbo\r\n2\r\ndy\r\n0\r\n\r\n", false,
            "200 body whole");
        row("chunks and a length",
            "HTTP/1.1 200 OK\r\nContent-Length: 9\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nbody\r\n0\r\n\r\n", false,
            "200 body whole");
        row("chunk size in hexadecimal",
            "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nA\r\nbody body!\r\n0\r\n\r\n", false,
            "200 body body! whole");
        row("chunk extension", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4 ;a=b\r\nbody\r\n0\r\n\r\n",
            false, "200 body whole");
        row("trailer", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nbody\r\n0\r\nA: b\r\nC: d\r\n\r\n",
            false, "200 body whole");
        row("chunks, closed early", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nbody\r\n", true,
            "200 body broken");
        row("chunk without a size", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nbody\r\n", false,
            "200  broken");
        row("chunk with a wrong end", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nbodyxx\r\n", false,
            "200 body broken");
        row("negative chunk size", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n-4\r\nbody\r\n", false,
            "200  broken");
        row("interim answer",
            "HTTP/1.1 103 Hints\r\nContent-Length: 4\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody", false,
            "200 body whole");
        row("only an interim answer", "HTTP/1.1 103 Hints\r\n\r\n", false, "0  more");
        row("only an interim answer, closed", "HTTP/1.1 103 Hints\r\n\r\n", true, "0  broken");
        row("line feeds without carriage returns", "HTTP/1.1 103 Hints\n\nHTTP/1.1 200 OK\nContent-Length: 4\n\nbody",
            false, "200 body whole");
        row("blank lines first", "\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody", false, "200 body whole");
        row("another protocol", "SSH-2.0-Something\r\n\r\n", false, "0  broken");
        row("status is not a number", "HTTP/1.1 OK\r\n\r\n", false, "0  broken");
        row("another version", "HTTP/2 200\r\n\r\n", false, "0  broken");
    }
    void answerIsParsedFromPiecesOfAnySize()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, ends);
        for (const int size : {everything, 7, 3, 2, 1})
            QTEST(outcome(bytes, ends, size), "expected");
    }

    void lastInterimStatusIsReported()
    {
        ResponseParser parser;
        parser.add("HTTP/1.1 102 A\r\n\r\nHTTP/1.1 103 B\r\n\r\nHTTP/1.1 2");
        QCOMPARE(parser.interimStatus(), 103);
        QCOMPARE(parser.status(), 0);
    }

    void headersAreOnlyFromFinalAnswer()
    {
        ResponseParser parser;
        parser.add("HTTP/1.1 103 A\r\nLink: <a>\r\n\r\nHTTP/1.1 200 OK\r\nETag: \"1\"\r\nX:  a\r\n b\t\r\n\r\n");
        QCOMPARE(parser.headers(), (QList<ResponseParser::Header>{{"ETag", "\"1\""}, {"X", "a b"}}));
    }

    void headWithoutEndIsRejected_data()
    {
        QTest::addColumn<QByteArray>("start");
        QTest::addColumn<QByteArray>("part");
        QTest::newRow("status line") << QByteArray("HTTP/1.1 200 ") << QByteArray("x");
        QTest::newRow("many headers") << QByteArray("HTTP/1.1 200 OK\r\n") << QByteArray("A: b\r\n");
        QTest::newRow("headers of interim answer") << QByteArray("HTTP/1.1 103 A\r\n") << QByteArray("A: b\r\n");
        QTest::newRow("chunk size") << QByteArray("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4;")
                                    << QByteArray("a");
    }
    void headWithoutEndIsRejected()
    {
        QFETCH(QByteArray, start);
        QFETCH(QByteArray, part);
        ResponseParser parser;
        parser.add(start);
        qsizetype sent = 0;
        while (!parser.hasFailed() && sent < 2 * ResponseParser::maxHeadBytes) {
            parser.add(part.repeated(100));
            sent += part.size() * 100;
        }
        QVERIFY(parser.hasFailed());
    }
};

QUILLMERE_TEST(ResponseParserTest, QCoreApplication)

} // namespace quillmere

#include "ResponseParserTest.moc"
