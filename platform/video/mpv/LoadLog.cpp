#include "LoadLog.h"

namespace {

// A broken stream may complain without end.
constexpr int mostMessages = 64;

struct Sign
{
    const char* words;
    VideoFailure::Cause cause;
};

// In the order of their weight: a refused certificate is followed by words that fit any lost connection.
constexpr Sign signs[] = {
    {"certificate", VideoFailure::Cause::Certificate},      {"Certificate", VideoFailure::Cause::Certificate},
    {"TLS fatal alert", VideoFailure::Cause::Certificate},  {"Unable to set up TLS", VideoFailure::Cause::Certificate},
    {"protocol version", VideoFailure::Cause::Certificate}, {"Connection refused", VideoFailure::Cause::Refused},
    {"timed out", VideoFailure::Cause::TimedOut},           {"resolve hostname", VideoFailure::Cause::Network},
    {"unreachable", VideoFailure::Cause::Network},          {"No route to host", VideoFailure::Cause::Network},
    {"not on whitelist", VideoFailure::Cause::Unplayable},
};

int statusIn(const QByteArray& message)
{
    constexpr char words[] = "HTTP error ";
    const qsizetype at = message.indexOf(words);
    if (at < 0)
        return 0;
    return message.mid(at + qsizetype(sizeof words) - 1, 3).toInt();
}

} // namespace

void LoadLog::add(const QByteArray& message)
{
    if (m_messages.size() < mostMessages)
        m_messages.append(message.trimmed());
}

VideoFailure LoadLog::failure() const
{
    VideoFailure failure;
    failure.description = QString::fromUtf8(m_messages.join('\n'));
    for (const QByteArray& message : m_messages) {
        if (const int status = statusIn(message)) {
            failure.cause = VideoFailure::Cause::Status;
            failure.httpStatus = status;
            return failure;
        }
    }
    for (const Sign& sign : signs) {
        for (const QByteArray& message : m_messages) {
            if (message.contains(sign.words)) {
                failure.cause = sign.cause;
                return failure;
            }
        }
    }
    return failure;
}
