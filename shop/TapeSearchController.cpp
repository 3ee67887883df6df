#include "TapeSearchController.h"

#include "TapeSearchTexts.h"

namespace quillmere {

void TapeSearchController::setQuery(QString query)
{
    if (query == m_query)
        return;
    m_query = std::move(query);
    Q_EMIT queryChanged();
}

QString TapeSearchController::countLine() const
{
    return TapeSearchTexts::countLine(results().size());
}

QString TapeSearchController::noMatchLine() const
{
    return TapeSearchTexts::noMatchLine(m_query);
}

void TapeSearchController::search()
{
    const QString words = m_query.trimmed();
    if (words.isEmpty())
        return;
    m_busy = true;
    Q_EMIT outcomeChanged();
    find(words);
}

void TapeSearchController::disappear()
{
    m_tasks.cancel();
}

QCoro::Task<> TapeSearchController::find(QString words)
{
    const std::stop_token token = m_tasks.token();
    const QList<Tape> found = co_await m_store->search(words, token);
    if (!token.stop_requested())
        showResults(found);
}

void TapeSearchController::showResults(const QList<Tape>& found)
{
    CassetteRow::Content content(found);
    // If no longer busy, an overlapping search has already shown results, and the viewer may be in the row.
    const int currentRow = m_busy ? -1 : m_cassettes.currentRowIn(content);
    m_cassettes.setContent(std::move(content), currentRow);
    m_searched = true;
    m_busy = false;
    Q_EMIT outcomeChanged();
}

} // namespace quillmere
