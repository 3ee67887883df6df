#pragma once

#include "CurrentRowModel.h"
#include "NewsStatus.h"

#include <QFont>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/**
 * Model of the tuner strip: a button for each of the first 500 stations, as wide as its number and label need, but not
 * wider than the strip. The current row is at the station on screen until the viewer moves the focus to another button.
 * Screen thread only; the strip creates and owns it. It measures texts with fonts, so the application object outlives
 * it.
 */
class TunerList : public quillmere::CurrentRowModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QList<quillmere::TunerStation> stations READ stations WRITE setStations NOTIFY stationsChanged FINAL)
    /** Station on screen. Buttons with its number are marked. */
    Q_PROPERTY(quillmere::TunerStation current READ current WRITE setCurrent NOTIFY currentChanged FINAL)

    /** Layout of a button: margin, number, gap, label, margin. Lengths in points. */
    Q_PROPERTY(QFont numberFont READ numberFont CONSTANT FINAL)
    Q_PROPERTY(QFont labelFont READ labelFont CONSTANT FINAL)
    /** Width of the strip, in points; 0 while unknown. */
    Q_PROPERTY(double stripWidth READ stripWidth WRITE setStripWidth NOTIFY stripWidthChanged FINAL)
    /** Free space at the ends of the strip, and between buttons. */
    Q_PROPERTY(int sidePadding READ sidePadding CONSTANT FINAL)
    Q_PROPERTY(int spacing READ spacing CONSTANT FINAL)

    Q_PROPERTY(int margin READ margin CONSTANT FINAL)
    Q_PROPERTY(int gap READ gap CONSTANT FINAL)

public:
    enum Role { KeyRole = Qt::UserRole, NumberRole, LabelRole, NumberWidthRole, ExtentRole, CurrentRole };

    static QFont numberFont();
    static QFont labelFont();
    static constexpr int margin() { return 26 + 20; } ///< margin of every plate, and padding of the label
    static constexpr int gap() { return 10; }
    static constexpr int sidePadding() { return 50; }
    static constexpr int spacing() { return 18; }
    static constexpr qsizetype maximumTextLength = 1000; ///< UTF-16 units; scrolling through takes about two minutes
    static constexpr qsizetype maximumStations = 500;    ///< limits the time for measuring texts; nobody browses more

    using CurrentRowModel::CurrentRowModel;

    const QList<TunerStation>& stations() const { return m_stations; }
    void setStations(const QList<TunerStation>& stations);
    const TunerStation& current() const { return m_current; }
    void setCurrent(const TunerStation& current);

    double stripWidth() const { return m_stripWidth; }
    void setStripWidth(double stripWidth);

    /**
     * Scale of a focused button of width `extent`: that of all plates, but small enough not to reach its neighbours.
     */
    Q_INVOKABLE static double focusScale(double extent);

    /** Called when the viewer selects a button. Emits picked() with its station. */
    Q_INVOKABLE void pick(int row);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void stationsChanged();
    void currentChanged();
    void stripWidthChanged();
    void picked(const quillmere::TunerStation& station);

private:
    struct Button
    {
        QString number;
        QString label;
        int numberWidth; ///< points
        int extent;      ///< width of the button, in points

        bool operator==(const Button&) const = default;
    };

    QList<Button> buttonsOf(const QList<TunerStation>& stations) const;
    int maximumButtonWidth() const;
    bool isOnCurrentStation() const;
    int currentRowIn(const QList<TunerStation>& stations) const;

    QList<TunerStation> m_stations;
    TunerStation m_current;
    double m_stripWidth = 0;
    QList<Button> m_buttons;
};

} // namespace quillmere
