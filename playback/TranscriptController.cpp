#include "TranscriptController.h"

#include "Reflow.h"
#include "Text.h"
#include "TranscriptTexts.h"

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr qsizetype minParagraphLength = 420;  // grapheme clusters
constexpr qsizetype maxPassageLength = 20'000; // UTF-16 units; takes about 50 ms to lay out

QStringList passagesOf(const QString& transcript)
{
    return Reflow::passages(Reflow::paragraphs(transcript.trimmed(), minParagraphLength), maxPassageLength);
}

} // namespace

void PassageList::setPassages(QStringList passages)
{
    reset(-1, [&] { m_passages = std::move(passages); });
}

int PassageList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_passages.size());
}

QVariant PassageList::data(const QModelIndex& index, int role) const
{
    return role == TextRole && checkIndex(index, CheckIndexOption::IndexIsValid) ? m_passages.at(index.row())
                                                                                 : QVariant();
}

QHash<int, QByteArray> PassageList::roleNames() const
{
    return {{TextRole, "text"}};
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
    const std::stop_token token = m_tasks.token();
    if (!m_tape.hasTranscript) {
        setState(Empty, TranscriptTexts::noneHarvested());
        co_return;
    }
    const auto answer = co_await m_hub->transcript(m_tape.id, token);
    if (token.stop_requested())
        co_return;
    if (!answer) {
        setState(Empty, TranscriptTexts::outOfReach(answer.error().errorDescription()));
        co_return;
    }
    // Only an archived transcript has a text to show.
    const QString text = answer->status == "archived"_L1 ? answer->text : QString();
    // A named variable: GCC 12 destroys the captures of a lambda inside a co_await expression twice.
    const auto reflow = m_reflow.run([text] { return passagesOf(text); });
    QStringList passages = co_await reflow;
    if (token.stop_requested())
        co_return;
    if (passages.isEmpty()) {
        setState(Empty, TranscriptTexts::noneHarvested());
        co_return;
    }
    m_words = answer->words;
    m_passages.setPassages(std::move(passages));
    setState(Ready);
}

void TranscriptController::setState(LoadState state, const QString& message)
{
    m_state = state;
    m_message = message;
    Q_EMIT stateChanged();
}

} // namespace quillmere
