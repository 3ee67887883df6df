#pragma once

#include <QAbstractItemModel>
#include <QList>
#include <QString>

/**
 * The rows of a model as a `LazyStack` lays them out: what tells each from the others, and where it begins and ends, in
 * points from the beginning of the stack. A value.
 */
class StackRows
{
public:
    /** Which row it is, whatever its number: by role "key", and by how many rows before it have the same one. */
    struct Identity
    {
        QString key;
        int occurrence = 0;

        bool operator==(const Identity& other) const { return occurrence == other.occurrence && key == other.key; }
        friend size_t qHash(const Identity& identity, size_t seed = 0)
        {
            return qHashMulti(seed, identity.key, identity.occurrence);
        }
    };
    struct Row
    {
        Identity identity;
        qreal first = 0;
        qreal last = 0;
    };
    /** Rows that follow on each other; none while `last` is smaller than `first`. */
    struct Span
    {
        int first = 0;
        int last = -1;

        bool contains(int row) const { return first <= row && row <= last; }
    };

    StackRows() = default;

    /** Reads a model, which may be null; a row is `extent` long where the model has no role "extent". */
    StackRows(const QAbstractItemModel* model, qreal extent, qreal spacing);

    int count() const { return int(m_rows.size()); }
    const Row& at(int row) const { return m_rows.at(row); }
    qreal length() const { return m_rows.isEmpty() ? 0 : m_rows.constLast().last; }

    /** Makes a row this long, and moves those after it; answers whether it was of another length. */
    bool setExtent(int row, qreal extent);

    /** The rows of which something lies between two points. */
    Span between(qreal first, qreal last) const;

private:
    QList<Row> m_rows;
};
