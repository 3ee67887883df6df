#include "Gunzip.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <utility>

namespace quillmere {

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

bool Gunzip::add(const QByteArray& compressed, QByteArray& body, qint64 maxBytes)
{
    m_stream->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(compressed.constData()));
    m_stream->avail_in = uInt(compressed.size());
    while (m_stream->avail_in > 0 && body.size() <= maxBytes && m_state != State::IgnoringRest) {
        if (m_state == State::AfterMember)
            matchNextMember();
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
            m_state = State::AfterMember;
            m_matchedBytes = 0;
            return true;
        }
    } while (body.size() <= maxBytes && m_stream->avail_out == 0);
    return true;
}

/** Compares one byte with the magic number of a next member, and starts that member once all of it was found. */
void Gunzip::matchNextMember()
{
    static constexpr std::array<Bytef, 2> magic{0x1F, 0x8B};
    --m_stream->avail_in;
    if (*m_stream->next_in++ != magic[m_matchedBytes]) {
        m_state = State::IgnoringRest;
    } else if (++m_matchedBytes == magic.size()) {
        // The magic number may have ended an earlier call of add(), so zlib is given a copy of it first.
        const uInt restBytes = std::exchange(m_stream->avail_in, uInt(magic.size()));
        z_const Bytef* const rest = std::exchange(m_stream->next_in, const_cast<Bytef*>(magic.data()));
        inflateReset(m_stream.get());
        inflate(m_stream.get(), Z_NO_FLUSH); // decompresses to nothing
        m_stream->next_in = rest;
        m_stream->avail_in = restBytes;
        m_state = State::InMember;
    }
}

} // namespace quillmere
