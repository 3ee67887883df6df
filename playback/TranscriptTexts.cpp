#include "TranscriptTexts.h"

#include "Text.h"
#include "Typography.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace quillmere {

QString TranscriptTexts::caption(const VHSCover& cover)
{
    QString line = u"THE SPOKEN RECORD · "_s + Typography::capitals(shortenedLine(cover.bodyName));
    if (!cover.dateLabel.isEmpty())
        line += u" · "_s + Typography::capitals(cover.dateLabel);
    return line;
}

QString TranscriptTexts::wordCount(qint64 words)
{
    return words < 1 ? QString() : QLocale(QLocale::English).toString(words) + u" words"_s;
}

QString TranscriptTexts::outOfReach(const QString& reason)
{
    return u"Couldn't reach the transcript. "_s + shortenedText(reason);
}

} // namespace quillmere
