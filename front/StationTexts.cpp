#include "StationTexts.h"

using namespace Qt::StringLiterals;

QString StationTexts::stationName()
{
    return u"QUILLMERE"_s;
}

QString StationTexts::televisionName()
{
    return u"Quillmere Television"_s;
}

QString StationTexts::newsDoor()
{
    return u"5 O'CLOCK NEWS"_s;
}

QString StationTexts::live()
{
    return u"LIVE"_s;
}

QString StationTexts::storeDoor()
{
    return u"REWINDERY"_s;
}

QString StationTexts::storeMotto()
{
    return u"Public-meeting rentals · Be Kind, Please Rewind"_s;
}

QString StationTexts::openingHours()
{
    return u"open 24 hrs"_s;
}

QString StationTexts::homeVideo()
{
    return u"home video"_s;
}

QString StationTexts::quitNotice()
{
    return u"Press back again to switch the set off"_s;
}

QString StationTexts::lampText(bool live)
{
    return live ? u"ON AIR"_s : u"OFF AIR"_s;
}

QString StationTexts::towerCaption(bool live)
{
    return live ? u"on air"_s : u"standby"_s;
}
