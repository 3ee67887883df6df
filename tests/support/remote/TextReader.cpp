#include "TextReader.h"

#include "Picture.h"

#include <stdexcept>

#include <tesseract/baseapi.h>

namespace quillmere {

namespace {

constexpr double pixelsPerPoint = 2.0; // enlarged to this size, captions of 20 points are recognised reliably
constexpr int lettersPerMistake = 8;

/** Converts to large dark letters on white with full contrast, as in the engine's training data. */
QImage prepared(const QImage& picture, const QRectF& points)
{
    QImage text = picture.copy(picture::pixels(picture.size(), points)).convertToFormat(QImage::Format_Grayscale8);
    const int width = int(points.width() * pixelsPerPoint);
    if (text.width() < width)
        text = text.scaledToWidth(width, Qt::SmoothTransformation);
    int low = 255;
    int high = 0;
    qint64 sum = 0;
    for (int y = 0; y < text.height(); ++y) {
        const uchar* row = text.constScanLine(y);
        for (int x = 0; x < text.width(); ++x) {
            low = std::min<int>(low, row[x]);
            high = std::max<int>(high, row[x]);
            sum += row[x];
        }
    }
    const int range = std::max(1, high - low);
    const bool isDark = sum / std::max<qint64>(1, qint64(text.width()) * text.height()) < (low + high) / 2;
    for (int y = 0; y < text.height(); ++y) {
        uchar* row = text.scanLine(y);
        for (int x = 0; x < text.width(); ++x) {
            const int level = (row[x] - low) * 255 / range;
            row[x] = uchar(isDark ? 255 - level : level);
        }
    }
    return text;
}

QString lettersOf(const QString& text)
{
    QString letters;
    for (const QChar c : text.toCaseFolded()) {
        if (c.isLetterOrNumber())
            letters.append(c);
    }
    return letters;
}

constexpr int never = 1000;

int costOfMiss(QChar wanted)
{
    return wanted.isDigit() ? never : 1;
}

int costOfExtra(QChar seen)
{
    return seen.isDigit() ? never : 1;
}

int costOfSwap(QChar wanted, QChar seen)
{
    return wanted == seen ? 0 : costOfMiss(wanted);
}

} // namespace

struct TextReader::Engine
{
    tesseract::TessBaseAPI api;
};

TextReader::TextReader() : m_engine(std::make_unique<Engine>())
{
    if (m_engine->api.Init(nullptr, "eng", tesseract::OEM_LSTM_ONLY) != 0)
        throw std::runtime_error("Reading text in pictures needs the package tesseract-ocr-eng.");
    m_engine->api.SetVariable("debug_file", "/dev/null");
    m_engine->api.SetVariable("thresholding_method", "2"); // adaptive: pale captions stand beside bright titles
    m_engine->api.SetPageSegMode(tesseract::PSM_SPARSE_TEXT);
}

TextReader::~TextReader()
{
    m_engine->api.End();
}

QString TextReader::read(const QImage& picture, const QRectF& points)
{
    if (m_lastPicture != picture.cacheKey())
        m_lastRead.clear();
    m_lastPicture = picture.cacheKey();
    for (const auto& [area, text] : m_lastRead) {
        if (area == points)
            return text;
    }
    m_lastRead.append({points, readAfresh(picture, points)});
    return m_lastRead.last().second;
}

QString TextReader::readAfresh(const QImage& picture, const QRectF& points)
{
    const QImage text = prepared(picture, points);
    m_engine->api.SetImage(text.constBits(), text.width(), text.height(), 1, int(text.bytesPerLine()));
    m_engine->api.SetSourceResolution(150);
    const std::unique_ptr<char[]> read(m_engine->api.GetUTF8Text());
    return QString::fromUtf8(read.get()).trimmed();
}

bool TextReader::contains(const QString& text, const QString& wanted)
{
    const QString in = lettersOf(text);
    const QString what = lettersOf(wanted);
    // Approximate substring search (Sellers' algorithm): the fewest mistakes of any substring of `in`, computed row by
    // row over `what`; a match may start at any column.
    QList<int> mistakes(in.size() + 1, 0);
    for (qsizetype i = 0; i < what.size(); ++i) {
        int corner = mistakes[0];
        mistakes[0] = int(i) + 1;
        for (qsizetype j = 0; j < in.size(); ++j) {
            const int diagonal = corner + costOfSwap(what[i], in[j]);
            corner = mistakes[j + 1];
            mistakes[j + 1] = std::min({diagonal, corner + costOfMiss(what[i]), mistakes[j] + costOfExtra(in[j])});
        }
    }
    return *std::min_element(mistakes.cbegin(), mistakes.cend()) <= what.size() / lettersPerMistake;
}

} // namespace quillmere
