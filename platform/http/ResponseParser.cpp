#include "ResponseParser.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace quillmere {

namespace {

constexpr int firstInterim = 100;
constexpr int firstFinal = 200;
constexpr int noContent = 204;
constexpr int notModified = 304;

/** The status code of a status line such as "HTTP/1.1 200 OK"; 0 if `line` is not a status line. */
int statusOf(const QByteArray& line)
{
    constexpr int codeOffset = 9;
    const bool isHttp1 = line.startsWith("HTTP/1.") && line.size() > codeOffset && line.at(codeOffset - 1) == ' ';
    return isHttp1 ? line.mid(codeOffset).split(' ').first().toInt() : 0;
}

/** All values of the headers with this name, in lower case. Comma-separated values are split. */
QList<QByteArray> valuesOf(const QList<ResponseParser::Header>& headers, const char* name)
{
    QList<QByteArray> values;
    for (const auto& [key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            for (const QByteArray& part : value.toLower().split(','))
                values.append(part.trimmed());
        }
    }
    return values;
}

/** Length of the head at the start of `bytes`, including its blank line; -1 if it is incomplete. */
qsizetype headLength(const QByteArray& bytes)
{
    for (auto lineEnd = bytes.indexOf('\n'); lineEnd >= 0; lineEnd = bytes.indexOf('\n', lineEnd + 1)) {
        // Some servers end lines with LF instead of CRLF.
        for (const std::string_view blankLine : {"\n", "\r\n"}) {
            const std::string_view rest(bytes.constData() + lineEnd + 1, size_t(bytes.size() - lineEnd - 1));
            if (rest.starts_with(blankLine))
                return lineEnd + 1 + qsizetype(blankLine.size());
        }
    }
    return -1;
}

/** Parses a length in this base; -1 if the text is not a number or does not fit. */
qint64 lengthOf(const QByteArray& text, int base)
{
    const bool isNumber = !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char character) {
        return std::isxdigit(static_cast<unsigned char>(character));
    });
    bool fits = false;
    const qint64 length = isNumber ? text.toLongLong(&fits, base) : -1;
    return fits ? length : -1;
}

} // namespace

void ResponseParser::add(const QByteArray& bytes)
{
    m_unread += bytes;
    while (step()) {
    }
}

void ResponseParser::end()
{
    if (m_state != State::Complete)
        m_state = m_state == State::BodyUntilClose ? State::Complete : State::Failed;
}

/** Parses one element; false if more bytes are needed or parsing is over. */
bool ResponseParser::step()
{
    switch (m_state) {
    case State::Head:
        return readHead();
    case State::BodyWithLength:
        return readRemaining(State::Complete);
    case State::BodyUntilClose:
        m_body += std::exchange(m_unread, {});
        return false;
    case State::ChunkSize:
        return readChunkSize();
    case State::Chunk:
        return readRemaining(State::ChunkEnd);
    case State::ChunkEnd: {
        QByteArray line;
        if (!readLine(line))
            return false;
        m_state = State::ChunkSize;
        return line.isEmpty() || fail();
    }
    case State::Trailer:
        return readTrailer();
    case State::Complete:
    case State::Failed:
        m_unread.clear();
        break;
    }
    return false;
}

bool ResponseParser::readHead()
{
    constexpr std::string_view protocol = "HTTP/";
    const auto isLineEnd = [](char character) { return character == '\r' || character == '\n'; };
    m_unread.remove(0, std::find_if_not(m_unread.cbegin(), m_unread.cend(), isLineEnd) - m_unread.cbegin());
    const auto compared = std::min(m_unread.size(), qsizetype(protocol.size()));
    const qsizetype length = headLength(m_unread);
    if (protocol.substr(0, size_t(compared)) != std::string_view(m_unread.constData(), size_t(compared)) ||
        (length < 0 ? m_unread.size() : length) > maxHeadBytes)
        return fail();
    if (length < 0)
        return false;
    const QByteArray head = m_unread.first(length);
    m_unread.remove(0, length);
    return parseHead(head);
}

bool ResponseParser::parseHead(const QByteArray& head)
{
    const QList<QByteArray> lines = head.split('\n');
    const int status = statusOf(lines.first().trimmed());
    if (status <= 0)
        return fail();
    if (status >= firstInterim && status < firstFinal) {
        // An interim response never has a body, whatever its headers say.
        m_interimStatus = status;
        return true;
    }
    m_status = status;
    for (const QByteArray& line : lines.mid(1)) {
        const bool continues = line.startsWith(' ') || line.startsWith('\t');
        const auto colon = line.indexOf(':');
        if (continues && !m_headers.isEmpty())
            m_headers.last().second += ' ' + line.trimmed();
        else if (colon > 0)
            m_headers.append({line.first(colon).trimmed(), line.mid(colon + 1).trimmed()});
    }
    return startBody();
}

bool ResponseParser::startBody()
{
    const QList<QByteArray> lengths = valuesOf(m_headers, "Content-Length");
    if (m_status == noContent || m_status == notModified) {
        m_state = State::Complete;
    } else if (valuesOf(m_headers, "Transfer-Encoding").contains("chunked")) {
        m_state = State::ChunkSize;
    } else if (lengths.isEmpty()) {
        m_state = State::BodyUntilClose;
    } else {
        m_remaining = lengthOf(lengths.first(), 10);
        if (m_remaining < 0 || lengths.count(lengths.first()) != lengths.size())
            return fail();
        m_state = m_remaining == 0 ? State::Complete : State::BodyWithLength;
    }
    return true;
}

bool ResponseParser::readRemaining(State next)
{
    const qsizetype length = std::min(qint64(m_unread.size()), m_remaining);
    m_body += m_unread.first(length);
    m_unread.remove(0, length);
    m_remaining -= length;
    if (m_remaining == 0)
        m_state = next;
    return m_remaining == 0;
}

bool ResponseParser::readChunkSize()
{
    QByteArray line;
    if (!readLine(line))
        return false;
    m_remaining = lengthOf(line.split(';').first().trimmed(), 16);
    if (m_remaining < 0)
        return fail();
    m_state = m_remaining == 0 ? State::Trailer : State::Chunk;
    return true;
}

bool ResponseParser::readTrailer()
{
    QByteArray line;
    if (!readLine(line))
        return false;
    if (line.isEmpty())
        m_state = State::Complete;
    return true;
}

/** Reads one line without its end; false if it is incomplete. A line that is too long makes parsing fail. */
bool ResponseParser::readLine(QByteArray& line)
{
    const auto end = m_unread.indexOf('\n');
    if (end < 0)
        return m_unread.size() > maxHeadBytes && fail();
    line = m_unread.first(end);
    if (line.endsWith('\r'))
        line.chop(1);
    m_unread.remove(0, end + 1);
    return true;
}

/** Always returns false, as no further parsing is possible. */
bool ResponseParser::fail()
{
    m_state = State::Failed;
    m_unread.clear();
    return false;
}

} // namespace quillmere
