#include "LoadLog.h"

namespace quillmere {

namespace {

// A broken stream may cause messages without end.
constexpr int maxMessages = 64;

struct Pattern
{
    const char* text;
    VideoFailure::Cause cause;
};

// The first match counts: a refused certificate also causes messages that fit any lost connection.
constexpr Pattern patterns[] = {
    {"certificate", VideoFailure::Cause::Certificate},      {"Certificate", VideoFailure::Cause::Certificate},
    {"TLS fatal alert", VideoFailure::Cause::Certificate},  {"Unable to set up TLS", VideoFailure::Cause::Certificate},
    {"protocol version", VideoFailure::Cause::Certificate}, {"Connection refused", VideoFailure::Cause::Refused},
    {"timed out", VideoFailure::Cause::TimedOut},           {"resolve hostname", VideoFailure::Cause::Network},
    {"unreachable", VideoFailure::Cause::Network},          {"No route to host", VideoFailure::Cause::Network},
    {"not on whitelist", VideoFailure::Cause::Unplayable},
};

int statusIn(const QByteArray& message)
{
    constexpr char prefix[] = "HTTP error ";
    const qsizetype index = message.indexOf(prefix);
    if (index < 0)
        return 0;
    return message.mid(index + qsizetype(sizeof prefix) - 1, 3).toInt();
}

} // namespace

void LoadLog::add(const QByteArray& message)
{
    if (m_messages.size() < maxMessages)
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
    for (const Pattern& pattern : patterns) {
        for (const QByteArray& message : m_messages) {
            if (message.contains(pattern.text)) {
                failure.cause = pattern.cause;
                return failure;
            }
        }
    }
    return failure;
}

} // namespace quillmere
