#include "StationTexts.h"

#include "StationPalette.h"

using namespace Qt::StringLiterals;

namespace quillmere {

QString newsDoorSubtitle(const NewsStatus& news)
{
    if (news.towerLive)
        return news.programTitle.isEmpty() ? u"The tower is lit — tune in."_s : news.programTitle;
    if (!news.nextBroadcastLabel.isEmpty())
        return u"Next broadcast · "_s + news.nextBroadcastLabel;
    return u"The tower is dark. Colour bars and a countdown until it isn't."_s;
}

QString storeDoorSubtitle(qint64 tapes, qint64 markets)
{
    if (tapes < 1)
        return u"Checking what's on the shelf…"_s;
    const QString marketPhrase = markets == 1 ? u"1 market"_s : QString::number(markets) + u" markets"_s;
    return QString::number(tapes) + u" tapes in stock · "_s + marketPhrase + u" · every one plays right here"_s;
}

StatusLine statusLine(const std::optional<QString>& lastError, bool isLoading, bool hasLoadedOnce)
{
    if (lastError)
        return {*lastError, 24, StationPalette::onAirRed()};
    if (isLoading && !hasLoadedOnce)
        return {u"Tuning in…"_s, 24, StationPalette::faded(StationPalette::cream(), 0.6)};
    return {u"Press ▶︎ to refresh"_s, 22, StationPalette::faded(StationPalette::cream(), 0.4)};
}

} // namespace quillmere
