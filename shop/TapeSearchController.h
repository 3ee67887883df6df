#pragma once

#include "CassetteRow.h"
#include "Store.h"
#include "TapePath.h"

/**
 * The tape search's state and texts: what the viewer has typed, and what the last search to end has found. Screen thread
 * only; the screen makes and owns it; the store, set once when it is made, outlives it. Its searches end with it.
 */
class TapeSearchController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Store* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
    /** As typed; typing alone searches nothing. */
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged FINAL)
    /** Whether any search has ended; whether one is under way, as the viewer is told: until the first of several ends. */
    Q_PROPERTY(bool searched READ hasSearched NOTIFY outcomeChanged FINAL)
    Q_PROPERTY(bool busy READ isBusy NOTIFY outcomeChanged FINAL)
    /** The found tapes in the hub's order, as a row with the viewer's place in it. */
    Q_PROPERTY(CassetteRow* cassettes READ cassettes CONSTANT FINAL)

    /** What stands under the field: at most one of these and the sign that a search is under way. */
    Q_PROPERTY(bool showsResults READ showsResults NOTIFY outcomeChanged FINAL)
    Q_PROPERTY(bool showsNoMatch READ showsNoMatch NOTIFY outcomeChanged FINAL)
    Q_PROPERTY(QString countLine READ countLine NOTIFY outcomeChanged FINAL)
    Q_PROPERTY(QString noMatchLine READ noMatchLine NOTIFY queryChanged FINAL)

    /** The tapes opened from the results. */
    Q_PROPERTY(TapePath* path READ path CONSTANT FINAL)

public:
    using QObject::QObject;

    Store* store() const { return m_store; }
    void setStore(Store* store);
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
     * The viewer submits the query. Its outer white space is not searched for, and nothing happens when that is all there
     * is. Nothing keeps searches from overlapping: each shows what it found when it ends, and a failure is nothing found.
     */
    Q_INVOKABLE void search();

    /** The screen goes away: its searches end. */
    Q_INVOKABLE void leave();

Q_SIGNALS:
    void storeChanged();
    void queryChanged();
    void outcomeChanged();

private:
    QCoro::Task<> find(QString words);
    void show(const QList<Tape>& found);

    Store* m_store = nullptr;
    QString m_query;
    bool m_searched = false;
    bool m_busy = false;
    CassetteRow m_cassettes;
    TapePath m_path;
    TaskScope m_tasks;
};
