#pragma once

#include <QByteArray>

#include <memory>

namespace quillmere {

/**
 * Incremental gzip decompression. The data may consist of several members; any other data after a member is ignored.
 * QNetworkAccessManager is not used for this, because it accepts a truncated body as complete. Any thread; not
 * thread-safe.
 */
class Gunzip
{
public:
    Gunzip();
    ~Gunzip();
    Gunzip(const Gunzip&) = delete;
    Gunzip& operator=(const Gunzip&) = delete;

    /**
     * Appends the decompressed bytes to `body`. Stops when `body` has `maxBytes` + 1 bytes, so that the caller can
     * detect the excess. False if the data is not valid gzip.
     */
    bool add(const QByteArray& compressed, QByteArray& body, qint64 maxBytes);

    /** Whether the last member has ended and its checksum was correct. */
    bool isComplete() const { return m_state != State::InMember; }

private:
    struct Stream;
    enum class State { InMember, AfterMember, IgnoringRest };

    bool inflateMember(QByteArray& body, qint64 maxBytes);
    void matchNextMember();

    std::unique_ptr<Stream> m_stream;
    State m_state = State::InMember;
    std::size_t m_matchedBytes = 0; ///< bytes of a next member's magic number that were found so far
};

} // namespace quillmere
