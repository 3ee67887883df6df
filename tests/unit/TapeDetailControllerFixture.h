#pragma once

#include "StoreFixture.h"
#include "TapeDetailController.h"

namespace quillmere {

/** Base class of tests that use the controller of a tape's screen, without a window, with a scripted hub. */
class TapeDetailControllerFixture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_shop = std::make_unique<StoreFixture>();
        open();
    }

    void cleanup()
    {
        m_screen.reset();
        m_shop.reset();
        QCoreApplication::processEvents();
    }

protected:
    static Tape ordinary()
    {
        Tape tape;
        tape.id = id;
        tape.title = u"Harbour Council"_s;
        return tape;
    }

    void open(const Tape& tape = ordinary())
    {
        m_screen = std::make_unique<TapeDetailController>();
        m_screen->setProperty("store", QVariant::fromValue(m_shop->store.get()));
        m_screen->setProperty("hub", QVariant::fromValue(&m_shop->hub));
        m_screen->setProperty("tape", QVariant::fromValue(tape));
    }

    static QByteArray fullRecord()
    {
        return R"({"id": 9007199254740993, "title": "Harbour Council, in full", "has_transcript": true,
                   "location": "Town Hall", "documents": [{"title": "Agenda"}]})";
    }

    void appearWithRecord(const QByteArray& record = fullRecord())
    {
        m_screen->appear();
        m_shop->answer(m_path, record);
        QTRY_VERIFY(m_screen->detail());
    }

    QStringList values() const
    {
        QStringList values;
        FactList* const facts = m_screen->facts();
        for (int row = 0; row < facts->rowCount(); ++row)
            values.append(facts->data(facts->index(row), FactList::ValueRole).toString());
        return values;
    }

    std::unique_ptr<StoreFixture> m_shop;
    std::unique_ptr<TapeDetailController> m_screen;
    const QString m_path = u"/api/tv/tape/9007199254740993"_s;
    static constexpr qint64 id = 9007199254740993; // larger than the integers that a double represents exactly
};

} // namespace quillmere
