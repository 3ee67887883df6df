#include "TapeDetailController.h"

#include "Dressing.h"
#include "TapeDetailTexts.h"

void TapeDetailController::setStore(Store* store)
{
    if (m_store == store)
        return;
    m_store = store;
    Q_EMIT storeChanged();
    readResumePosition();
}

void TapeDetailController::setHub(HubAPI* hub)
{
    if (m_hub == hub)
        return;
    m_hub = hub;
    Q_EMIT hubChanged();
}

// No setter of a tape asks whether it changed: equal tapes may differ in all but their ids.

void TapeDetailController::setTape(Tape tape)
{
    m_tape = std::move(tape);
    show();
}

void TapeDetailController::setPlaying(bool playing)
{
    if (m_playing == playing)
        return;
    m_playing = playing;
    Q_EMIT playingChanged();
    // The player, which goes with that, may have left a new position.
    if (!playing)
        readResumePosition();
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
    readResumePosition();
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
    const CancelToken token = m_tasks.token();
    const qint64 id = m_tape.id;
    auto answer = co_await m_hub->tape(id, token);
    // A record of another tape is as good as none.
    if (token.isCancelled() || !answer || answer->id != id)
        co_return;
    m_detail = *std::move(answer);
    show();
}

void TapeDetailController::show()
{
    m_cover = dress(shownTape());
    m_facts.setFacts(TapeDetailTexts::facts(shownTape(), m_cover));
    readResumePosition();
    Q_EMIT shownTapeChanged();
}

void TapeDetailController::readResumePosition()
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
