#pragma once

#include <QImage>
#include <QList>
#include <QRectF>
#include <QString>

#include <memory>

/** Reads the text in a picture of the screen (optical character recognition, English). One thread. */
class TextReader
{
public:
    /** Throws std::runtime_error with a sentence when the language's data is missing. */
    TextReader();
    ~TextReader();

    /**
     * The text of an area (points of the 1920 x 1080 canvas), lines parted by line breaks. What was read of the last
     * picture is remembered, as reading takes a fraction of a second.
     */
    QString read(const QImage& picture, const QRectF& points);

    /**
     * Whether `text` contains `wanted`, but for what reading mistakes: case, spaces and punctuation do not count,
     * and one letter in eight may be wrong; a digit must be right.
     */
    static bool contains(const QString& text, const QString& wanted);

private:
    struct Engine;

    QString readAfresh(const QImage& picture, const QRectF& points);

    std::unique_ptr<Engine> m_engine;
    qint64 m_lastPicture = 0; ///< its cache key
    QList<std::pair<QRectF, QString>> m_lastRead;
};
