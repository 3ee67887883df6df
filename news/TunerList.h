#pragma once

#include "PlacedListModel.h"
#include "TunerStation.h"

#include <QFont>
#include <QtQml/qqmlregistration.h>

/**
 * The buttons of the tuner strip, one for each of the first 500 stations, each as long as its number and its label, but
 * no longer than the strip. The viewer's place is at the current station until the viewer has moved on to look for another. Screen thread only; the strip makes and owns it; the application
 * object outlives it, as the buttons are measured by their fonts.
 */
class TunerList : public PlacedListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QList<TunerStation> stations READ stations WRITE setStations NOTIFY stationsChanged FINAL)
    /** The station on screen; the buttons with its number are marked. */
    Q_PROPERTY(TunerStation current READ current WRITE setCurrent NOTIFY currentChanged FINAL)

    /** How a button is set: number, gap and label, with a margin before and after; lengths in points. */
    Q_PROPERTY(QFont numberFont READ numberFont CONSTANT FINAL)
    Q_PROPERTY(QFont labelFont READ labelFont CONSTANT FINAL)
    /** How long the strip is, in points; 0 as long as it is not known. */
    Q_PROPERTY(double stripWidth READ stripWidth WRITE setStripWidth NOTIFY stripWidthChanged FINAL)
    /** What the strip leaves free at its ends, and between its buttons. */
    Q_PROPERTY(int sidePadding READ sidePadding CONSTANT FINAL)
    Q_PROPERTY(int spacing READ spacing CONSTANT FINAL)

    Q_PROPERTY(int margin READ margin CONSTANT FINAL)
    Q_PROPERTY(int gap READ gap CONSTANT FINAL)

public:
    enum Role { KeyRole = Qt::UserRole, NumberRole, LabelRole, NumberExtentRole, ExtentRole, CurrentRole };

    static QFont numberFont();
    static QFont labelFont();
    static constexpr int margin() { return 26 + 20; } ///< what every plate leaves free, and the label's padding
    static constexpr int gap() { return 10; }
    static constexpr int sidePadding() { return 50; }
    static constexpr int spacing() { return 18; }
    static constexpr qsizetype longestText = 1000; ///< UTF-16 units, read in two minutes
    static constexpr qsizetype mostStations = 500; ///< nobody walks past more, and every button costs its measuring

    using PlacedListModel::PlacedListModel;

    const QList<TunerStation>& stations() const { return m_stations; }
    void setStations(const QList<TunerStation>& stations);
    const TunerStation& current() const { return m_current; }
    void setCurrent(const TunerStation& current);

    double stripWidth() const { return m_stripWidth; }
    void setStripWidth(double stripWidth);

    /** How large a button that is `extent` long becomes under the focus: as any plate, but not as far as its neighbours. */
    Q_INVOKABLE static double growth(double extent);

    /** The viewer chooses a button's station. */
    Q_INVOKABLE void pick(int row);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void stationsChanged();
    void currentChanged();
    void stripWidthChanged();
    void picked(const TunerStation& station);

private:
    struct Button
    {
        QString number;
        QString label;
        int numberExtent; ///< points
        int extent;

        bool operator==(const Button&) const = default;
    };

    QList<Button> buttonsOf(const QList<TunerStation>& stations) const;
    int longestButton() const;
    bool isAtCurrent() const;
    int placeAmong(const QList<TunerStation>& stations) const;

    QList<TunerStation> m_stations;
    TunerStation m_current;
    double m_stripWidth = 0;
    QList<Button> m_buttons;
};
