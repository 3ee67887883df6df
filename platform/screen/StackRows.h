#pragma once

#include <QAbstractItemModel>
#include <QList>
#include <QString>

namespace quillmere {

/**
 * The rows of a model as laid out by a `LazyStack`: their identities, and where they begin and end, in points from the
 * beginning of the stack. A value.
 */
class StackRows
{
public:
    /** Identifies a row independently of its number: by its role "key" and the number of equal keys before it. */
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
        qreal first = 0; ///< where it begins
        qreal last = 0;  ///< where it ends
    };
    /** The numbers of a range of rows; empty if `last` is less than `first`. */
    struct Span
    {
        int first = 0;
        int last = -1;

        bool contains(int row) const { return first <= row && row <= last; }
    };

    StackRows() = default;

    /** Reads `model`, which may be null. `extent` is the length of each row if the model has no role "extent". */
    StackRows(const QAbstractItemModel* model, qreal extent, qreal spacing);

    int count() const { return int(m_rows.size()); }
    const Row& at(int row) const { return m_rows.at(row); }
    qreal length() const { return m_rows.isEmpty() ? 0 : m_rows.constLast().last; }

    /** Sets the length of a row and moves the rows after it. Returns whether the length changed. */
    bool setExtent(int row, qreal extent);

    /** The rows that overlap the range between two points. */
    Span between(qreal from, qreal to) const;

private:
    QList<Row> m_rows;
};

} // namespace quillmere
