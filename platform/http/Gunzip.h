#pragma once

#include <QByteArray>

#include <memory>

/**
 * Unpacks a gzip body piece by piece, which may consist of several members, one after the other. Whatever else follows a
 * member is ignored. The network access could do it, but takes a body cut short for a whole one. Any thread, one at a time.
 */
class Gunzip
{
public:
    Gunzip();
    ~Gunzip();
    Gunzip(const Gunzip&) = delete;
    Gunzip& operator=(const Gunzip&) = delete;

    /**
     * Unpacks `packed` onto the end of `body`, which grows no further than `maxBytes` and one; what is left then is
     * not unpacked. False when it is not gzip.
     */
    bool add(const QByteArray& packed, QByteArray& body, qint64 maxBytes);

    /** Whether the end of the packed body has been seen, with its checksum. */
    bool isWhole() const { return m_state != State::InMember; }

private:
    struct Stream;
    enum class State { InMember, BehindMember, Ignoring };

    bool inflateMember(QByteArray& body, qint64 maxBytes);
    void lookForNextMember();

    std::unique_ptr<Stream> m_stream;
    State m_state = State::InMember;
    std::size_t m_matched = 0; ///< bytes of the mark that a next member begins with
};
