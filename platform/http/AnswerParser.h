#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>

#include <utility>

/**
 * Parses the bytes of a connection that carries one HTTP/1 answer: interim statuses (100 to 199) are skipped, the body is
 * unwrapped from its chunks or cut at its length. Any thread, one at a time.
 */
class AnswerParser
{
public:
    using Header = QPair<QByteArray, QByteArray>;

    /** In bytes, of one head; servers limit theirs to 8 to 32 KiB. */
    static constexpr qsizetype longestHead = 64 * 1024;

    void add(const QByteArray& bytes);

    /** The connection has ended: completes a body that has no length of its own, and fails any other part. */
    void end();

    /** Of the final answer; 0 before its head is complete. */
    int status() const { return m_status; }
    const QList<Header>& headers() const { return m_headers; }

    /** The last interim status, 0 if none came. */
    int interimStatus() const { return m_interimStatus; }

    /** The body's bytes since the last call. */
    QByteArray takeBody() { return std::exchange(m_body, {}); }

    bool isWhole() const { return m_state == State::Whole; }

    /** Whether the bytes are no HTTP answer, or ended too early. */
    bool isBroken() const { return m_state == State::Broken; }

private:
    enum class State { Head, BodyOfLength, BodyToTheEnd, ChunkSize, Chunk, ChunkEnd, Trailer, Whole, Broken };

    bool step();
    bool readHead();
    bool parseHead(const QByteArray& head);
    bool startBody();
    bool readCounted(State next);
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
    qint64 m_left = 0; ///< bytes, of the body or of the chunk
};
