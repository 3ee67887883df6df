#include "NewsTexts.h"

#include "StationTexts.h"
#include "Text.h"
#include "Typography.h"

using namespace Qt::StringLiterals;

namespace quillmere {

QString NewsTexts::heading()
{
    return StationTexts::newsDoor();
}

QString NewsTexts::towerLine(bool checking)
{
    return checking ? u"CHECKING THE TOWER…"_s : u"TRANSMISSION WILL RESUME — THIS SET IS WATCHING THE TOWER"_s;
}

QString NewsTexts::cardLine(const QString& text)
{
    return shortenedText(text, maximumTextLength);
}

QString NewsTexts::onAirTitle(const QString& program)
{
    return program.isEmpty() ? u"5 O'Clock News"_s : shortenedText(program, maximumTextLength);
}

QString NewsTexts::onAirDetail(const QString& note, const QString& tagline)
{
    return shortenedLine(note.isEmpty() ? tagline : note);
}

QString NewsTexts::onAirStation(const QString& label)
{
    return Typography::capitals(shortenedLine(label, maximumTextLength));
}

} // namespace quillmere
