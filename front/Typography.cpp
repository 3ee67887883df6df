#include "Typography.h"

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr auto emojiFamily = "Noto Color Emoji"_L1;
constexpr double labelSpacing = 0.18; // relative to the font size

QFont station(const QString& family, int size, int weight, double letterSpacing, bool italic = false)
{
    QFont font;
    font.setFamilies({family, u"Noto Sans"_s, u"Noto Sans Arabic"_s, u"Noto Sans CJK SC"_s, u"Noto Sans Symbols2"_s,
                      u"DejaVu Sans"_s, QString(emojiFamily)});
    font.setPixelSize(size);
    font.setWeight(QFont::Weight(weight));
    font.setItalic(italic);
    font.setLetterSpacing(QFont::AbsoluteSpacing, letterSpacing);
    // With hinting, glyph advances, and so the line breaks, would depend on the scale of the canvas.
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

} // namespace

QFont Typography::standard(int size, int weight, double letterSpacing, bool italic)
{
    return station(u"Inter"_s, size, weight, letterSpacing, italic);
}

QFont Typography::monospaced(int size, int weight, double letterSpacing)
{
    return station(u"JetBrains Mono"_s, size, weight, letterSpacing);
}

QFont Typography::serif(int size, int weight, bool italic)
{
    return station(u"Noto Serif"_s, size, weight, 0, italic);
}

QFont Typography::label(int size)
{
    return monospaced(size, QFont::DemiBold, size * labelSpacing);
}

QStringList Typography::emojiFamilies()
{
    return {QString(emojiFamily)};
}

QString Typography::capitals(const QString& text)
{
    return text.toUpper();
}

} // namespace quillmere
