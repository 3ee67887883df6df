#pragma once

#include "CurrentRowModel.h"
#include "TVStatus.h"

#include <QFont>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/**
 * The chips of the market picker: one for all markets, then one for each of the first 500. The list is empty if there
 * are fewer than two markets. The current row starts at the selected market, and returns there with every change while
 * the focus is elsewhere. Screen thread only; RewinderyController owns it; the application object must outlive it,
 * because chips are measured with fonts.
 */
class MarketList : public quillmere::CurrentRowModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Created by RewinderyController.")
    Q_PROPERTY(bool isShown READ isShown NOTIFY isShownChanged FINAL)

    /** Layout of a chip: padding, title, gap, count, padding; lengths in points. */
    Q_PROPERTY(QFont titleFont READ titleFont CONSTANT FINAL)
    Q_PROPERTY(QFont countFont READ countFont CONSTANT FINAL)
    Q_PROPERTY(int padding READ padding CONSTANT FINAL)
    Q_PROPERTY(int gap READ gap CONSTANT FINAL)

public:
    enum Role { KeyRole = Qt::UserRole, TitleRole, CountRole, SelectedRole, ExtentRole };

    static QFont titleFont();
    static QFont countFont();
    static constexpr int padding() { return 22; }
    static constexpr int gap() { return 10; }
    static constexpr int maxTitleWidth = 480;    ///< points; a wider title is elided
    static constexpr int maxTitleLength = 120;   ///< UTF-16 units; more than fit into maxTitleWidth
    static constexpr qsizetype maxMarkets = 500; ///< nobody scrolls past more, and measuring a chip takes time

    using CurrentRowModel::CurrentRowModel;

    /** Shows the markets of `summary`; `selection` is the slug of the selected market, empty for all. */
    void setMarkets(const CatalogSummary& summary, const QString& selection);

    bool isShown() const { return !m_chips.isEmpty(); }
    /** The slug of a chip's market, empty for all markets. */
    QString slugAt(int chip) const { return m_chips.at(chip).slug; }

    /** The viewer selected a chip. */
    Q_INVOKABLE void pick(int chip);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void isShownChanged();
    void picked(const QString& slug);

private:
    struct Chip
    {
        QString slug;
        QString title;
        QString count;
        int extent; ///< points
    };

    static QList<Chip> createChips(const CatalogSummary& summary);
    void setSelection(const QString& selection);
    void setChips(QList<Chip> chips);
    int currentRowIn(const QList<Chip>& chips) const;
    static int rowOf(const QString& slug, const QList<Chip>& chips);

    CatalogSummary m_summary; ///< what the chips show; at most maxMarkets markets
    QString m_selection;
    QList<Chip> m_chips;
};

} // namespace quillmere
