#include "Gunzip.h"

#include <zlib.h>

#include <algorithm>
#include <array>

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
    constexpr std::size_t chunkBytes = 32 * 1024;
    std::array<char, chunkBytes> chunk;
    m_stream->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.constData()));
    m_stream->avail_in = uInt(packed.size());
    do {
        // A gzip body may consist of several, one after the other.
        if (m_isWhole && m_stream->avail_in > 0 && inflateReset(m_stream.get()) == Z_OK)
            m_isWhole = false;
        m_stream->next_out = reinterpret_cast<Bytef*>(chunk.data());
        m_stream->avail_out = uInt(std::min<qint64>(chunkBytes, maxBytes + 1 - body.size()));
        const uInt room = m_stream->avail_out;
        const int result = inflate(m_stream.get(), Z_NO_FLUSH);
        if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR)
            return false;
        body.append(chunk.data(), qsizetype(room - m_stream->avail_out));
        m_isWhole = result == Z_STREAM_END;
    } while (body.size() <= maxBytes && (m_stream->avail_in > 0 || m_stream->avail_out == 0));
    return true;
}
