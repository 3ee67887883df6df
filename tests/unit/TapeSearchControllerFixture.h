#pragma once

#include "StoreFixture.h"
#include "TapeSearchController.h"

namespace quillmere {

/** Base class of tests that use the tape search without a window, with a scripted hub. */
class TapeSearchControllerFixture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<StoreFixture>();
        m_screen = std::make_unique<TapeSearchController>();
        m_screen->setProperty("store", QVariant::fromValue<Store*>(m_fixture->store.get()));
    }

    void cleanup()
    {
        m_screen.reset();
        m_fixture.reset();
        QCoreApplication::processEvents();
    }

protected:
    static QString request(const QString& query) { return u"/api/tv/tapes?page=1&per_page=200&q="_s + query; }

    void search(const QString& query)
    {
        m_screen->setQuery(query);
        m_screen->search();
    }

    /** Searches, and waits until tapes with these titles are shown. */
    void find(const QString& query, const QStringList& titles)
    {
        search(query);
        m_fixture->answerTapes(titles, request(query));
        QTRY_VERIFY(m_screen->showsResults());
    }

    QStringList found() const
    {
        QStringList titles;
        for (const Tape& tape : m_screen->results())
            titles.append(tape.title);
        return titles;
    }

    std::unique_ptr<StoreFixture> m_fixture;
    std::unique_ptr<TapeSearchController> m_screen;
};

} // namespace quillmere
