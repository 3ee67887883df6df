#include "TapeSearchController.h"

#include "TapeSearchTexts.h"

void TapeSearchController::setStore(Store* store)
{
    if (m_store == store)
        return;
    m_store = store;
    Q_EMIT storeChanged();
}

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

void TapeSearchController::leave()
{
    m_tasks.cancel();
}

QCoro::Task<> TapeSearchController::find(QString words)
{
    const CancelToken token = m_tasks.token();
    const QList<Tape> found = co_await m_store->search(words, token);
    if (!token.isCancelled())
        show(found);
}

void TapeSearchController::show(const QList<Tape>& found)
{
    CassetteRow::Content content(found);
    // What came from an earlier search may have drawn the viewer into the row already; else he begins it anew.
    const int place = m_busy ? -1 : m_cassettes.placeIn(content);
    m_cassettes.show(std::move(content), place);
    m_searched = true;
    m_busy = false;
    Q_EMIT outcomeChanged();
}
