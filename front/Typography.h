#pragma once

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

/**
 * The station's type: one family for each design, with the fall-backs that draw what it lacks (symbols, Chinese,
 * Japanese, Korean, Arabic, emoji). Sizes and letter spacings are in points of the canvas. Stateless: any thread.
 */
class Typography : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    Q_INVOKABLE static QFont standard(int size, int weight = QFont::Normal, double letterSpacing = 0,
                                      bool italic = false);
    Q_INVOKABLE static QFont monospaced(int size, int weight = QFont::Normal, double letterSpacing = 0);
    Q_INVOKABLE static QFont serif(int size, int weight = QFont::Normal, bool italic = false);

    /** The caption face of the station: monospaced, semibold, spaced by 0.18 of its size. */
    Q_INVOKABLE static QFont label(int size);

    /** What an emoji is drawn with, whatever font has a plainer sign for it. */
    static QStringList emojiFamilies();

    /** `text` in capitals, as captions are set. */
    Q_INVOKABLE static QString capitals(const QString& text);
};
