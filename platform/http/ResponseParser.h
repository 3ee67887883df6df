#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>

#include <utility>

namespace quillmere {

/**
 * Incremental parser for one HTTP/1 response. Skips interim responses (status 100 to 199). Decodes a chunked body or
 * ends it at its Content-Length. Any thread; not thread-safe.
 *
 * "Head" means the status line and the headers.
 */
class ResponseParser
{
public:
    using Header = QPair<QByteArray, QByteArray>;

    /** Limit of one head. Servers limit theirs to 8 to 32 KiB. */
    static constexpr qsizetype maxHeadBytes = 64 * 1024;

    void add(const QByteArray& bytes);

    /**
     * Must be called when the connection is closed. Ends a body of unknown length; any other incomplete response fails.
     */
    void end();

    /** Status of the final response; 0 until its head is complete. */
    int status() const { return m_status; }
    /** Headers of the final response. */
    const QList<Header>& headers() const { return m_headers; }

    /** The last interim status; 0 if none was received. */
    int interimStatus() const { return m_interimStatus; }

    /** Returns the decoded body bytes since the last call. */
    QByteArray takeBody() { return std::exchange(m_body, {}); }

    bool isComplete() const { return m_state == State::Complete; }

    /** Whether the bytes are not a valid HTTP response or ended too early. */
    bool hasFailed() const { return m_state == State::Failed; }

private:
    enum class State { Head, BodyWithLength, BodyUntilClose, ChunkSize, Chunk, ChunkEnd, Trailer, Complete, Failed };

    bool step();
    bool readHead();
    bool parseHead(const QByteArray& head);
    bool startBody();
    bool readRemaining(State next);
    bool readChunkSize();
    bool readTrailer();
    bool readLine(QByteArray& line);
    bool fail();

    State m_state = State::Head;
    QByteArray m_unread;
    QByteArray m_body;
    QList<Header> m_headers;
    int m_status = 0;
    int m_interimStatus = 0;
    qint64 m_remaining = 0; ///< bytes that are still missing from the body or the current chunk
};

} // namespace quillmere
