#include "MpvCore.h"

#include "Logging.h"

#include <utility>

// What libmpv tells, and what becomes of it.

void MpvCore::take(const mpv_event& event)
{
    switch (event.event_id) {
    case MPV_EVENT_START_FILE:
        m_started = static_cast<const mpv_event_start_file*>(event.data)->playlist_entry_id == m_entry;
        break;
    case MPV_EVENT_END_FILE:
        takeEndOfFile(*static_cast<const mpv_event_end_file*>(event.data));
        break;
    case MPV_EVENT_HOOK:
        if (m_started) {
            m_properties.updateStart(m_mpv);
            m_properties.takeDuration(m_mpv);
            m_properties.takeSeekable(m_mpv);
        }
        mpv_hook_continue(m_mpv, static_cast<const mpv_event_hook*>(event.data)->id);
        break;
    case MPV_EVENT_COMMAND_REPLY:
    case MPV_EVENT_SEEK:
        takeSeek(event);
        break;
    case MPV_EVENT_PLAYBACK_RESTART:
        m_pictureDue = true;
        break;
    case MPV_EVENT_PROPERTY_CHANGE:
        if (m_started)
            m_properties.changed(event.reply_userdata, *static_cast<const mpv_event_property*>(event.data));
        break;
    case MPV_EVENT_LOG_MESSAGE:
        takeMessage(*static_cast<const mpv_event_log_message*>(event.data));
        break;
    default:
        break;
    }
}

void MpvCore::takeEndOfFile(const mpv_event_end_file& end)
{
    if (end.playlist_entry_id != m_entry || end.reason == MPV_END_FILE_REASON_STOP)
        return;
    m_opening = false;
    m_started = false;
    // The messages that tell why come after it.
    m_ended = end;
}

void MpvCore::reportEnd(const mpv_event_end_file& end)
{
    VideoFailure failure = m_log.failure();
    const bool isUnexplained = failure.cause == VideoFailure::Cause::Unknown;
    // Once it has played, what the messages tell may be a trouble long past.
    if (end.reason == MPV_END_FILE_REASON_EOF && (isUnexplained || m_properties.isPictureShown())) {
        m_listener.post([load = m_load](VideoEngineListener& listener) { listener.endOfFile(load); });
        return;
    }
    const bool strange = end.error == MPV_ERROR_UNKNOWN_FORMAT || end.error == MPV_ERROR_NOTHING_TO_PLAY;
    if (isUnexplained && strange)
        failure.cause = VideoFailure::Cause::Unplayable;
    m_listener.post([load = m_load, failure](VideoEngineListener& listener) { listener.loadFailed(load, failure); });
}

// A picture that comes before the library has begun this seek is still that of one before it.
void MpvCore::takeSeek(const mpv_event& event)
{
    const bool isReply = event.event_id == MPV_EVENT_COMMAND_REPLY;
    if (isReply && m_seek.step == SeekStep::Asked && event.reply_userdata == uint64_t(m_seek.number)) {
        m_seek.step = SeekStep::Taken;
        if (event.error < 0)
            finishSeek();
    } else if (!isReply && m_seek.step == SeekStep::Taken) {
        m_seek.step = SeekStep::Begun;
        m_pictureDue = false;
    }
}

void MpvCore::takePicture()
{
    if (!m_started)
        return;
    m_opening = false;
    if (!m_properties.isPictureShown()) {
        m_properties.showPicture(m_mpv);
        MpvProperties::logDecoders(m_mpv);
    }
    if (m_seek.step == SeekStep::Begun)
        finishSeek();
}

void MpvCore::takeMessage(const mpv_event_log_message& message)
{
    const char* const text = message.text;
    qCInfo(logVideo).noquote().nospace() << message.prefix << ": "
                                         << logging::withoutQueries(QString::fromUtf8(text).trimmed());
    m_log.add(text);
    if (m_skippedData || !LoadLog::tellsOfSkippedData(text))
        return;
    m_skippedData = true;
    m_listener.post([load = m_load](VideoEngineListener& listener) { listener.dataSkipped(load); });
}

void MpvCore::finishSeek()
{
    m_properties.finishSeek(m_mpv, m_seek.number);
    m_seek = {};
}
