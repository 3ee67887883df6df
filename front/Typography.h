#pragma once

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/**
 * Fonts of the program: one family for each design, with fallbacks for the glyphs that it lacks (symbols, Chinese,
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

    /** Font of captions: monospaced, semibold, with a letter spacing of 0.18 of its size. */
    Q_INVOKABLE static QFont label(int size);

    /** Font families for emoji, also for those that text fonts have a monochrome glyph for. */
    static QStringList emojiFamilies();

    /** `text` in capitals, for captions. */
    Q_INVOKABLE static QString capitals(const QString& text);
};

} // namespace quillmere
