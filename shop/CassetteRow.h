#pragma once

#include "PlacedListModel.h"
#include "Shelf.h"

/**
 * Cassettes side by side, as rows with their keys, covers and titles, and for a shelf its title line. It outlives a change
 * of them and then keeps the viewer's place among them. Screen thread only; the ShelfList makes and owns those of shelves.
 */
class CassetteRow : public PlacedListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Whoever has the tapes makes their row.")
    Q_PROPERTY(QString name READ name NOTIFY contentChanged FINAL)
    /** The number of covers on the shelf, those without a tape included. */
    Q_PROPERTY(int count READ count NOTIFY contentChanged FINAL)
    Q_PROPERTY(QString caption READ caption NOTIFY contentChanged FINAL)

public:
    enum Role { KeyRole = Qt::UserRole, CoverRole, TitleRole };

    /** What a shelf comes to: only a cover that has its tape stands in the row. */
    struct Content
    {
        Content() = default;
        explicit Content(const Shelf& shelf);
        /** Tapes that stand on no shelf, in their order, without a title line. */
        explicit Content(const QList<Tape>& loose);

        QString name;
        QString caption;
        int count = 0;
        QList<VHSCover> covers; ///< a shelf's; loose tapes are dressed as they are asked for, as there may be thousands
        QList<Tape> tapes;      ///< one for each row

        int size() const { return int(tapes.size()); }
        VHSCover cover(int row) const;
        /** The row of a tape, `likely` where it stands there; -1 when it does not stand here. */
        int rowOf(qint64 id, int likely) const;
        /** The row nearest to `row`, -1 when there is none. */
        int nearest(int row) const { return std::min(row, size() - 1); }
    };

    using PlacedListModel::PlacedListModel;

    QString name() const { return m_content.name; }
    int count() const { return m_content.count; }
    QString caption() const { return m_content.caption; }
    const Content& content() const { return m_content; }

    void show(Content content, int place);
    /** The place that the viewer has once `content` is shown: on the same tape, else as near as can be. */
    int placeIn(const Content& content) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void contentChanged();

private:
    Content m_content;
};
