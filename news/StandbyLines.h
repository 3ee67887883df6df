#pragma once

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

/**
 * Number of lines of each text from the hub on the standby card. If not all lines fit on the display, the priority is:
 * the label of the countdown, the title, the note. Screen thread only; the card creates and owns it.
 */
class StandbyLines : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString title MEMBER m_title NOTIFY inputChanged FINAL)
    Q_PROPERTY(QString note MEMBER m_note NOTIFY inputChanged FINAL)
    Q_PROPERTY(QString label MEMBER m_label NOTIFY inputChanged FINAL)
    Q_PROPERTY(QFont labelFont MEMBER m_labelFont NOTIFY inputChanged FINAL)
    /** Width of a line, in points. */
    Q_PROPERTY(double width MEMBER m_width NOTIFY inputChanged FINAL)
    /** Height that the other rows of the card leave free for the three texts and the gaps above them, in points. */
    Q_PROPERTY(double height MEMBER m_height NOTIFY inputChanged FINAL)
    Q_PROPERTY(double rowGap MEMBER m_rowGap NOTIFY inputChanged FINAL)     ///< above the title and the note, in points
    Q_PROPERTY(double labelGap MEMBER m_labelGap NOTIFY inputChanged FINAL) ///< above the label, in points

    Q_PROPERTY(QFont titleFont READ titleFont CONSTANT FINAL)
    Q_PROPERTY(QFont noteFont READ noteFont CONSTANT FINAL)
    Q_PROPERTY(int titleLines READ titleLines NOTIFY linesChanged FINAL)
    Q_PROPERTY(int noteLines READ noteLines NOTIFY linesChanged FINAL)
    Q_PROPERTY(int labelLines READ labelLines NOTIFY linesChanged FINAL)

public:
    explicit StandbyLines(QObject* parent = nullptr);

    static QFont titleFont();
    static QFont noteFont();

    int titleLines() const { return m_titleLines; }
    int noteLines() const { return m_noteLines; }
    int labelLines() const { return m_labelLines; }

Q_SIGNALS:
    void inputChanged();
    void linesChanged();

private:
    void updateLines();

    QString m_title;
    QString m_note;
    QString m_label;
    QFont m_labelFont;
    double m_width = 0;
    double m_height = 0;
    double m_rowGap = 0;
    double m_labelGap = 0;
    int m_titleLines = 1;
    int m_noteLines = 1;
    int m_labelLines = 1;
};
