#pragma once

#include "CatalogSummary.h"
#include "PlacedListModel.h"

#include <QFont>
#include <QtQml/qqmlregistration.h>

/**
 * The chips of the market picker: one for all markets, then one for each of the first 500. There are none while there
 * are not at least two markets to choose from. The viewer's place begins at the chosen market, and whatever changes
 * while the focus is elsewhere brings it back there. Screen thread only; the controller owns it; the application object
 * outlives it, as the chips are measured by their fonts.
 */
class MarketList : public PlacedListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shop's controller makes it.")
    Q_PROPERTY(bool isShown READ isShown NOTIFY isShownChanged FINAL)

    /** How a chip is set: its title, a gap and its count, with padding before and after; lengths in points. */
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
    static constexpr int widestTitle = 480;       ///< points; a longer one is elided
    static constexpr int longestTitle = 120;      ///< UTF-16 units, more than fit into the widest
    static constexpr qsizetype mostMarkets = 500; ///< nobody walks past more, and every chip costs its measuring

    using PlacedListModel::PlacedListModel;

    /** Shows the markets of `summary`; `selection` is the slug of the chosen one, empty for all. */
    void show(const CatalogSummary& summary, const QString& selection);

    bool isShown() const { return !m_chips.isEmpty(); }
    /** The market of a chip: its slug, empty for all markets. */
    QString slugAt(int chip) const { return m_chips.at(chip).slug; }

    /** The viewer chooses a chip's market. */
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

    static QList<Chip> chipsOf(const CatalogSummary& summary);
    void setSelection(const QString& selection);
    void setChips(QList<Chip> chips);
    int placeAmong(const QList<Chip>& chips) const;
    static int chipOf(const QString& slug, const QList<Chip>& chips);

    CatalogSummary m_summary; ///< what the chips show, with no more markets than they do
    QString m_selection;
    QList<Chip> m_chips;
};
