#pragma once

#include <QImage>
#include <QList>
#include <QRectF>
#include <QString>

#include <memory>

namespace quillmere {

/** Reads the text in a picture of the screen (optical character recognition, English). Single-threaded. */
class TextReader
{
public:
    /** Throws std::runtime_error with a readable message if the language data are missing. */
    TextReader();
    ~TextReader();

    /**
     * The text of an area, in points of the 1920 x 1080 canvas, with lines separated by line breaks. Results for the
     * last picture are cached, because recognition takes a fraction of a second.
     */
    QString read(const QImage& picture, const QRectF& points);

    /**
     * Whether `text` contains `wanted`, tolerating recognition errors: case, spaces and punctuation are ignored, and
     * one letter in eight may be wrong. Digits must match exactly.
     */
    static bool contains(const QString& text, const QString& wanted);

private:
    struct Engine;

    QString readAfresh(const QImage& picture, const QRectF& points);

    std::unique_ptr<Engine> m_engine;
    qint64 m_lastPicture = 0; ///< its QImage::cacheKey()
    QList<std::pair<QRectF, QString>> m_lastRead;
};

} // namespace quillmere
