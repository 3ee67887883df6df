#include "TapeDetailController.h"

#include "Dressing.h"
#include "TapeDetailTexts.h"

namespace quillmere {

void TapeDetailController::setStore(Store* store)
{
    if (m_store == store)
        return;
    m_store = store;
    Q_EMIT storeChanged();
    updateResumePosition();
}

// Does not return early for an equal tape: tapes with equal ids are equal, whatever their other members.
void TapeDetailController::setTape(Tape tape)
{
    m_tape = std::move(tape);
    updateShownTape();
}

void TapeDetailController::setPlaying(bool playing)
{
    if (m_playing == playing)
        return;
    m_playing = playing;
    Q_EMIT playingChanged();
    // The player, which is destroyed by this change, may have stored a new position.
    if (!playing)
        updateResumePosition();
}

void TapeDetailController::setReadingTranscript(bool readingTranscript)
{
    if (m_readingTranscript == readingTranscript)
        return;
    m_readingTranscript = readingTranscript;
    Q_EMIT readingTranscriptChanged();
}

QString TapeDetailController::title() const
{
    return TapeDetailTexts::title(m_cover);
}

QString TapeDetailController::genreBadge() const
{
    return m_cover.genre;
}

QString TapeDetailController::ratingBadge() const
{
    return m_cover.rating.code;
}

QString TapeDetailController::runtimeBadge() const
{
    return TapeDetailTexts::runtimeBadge(m_cover);
}

QString TapeDetailController::speedBadge() const
{
    return TapeDetailTexts::speedBadge(m_cover);
}

QString TapeDetailController::agendaBadge() const
{
    return TapeDetailTexts::agendaBadge(m_cover);
}

QString TapeDetailController::tagline() const
{
    return TapeDetailTexts::tagline(m_cover);
}

QString TapeDetailController::synopsis() const
{
    return TapeDetailTexts::synopsis(m_cover);
}

QString TapeDetailController::catalogueLine() const
{
    return TapeDetailTexts::catalogueLine(m_cover);
}

QString TapeDetailController::playText() const
{
    return TapeDetailTexts::play(m_resumePosition);
}

void TapeDetailController::appear()
{
    m_tasks.cancel();
    updateResumePosition();
    fetch();
}

void TapeDetailController::disappear()
{
    m_tasks.cancel();
}

void TapeDetailController::play()
{
    playFrom(m_resumePosition);
}

void TapeDetailController::startOver()
{
    playFrom(0);
}

void TapeDetailController::readTranscript()
{
    setReadingTranscript(true);
}

QCoro::Task<> TapeDetailController::fetch()
{
    const std::stop_token token = m_tasks.token();
    const qint64 id = m_tape.id;
    auto answer = co_await m_hub->tape(id, token);
    // A record of another tape is ignored.
    if (token.stop_requested() || !answer || answer->id != id)
        co_return;
    m_detail = *std::move(answer);
    updateShownTape();
}

void TapeDetailController::updateShownTape()
{
    m_cover = dress(shownTape());
    m_facts.setFacts(TapeDetailTexts::facts(shownTape(), m_cover));
    updateResumePosition();
    Q_EMIT shownTapeChanged();
}

void TapeDetailController::updateResumePosition()
{
    const double position = m_store ? m_store->resumePosition(shownTape().id) : 0;
    if (position == m_resumePosition)
        return;
    m_resumePosition = position;
    Q_EMIT resumePositionChanged();
}

void TapeDetailController::playFrom(double seconds)
{
    m_startAt = seconds;
    Q_EMIT startAtChanged();
    setPlaying(true);
}

} // namespace quillmere
