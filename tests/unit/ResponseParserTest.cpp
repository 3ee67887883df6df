#include "ResponseParser.h"
#include "Rows.h"
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
        const QByteArray ok = "HTTP/1.1 200 OK\r\n";
        const QByteArray chunked = ok + "Transfer-Encoding: chunked\r\n\r\n";
        rows<QByteArray, bool, QByteArray>(
            {"bytes", "ends", "expected"},
            {{"no bytes", "", false, "0  more"},
             {"no bytes, connection closed", "", true, "0  broken"},
             {"length", ok + "Content-Length: 4\r\n\r\nbody", false, "200 body whole"},
             {"bytes after the length", ok + "Content-Length: 4\r\n\r\nbodyHTTP/1.1 500 No\r\n\r\n", true,
              "200 body whole"},
             {"length in capitals", ok + "CONTENT-LENGTH:4\r\n\r\nbody", false, "200 body whole"},
             {"no reason phrase", "HTTP/1.1 200\r\nContent-Length: 4\r\n\r\nbody", false, "200 body whole"},
             {"length, closed early", ok + "Content-Length: 5\r\n\r\nbody", true, "200 body broken"},
             {"no length", ok + "\r\nbody", false, "200 body more"},
             {"no length, closed", ok + "\r\nbody", true, "200 body whole"},
             {"length 0", ok + "Content-Length: 0\r\n\r\n", false, "200  whole"},
             {"one length twice", ok + "Content-Length: 4, 4\r\n\r\nbody", false, "200 body whole"},
             {"two lengths", ok + "Content-Length: 4\r\nContent-Length: 5\r\n\r\nbody", false, "200  broken"},
             {"negative length", ok + "Content-Length: -4\r\n\r\nbody", false, "200  broken"},
             {"length of 20 digits", ok + "Content-Length: 99999999999999999999\r\n\r\nbody", false, "200  broken"},
             {"length is not a number", ok + "Content-Length: four\r\n\r\nbody", false, "200  broken"},
             {"204 with a length", "HTTP/1.1 204 No\r\nContent-Length: 4\r\n\r\n", false, "204  whole"},
             {"304 with a length", "HTTP/1.1 304 No\r\nContent-Length: 4\r\n\r\n", false, "304  whole"},
             {"chunks", ok + "Transfer-Encoding: Chunked\r\n\r\n2\r\nbo\r\n2\r\ndy\r\n0\r\n\r\n", false,
              "200 body whole"},
             {"chunks and a length",
              ok + "Content-Length: 9\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nbody\r\n0\r\n\r\n", false,
              "200 body whole"},
             {"chunk size in hexadecimal", chunked + "A\r\nbody body!\r\n0\r\n\r\n", false, "200 body body! whole"},
             {"chunk extension", chunked + "4 ;a=b\r\nbody\r\n0\r\n\r\n", false, "200 body whole"},
             {"trailer", chunked + "4\r\nbody\r\n0\r\nA: b\r\nC: d\r\n\r\n", false, "200 body whole"},
             {"chunks, closed early", chunked + "4\r\nbody\r\n", true, "200 body broken"},
             {"chunk without a size", chunked + "body\r\n", false, "200  broken"},
             {"chunk with a wrong end", chunked + "4\r\nbodyxx\r\n", false, "200 body broken"},
             {"negative chunk size", chunked + "-4\r\nbody\r\n", false, "200  broken"},
             {"interim answer",
              "HTTP/1.1 103 Hints\r\nContent-Length: 4\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody", false,
              "200 body whole"},
             {"only an interim answer", "HTTP/1.1 103 Hints\r\n\r\n", false, "0  more"},
             {"only an interim answer, closed", "HTTP/1.1 103 Hints\r\n\r\n", true, "0  broken"},
             {"line feeds without carriage returns", "HTTP/1.1 103 Hints\n\nHTTP/1.1 200 OK\nContent-Length: 4\n\nbody",
              false, "200 body whole"},
             {"blank lines first", "\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody", false, "200 body whole"},
             {"another protocol", "SSH-2.0-Something\r\n\r\n", false, "0  broken"},
             {"status is not a number", "HTTP/1.1 OK\r\n\r\n", false, "0  broken"},
             {"another version", "HTTP/2 200\r\n\r\n", false, "0  broken"}});
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
        rows<QByteArray, QByteArray>({"start", "part"},
                                     {{"status line", "HTTP/1.1 200 ", "x"},
                                      {"many headers", "HTTP/1.1 200 OK\r\n", "A: b\r\n"},
                                      {"headers of interim answer", "HTTP/1.1 103 A\r\n", "A: b\r\n"},
                                      {"chunk size", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4;", "a"}});
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
