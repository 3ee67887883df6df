#pragma once

#include "CassetteRow.h"
#include "Store.h"
#include "TapePath.h"

namespace quillmere {

/**
 * State and texts of the tape search: the query, and the results of the search that finished last. Screen thread only;
 * the screen creates and owns it; the store is set once and must outlive it. Its destructor cancels its searches.
 */
class TapeSearchController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillmere::Store* store MEMBER m_store NOTIFY storeChanged REQUIRED FINAL)
    /** The text as typed; typing alone does not start a search. */
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged FINAL)
    /** Whether a search has finished; whether one is running: of overlapping ones, until the first finishes. */
    Q_PROPERTY(bool searched READ hasSearched NOTIFY outcomeChanged FINAL)
    Q_PROPERTY(bool busy READ isBusy NOTIFY outcomeChanged FINAL)
    /** The tapes found, in the hub's order, with the current row. */
    Q_PROPERTY(quillmere::CassetteRow* cassettes READ cassettes CONSTANT FINAL)

    /** What is shown below the field; at most one of these and `busy` is true. */
    Q_PROPERTY(bool showsResults READ showsResults NOTIFY outcomeChanged FINAL)
    Q_PROPERTY(bool showsNoMatch READ showsNoMatch NOTIFY outcomeChanged FINAL)
    Q_PROPERTY(QString countLine READ countLine NOTIFY outcomeChanged FINAL)
    Q_PROPERTY(QString noMatchLine READ noMatchLine NOTIFY queryChanged FINAL)

    /** The tapes opened from the results. */
    Q_PROPERTY(quillmere::TapePath* path READ path CONSTANT FINAL)

public:
    using QObject::QObject;

    const QString& query() const { return m_query; }
    void setQuery(QString query);
    const QList<Tape>& results() const { return m_cassettes.content().tapes; }
    bool hasSearched() const { return m_searched; }
    bool isBusy() const { return m_busy; }

    CassetteRow* cassettes() { return &m_cassettes; }
    bool showsResults() const { return !m_busy && m_searched && !results().isEmpty(); }
    bool showsNoMatch() const { return !m_busy && m_searched && results().isEmpty(); }
    QString countLine() const;
    QString noMatchLine() const;
    TapePath* path() { return &m_path; }

    /**
     * Searches for the query without leading and trailing white space; does nothing if that is empty. Searches may
     * overlap: each shows its results when it finishes. A failed search has no results.
     */
    Q_INVOKABLE void search();

    /** The screen was hidden: cancels the searches. */
    Q_INVOKABLE void disappear();

Q_SIGNALS:
    void storeChanged();
    void queryChanged();
    void outcomeChanged();

private:
    QCoro::Task<> find(QString words);
    void showResults(const QList<Tape>& found);

    Store* m_store = nullptr;
    QString m_query;
    bool m_searched = false;
    bool m_busy = false;
    CassetteRow m_cassettes;
    TapePath m_path;
    TaskScope m_tasks;
};

} // namespace quillmere
