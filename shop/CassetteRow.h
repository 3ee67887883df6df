#pragma once

#include "CurrentRowModel.h"
#include "Shelf.h"

namespace quillmere {

/**
 * Cassettes side by side: a list model with their keys, covers and titles, and the title line of a shelf. The
 * caller of setContent() chooses the current row; currentRowIn() finds the row of the same tape. Screen thread only;
 * ShelfList owns the rows of shelves, TapeSearchController that of the results.
 */
class CassetteRow : public quillmere::CurrentRowModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Created in C++ by the list of shelves or the search.")
    Q_PROPERTY(QString name READ name NOTIFY contentChanged FINAL)
    /** The number of covers on the shelf, including those without a tape. */
    Q_PROPERTY(int count READ count NOTIFY contentChanged FINAL)
    Q_PROPERTY(QString caption READ caption NOTIFY contentChanged FINAL)

public:
    enum Role { KeyRole = Qt::UserRole, CoverRole, TitleRole };

    /** The data of a row. A cover of a shelf is included only if its tape is known. */
    struct Content
    {
        Content() = default;
        explicit Content(const Shelf& shelf);
        /** Search results: tapes without a shelf, in the given order, without a title line. */
        explicit Content(const QList<Tape>& tapes);

        QString name;
        QString caption;
        int count = 0;
        QList<VHSCover> covers; ///< of a shelf; empty for search results, whose covers are created on demand
        QList<Tape> tapes;      ///< one per row

        int size() const { return int(tapes.size()); }
        VHSCover cover(int row) const;
        /**
         * The row of a tape, -1 if there is none. If ids are duplicated, `preferredRow` is chosen if it has that id.
         */
        int rowOf(qint64 id, int preferredRow) const;
        /** The row nearest to `row`, -1 if there are no rows. */
        int nearestRow(int row) const { return std::min(row, size() - 1); }
    };

    using CurrentRowModel::CurrentRowModel;

    QString name() const { return m_content.name; }
    int count() const { return m_content.count; }
    QString caption() const { return m_content.caption; }
    const Content& content() const { return m_content; }

    void setContent(Content content, int currentRow);
    /** The current row after a change to `content`: the same tape, else the nearest row. */
    int currentRowIn(const Content& content) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void contentChanged();

private:
    Content m_content;
};

} // namespace quillmere
