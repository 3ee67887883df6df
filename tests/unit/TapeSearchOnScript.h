#pragma once

#include "StoreOnScript.h"
#include "TapeSearchController.h"

/** The tape search without a window, on a store whose hub answers when and what the test says. */
class TapeSearchOnScript : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_house = std::make_unique<StoreOnScript>();
        m_screen = std::make_unique<TapeSearchController>();
        m_screen->setStore(m_house->store.get());
    }

    void cleanup()
    {
        m_screen.reset();
        m_house.reset();
        QCoreApplication::processEvents();
    }

protected:
    static QString request(const QString& query) { return u"/api/tv/tapes?page=1&per_page=200&q="_s + query; }

    void search(const QString& query)
    {
        m_screen->setQuery(query);
        m_screen->search();
    }

    QStringList found() const
    {
        QStringList titles;
        for (const Tape& tape : m_screen->results())
            titles.append(tape.title);
        return titles;
    }

    std::unique_ptr<StoreOnScript> m_house;
    std::unique_ptr<TapeSearchController> m_screen;
};
