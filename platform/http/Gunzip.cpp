#include "Gunzip.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <utility>

struct Gunzip::Stream : z_stream
{};

Gunzip::Gunzip() : m_stream(std::make_unique<Stream>())
{
    constexpr int gzipFormat = 16 + MAX_WBITS;
    if (inflateInit2(m_stream.get(), gzipFormat) != Z_OK)
        qBadAlloc();
}

Gunzip::~Gunzip()
{
    inflateEnd(m_stream.get());
}

bool Gunzip::add(const QByteArray& packed, QByteArray& body, qint64 maxBytes)
{
    m_stream->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.constData()));
    m_stream->avail_in = uInt(packed.size());
    while (m_stream->avail_in > 0 && body.size() <= maxBytes && m_state != State::Ignoring) {
        if (m_state == State::BehindMember)
            lookForNextMember();
        else if (!inflateMember(body, maxBytes))
            return false;
    }
    return true;
}

bool Gunzip::inflateMember(QByteArray& body, qint64 maxBytes)
{
    constexpr std::size_t chunkBytes = 32 * 1024;
    std::array<char, chunkBytes> chunk;
    do {
        m_stream->next_out = reinterpret_cast<Bytef*>(chunk.data());
        m_stream->avail_out = uInt(std::min<qint64>(chunkBytes, maxBytes + 1 - body.size()));
        const uInt room = m_stream->avail_out;
        const int result = inflate(m_stream.get(), Z_NO_FLUSH);
        if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR)
            return false;
        body.append(chunk.data(), qsizetype(room - m_stream->avail_out));
        if (result == Z_STREAM_END) {
            m_state = State::BehindMember;
            m_matched = 0;
            return true;
        }
    } while (body.size() <= maxBytes && m_stream->avail_out == 0);
    return true;
}

/** Reads one byte. */
void Gunzip::lookForNextMember()
{
    static constexpr std::array<Bytef, 2> mark{0x1F, 0x8B};
    --m_stream->avail_in;
    if (*m_stream->next_in++ != mark[m_matched]) {
        m_state = State::Ignoring;
    } else if (++m_matched == mark.size()) {
        const uInt left = std::exchange(m_stream->avail_in, uInt(mark.size()));
        z_const Bytef* const rest = std::exchange(m_stream->next_in, const_cast<Bytef*>(mark.data()));
        inflateReset(m_stream.get());
        inflate(m_stream.get(), Z_NO_FLUSH); // of the mark alone, which unpacks to nothing
        m_stream->next_in = rest;
        m_stream->avail_in = left;
        m_state = State::InMember;
    }
}
