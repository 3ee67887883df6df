#include "TapeSearchTexts.h"

using namespace Qt::StringLiterals;

QString TapeSearchTexts::title()
{
    return u"Search the stacks"_s;
}

QString TapeSearchTexts::invitation()
{
    return u"A name, a street, a motion — titles and spoken transcripts both."_s;
}

QString TapeSearchTexts::countLine(qsizetype tapes)
{
    return QString::number(tapes) + (tapes == 1 ? u" tape found"_s : u" tapes found"_s);
}

QString TapeSearchTexts::noMatchLine(const QString& query)
{
    return u"No tapes match “"_s + query + u"”. Try a different word."_s;
}
