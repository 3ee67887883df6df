#include "TranscriptController.h"

#include "Reflow.h"
#include "ShortenedText.h"
#include "TranscriptTexts.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype shortestParagraph = 420; // characters
constexpr qsizetype longestPassage = 20'000; // UTF-16 units: about fifty milliseconds of laying out

QStringList passagesOf(const QString& transcript)
{
    return Reflow::passages(Reflow::paragraphs(transcript.trimmed(), shortestParagraph), longestPassage);
}

} // namespace

void TranscriptController::setHub(HubAPI* hub)
{
    if (m_hub == hub)
        return;
    m_hub = hub;
    Q_EMIT hubChanged();
}

void TranscriptController::setCover(VHSCover cover)
{
    m_cover = std::move(cover);
    Q_EMIT coverChanged();
}

QString TranscriptController::caption() const
{
    return TranscriptTexts::caption(m_cover);
}

QString TranscriptController::title() const
{
    return shortenedText(m_cover.title);
}

QString TranscriptController::wordCount() const
{
    return TranscriptTexts::wordCount(m_words);
}

void TranscriptController::appear()
{
    m_tasks.cancel();
    load();
}

void TranscriptController::disappear()
{
    m_tasks.cancel();
}

QCoro::Task<> TranscriptController::load()
{
    const CancelToken token = m_tasks.token();
    if (!m_tape.hasTranscript) {
        show(Empty, TranscriptTexts::noneHarvested());
        co_return;
    }
    const auto answer = co_await m_hub->transcript(m_tape.id, token);
    if (token.isCancelled())
        co_return;
    if (!answer) {
        show(Empty, TranscriptTexts::outOfReach(answer.error().errorDescription()));
        co_return;
    }
    // An answer that is no transcript has no text to be shown.
    const QString text = answer->status == "archived"_L1 ? answer->text : QString();
    // Awaited by name: GCC 12 destroys what a lambda within an awaited expression holds once too often.
    const auto reflow = m_reflow.run([text] { return passagesOf(text); });
    QStringList passages = co_await reflow;
    if (token.isCancelled())
        co_return;
    if (passages.isEmpty()) {
        show(Empty, TranscriptTexts::noneHarvested());
        co_return;
    }
    m_words = answer->words;
    m_passages.setPassages(std::move(passages));
    show(Ready);
}

void TranscriptController::show(LoadState state, const QString& message)
{
    m_state = state;
    m_message = message;
    Q_EMIT stateChanged();
}
