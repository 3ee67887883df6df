#pragma once

#include "Store.h"

#include <QVariant>

namespace quillmere {

using namespace Qt::StringLiterals;

/**
 * Records a store's changes: the field and its new value. A change without a preceding objectWillChange() is recorded
 * as "unannounced", an objectWillChange() as "will" until its change follows, and as "late" if its change came before.
 */
class Announcements : public QObject
{
    Q_OBJECT

public:
    explicit Announcements(const Store& store) : m_store(store), m_lastValues(currentValues())
    {
        connect(&store, &Store::objectWillChange, this,
                [this] { received.append(currentValues() == m_lastValues ? u"will"_s : u"late"_s); });
        connect(&store, &Store::statusChanged, this, [this] { record(u"status"_s, m_store.status().rewindery.tapes); });
        connect(&store, &Store::tapesChanged, this, [this] { record(u"tapes"_s, m_store.tapes().size()); });
        connect(&store, &Store::shelvesChanged, this, [this] { record(u"shelves"_s, m_store.shelves().size()); });
        connect(&store, &Store::isLoadingChanged, this, [this] { record(u"isLoading"_s, m_store.isLoading()); });
        connect(&store, &Store::hasLoadedOnceChanged, this,
                [this] { record(u"hasLoadedOnce"_s, m_store.hasLoadedOnce()); });
        connect(&store, &Store::lastErrorChanged, this,
                [this] { record(u"lastError"_s, m_store.lastError().value_or(u"-"_s)); });
        connect(&store, &Store::marketChanged, this, [this] { record(u"market"_s, m_store.market()); });
    }

    QStringList received;

private:
    void record(const QString& field, const QVariant& value)
    {
        const bool isAnnounced = !received.isEmpty() && received.constLast() == u"will"_s;
        if (isAnnounced)
            received.removeLast();
        received.append((isAnnounced ? u""_s : u"unannounced "_s) + field + u'=' + value.toString());
        m_lastValues = currentValues();
    }

    QVariantList currentValues() const
    {
        QVariantList all{
            m_store.status().rewindery.tapes, m_store.shelves().size(), m_store.isLoading(), m_store.hasLoadedOnce(),
            m_store.lastErrorText(),          m_store.hasError(),       m_store.market()};
        for (const Tape& tape : m_store.tapes())
            all.append(tape.title);
        return all;
    }

    const Store& m_store;
    QVariantList m_lastValues;
};

} // namespace quillmere
