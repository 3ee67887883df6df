#include "TranscriptTexts.h"

#include "ShortenedText.h"
#include "Typography.h"

#include <QLocale>

using namespace Qt::StringLiterals;

QString TranscriptTexts::pulling()
{
    return u"Pulling the transcript…"_s;
}

QString TranscriptTexts::backToTheTape()
{
    return u"Back to the tape"_s;
}

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

QString TranscriptTexts::noneHarvested()
{
    return u"No transcript has been harvested for this tape yet."_s;
}

QString TranscriptTexts::outOfReach(const QString& reason)
{
    return u"Couldn't reach the transcript. "_s + shortenedText(reason);
}
