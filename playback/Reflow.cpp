#include "Reflow.h"

#include "Graphemes.h"
#include "Text.h"

#include <algorithm>

namespace quillmere {

namespace {

bool isLineBreak(QChar unit)
{
    const char16_t code = unit.unicode();
    return (code >= u'\n' && code <= u'\r') || code == 0x85 || code == 0x2028 || code == 0x2029;
}

/** Builds one paragraph. Counts its characters as lines are added, so that the total time stays linear. */
class ParagraphBuilder
{
public:
    bool isEmpty() const { return m_text.isEmpty(); }

    void add(QStringView line)
    {
        if (!m_text.isEmpty())
            m_text += u' ';
        m_text += line;
    }

    bool hasCharacters(qsizetype count)
    {
        // A character has at least one UTF-16 unit.
        if (m_text.size() < count)
            return false;
        countNewCharacters();
        return m_characters >= count;
    }

    QString take()
    {
        m_characters = 0;
        m_counted = 0;
        return std::exchange(m_text, {});
    }

private:
    /** Counts from the last counted unit on, because the space that joins lines may extend the character before it. */
    void countNewCharacters()
    {
        const QStringView text = m_text;
        const qsizetype last = m_counted == 0 ? 0 : startOfLast(text.first(m_counted));
        m_characters += Graphemes::count(text.sliced(last)) - (m_counted == 0 ? 0 : 1);
        m_counted = text.size();
    }

    static qsizetype startOfLast(QStringView text)
    {
        const qsizetype size = text.size();
        const bool isPair = size > 1 && text[size - 1].isLowSurrogate() && text[size - 2].isHighSurrogate();
        return size - (isPair ? 2 : 1);
    }

    QString m_text;
    qsizetype m_counted = 0;    ///< UTF-16 units already counted, up to the end of a line
    qsizetype m_characters = 0; ///< grapheme clusters in these
};

/** The end of the first passage of a text that is longer than `maxLength` UTF-16 units. */
qsizetype cutPosition(QStringView text, qsizetype maxLength)
{
    const qsizetype space = text.first(maxLength).lastIndexOf(u' ');
    if (space >= 0)
        return space + 1;
    return std::max(cutLength(text, maxLength), qsizetype(1));
}

} // namespace

QStringList Reflow::paragraphs(QStringView text, qsizetype minLength)
{
    QStringList result;
    ParagraphBuilder paragraph;
    for (auto begin = text.begin(); begin != text.end();) {
        const auto end = std::find_if(begin, text.end(), isLineBreak);
        const QStringView line = trimmedText({begin, end});
        begin = end == text.end() ? end : end + 1;
        if (line.isEmpty())
            continue;
        paragraph.add(line);
        if (paragraph.hasCharacters(minLength))
            result.append(paragraph.take());
    }
    if (!paragraph.isEmpty())
        result.append(paragraph.take());
    return result;
}

QStringList Reflow::passages(const QStringList& paragraphs, qsizetype maxLength)
{
    QStringList result;
    result.reserve(paragraphs.size());
    for (const QString& paragraph : paragraphs) {
        QStringView rest = paragraph;
        while (rest.size() > maxLength) {
            const qsizetype cut = cutPosition(rest, maxLength);
            result.append(rest.first(cut).toString());
            rest = rest.sliced(cut);
        }
        result.append(rest.size() == paragraph.size() ? paragraph : rest.toString());
    }
    return result;
}

} // namespace quillmere
