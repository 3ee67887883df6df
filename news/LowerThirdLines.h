#pragma once

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

/**
 * Number of lines of the lower third's title and station name. If not all lines fit on the display, the title has
 * priority. Screen thread only; the lower third creates and owns it.
 */
class LowerThirdLines : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString title MEMBER m_title NOTIFY inputChanged FINAL)
    Q_PROPERTY(QString station MEMBER m_station NOTIFY inputChanged FINAL)
    Q_PROPERTY(double titleWidth MEMBER m_titleWidth NOTIFY inputChanged FINAL)     ///< of a line, in points
    Q_PROPERTY(double stationWidth MEMBER m_stationWidth NOTIFY inputChanged FINAL) ///< of a line, in points
    /** Height that the other parts of the panel leave free for both texts, in points. */
    Q_PROPERTY(double height MEMBER m_height NOTIFY inputChanged FINAL)

    Q_PROPERTY(QFont titleFont READ titleFont CONSTANT FINAL)
    Q_PROPERTY(QFont stationFont READ stationFont CONSTANT FINAL)
    Q_PROPERTY(int titleLines READ titleLines NOTIFY linesChanged FINAL)
    Q_PROPERTY(int stationLines READ stationLines NOTIFY linesChanged FINAL)

public:
    explicit LowerThirdLines(QObject* parent = nullptr);

    static QFont titleFont();
    static QFont stationFont();

    int titleLines() const { return m_titleLines; }
    int stationLines() const { return m_stationLines; }

Q_SIGNALS:
    void inputChanged();
    void linesChanged();

private:
    void updateLines();

    QString m_title;
    QString m_station;
    double m_titleWidth = 0;
    double m_stationWidth = 0;
    double m_height = 0;
    int m_titleLines = 1;
    int m_stationLines = 1;
};
