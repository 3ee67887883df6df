#include "AnswerParser.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace {

constexpr int firstInterim = 100;
constexpr int firstFinal = 200;
constexpr int noContent = 204;
constexpr int notModified = 304;

/** The status code of a line such as "HTTP/1.1 200 OK"; 0 if the line is no status line. */
int statusOf(const QByteArray& line)
{
    constexpr int codeOffset = 9;
    const bool isHttp1 = line.startsWith("HTTP/1.") && line.size() > codeOffset && line.at(codeOffset - 1) == ' ';
    return isHttp1 ? line.mid(codeOffset).split(' ').first().toInt() : 0;
}

/** The values of all headers with this name, in lower case; a header may hold several. */
QList<QByteArray> valuesOf(const QList<AnswerParser::Header>& headers, const char* name)
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

/** The length of the head that the bytes begin with, its blank line included; -1 when it is not all there. */
qsizetype headLength(const QByteArray& bytes)
{
    for (auto lineEnd = bytes.indexOf('\n'); lineEnd >= 0; lineEnd = bytes.indexOf('\n', lineEnd + 1)) {
        // Servers end their lines with either.
        for (const std::string_view blankLine : {"\n", "\r\n"}) {
            const std::string_view rest(bytes.constData() + lineEnd + 1, size_t(bytes.size() - lineEnd - 1));
            if (rest.starts_with(blankLine))
                return lineEnd + 1 + qsizetype(blankLine.size());
        }
    }
    return -1;
}

/** -1 when the text is no length. */
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

void AnswerParser::add(const QByteArray& bytes)
{
    m_unread += bytes;
    while (step()) {
    }
}

void AnswerParser::end()
{
    if (m_state != State::Whole)
        m_state = m_state == State::BodyToTheEnd ? State::Whole : State::Broken;
}

/** Whether it got any further. */
bool AnswerParser::step()
{
    switch (m_state) {
    case State::Head:
        return readHead();
    case State::BodyOfLength:
        return readCounted(State::Whole);
    case State::BodyToTheEnd:
        m_body += std::exchange(m_unread, {});
        return false;
    case State::ChunkSize:
        return readChunkSize();
    case State::Chunk:
        return readCounted(State::ChunkEnd);
    case State::ChunkEnd: {
        QByteArray line;
        if (!readLine(line))
            return false;
        m_state = State::ChunkSize;
        return line.isEmpty() || fail();
    }
    case State::Trailer:
        return readTrailer();
    case State::Whole:
    case State::Broken:
        m_unread.clear();
        break;
    }
    return false;
}

bool AnswerParser::readHead()
{
    constexpr std::string_view protocol = "HTTP/";
    const auto isLineEnd = [](char character) { return character == '\r' || character == '\n'; };
    m_unread.remove(0, std::find_if_not(m_unread.cbegin(), m_unread.cend(), isLineEnd) - m_unread.cbegin());
    const auto known = std::min(m_unread.size(), qsizetype(protocol.size()));
    const qsizetype length = headLength(m_unread);
    if (protocol.substr(0, size_t(known)) != std::string_view(m_unread.constData(), size_t(known)) ||
        (length < 0 ? m_unread.size() : length) > longestHead)
        return fail();
    if (length < 0)
        return false;
    const QByteArray head = m_unread.first(length);
    m_unread.remove(0, length);
    return parseHead(head);
}

bool AnswerParser::parseHead(const QByteArray& head)
{
    const QList<QByteArray> lines = head.split('\n');
    const int status = statusOf(lines.first().trimmed());
    if (status <= 0)
        return fail();
    if (status >= firstInterim && status < firstFinal) {
        // It has no body, whatever its headers say.
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

bool AnswerParser::startBody()
{
    const QList<QByteArray> lengths = valuesOf(m_headers, "Content-Length");
    if (m_status == noContent || m_status == notModified) {
        m_state = State::Whole;
    } else if (valuesOf(m_headers, "Transfer-Encoding").contains("chunked")) {
        m_state = State::ChunkSize;
    } else if (lengths.isEmpty()) {
        m_state = State::BodyToTheEnd;
    } else {
        m_left = lengthOf(lengths.first(), 10);
        if (m_left < 0 || lengths.count(lengths.first()) != lengths.size())
            return fail();
        m_state = m_left == 0 ? State::Whole : State::BodyOfLength;
    }
    return true;
}

bool AnswerParser::readCounted(State next)
{
    const qsizetype length = std::min(qint64(m_unread.size()), m_left);
    m_body += m_unread.first(length);
    m_unread.remove(0, length);
    m_left -= length;
    if (m_left == 0)
        m_state = next;
    return m_left == 0;
}

bool AnswerParser::readChunkSize()
{
    QByteArray line;
    if (!readLine(line))
        return false;
    m_left = lengthOf(line.split(';').first().trimmed(), 16);
    if (m_left < 0)
        return fail();
    m_state = m_left == 0 ? State::Trailer : State::Chunk;
    return true;
}

bool AnswerParser::readTrailer()
{
    QByteArray line;
    if (!readLine(line))
        return false;
    if (line.isEmpty())
        m_state = State::Whole;
    return true;
}

/** Whether a whole line is there. One that is too long fails the answer. */
bool AnswerParser::readLine(QByteArray& line)
{
    const auto end = m_unread.indexOf('\n');
    if (end < 0)
        return m_unread.size() > longestHead && fail();
    line = m_unread.first(end);
    if (line.endsWith('\r'))
        line.chop(1);
    m_unread.remove(0, end + 1);
    return true;
}

/** False, as nothing can be read any more. */
bool AnswerParser::fail()
{
    m_state = State::Broken;
    m_unread.clear();
    return false;
}
