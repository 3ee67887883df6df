#include "Reflow.h"

#include "Blanks.h"
#include "Graphemes.h"

#include <algorithm>

namespace {

bool isLineBreak(QChar unit)
{
    const char16_t code = unit.unicode();
    return (code >= u'\n' && code <= u'\r') || code == 0x85 || code == 0x2028 || code == 0x2029;
}

/** A paragraph while it grows; of its characters none is counted twice. */
class Draft
{
public:
    bool isEmpty() const { return m_text.isEmpty(); }

    void add(QStringView line)
    {
        if (!m_text.isEmpty())
            m_text += u' ';
        m_text += line;
    }

    bool hasCharacters(qsizetype limit)
    {
        // It has no more characters than units.
        if (m_text.size() < limit)
            return false;
        countRest();
        return m_characters >= limit;
    }

    QString take()
    {
        m_characters = 0;
        m_counted = 0;
        return std::exchange(m_text, {});
    }

private:
    /** The space that joins a line may belong to the character before it: so that, too, is looked at once more. */
    void countRest()
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
    qsizetype m_counted = 0;    ///< units, up to the end of a line
    qsizetype m_characters = 0; ///< in these
};

/** Where to cut off the first part of a text that is longer than `longest` units. */
qsizetype cutWithin(QStringView text, qsizetype longest)
{
    const qsizetype space = text.first(longest).lastIndexOf(u' ');
    if (space >= 0)
        return space + 1;
    return longest > 1 && text[longest - 1].isHighSurrogate() ? longest - 1 : longest;
}

} // namespace

QStringList Reflow::paragraphs(QStringView text, qsizetype limit)
{
    QStringList result;
    Draft draft;
    for (auto begin = text.begin(); begin != text.end();) {
        const auto end = std::find_if(begin, text.end(), isLineBreak);
        const QStringView line = Blanks::trimmed({begin, end});
        begin = end == text.end() ? end : end + 1;
        if (line.isEmpty())
            continue;
        draft.add(line);
        if (draft.hasCharacters(limit))
            result.append(draft.take());
    }
    if (!draft.isEmpty())
        result.append(draft.take());
    return result;
}

QStringList Reflow::passages(const QStringList& paragraphs, qsizetype longest)
{
    QStringList result;
    result.reserve(paragraphs.size());
    for (const QString& paragraph : paragraphs) {
        QStringView rest = paragraph;
        while (rest.size() > longest) {
            const qsizetype cut = cutWithin(rest, longest);
            result.append(rest.first(cut).toString());
            rest = rest.sliced(cut);
        }
        result.append(rest.size() == paragraph.size() ? paragraph : rest.toString());
    }
    return result;
}
