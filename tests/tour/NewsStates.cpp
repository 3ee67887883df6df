#include "Picture.h"
#include "Sights.h"
#include "Steps.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace tour {

namespace {

constexpr QRectF card(430, 240, 1060, 580);    // within the one of ordinary texts
constexpr QRectF broadcast(560, 742, 800, 46); // on the card, below the remaining time
constexpr QRectF schedule(720, 718, 480, 44);  // below that no broadcast is scheduled
constexpr QRectF ticker(0, 1040, 1920, 40);
constexpr QRectF strip(0, 0, 1920, 92);
constexpr QRectF caption(40, 24, 146, 44);      // of the strip, at its beginning
constexpr QRectF firstPlate(200, 20, 280, 52);  // "5 O'Clock News", within its plate
constexpr QRectF secondPlate(530, 20, 160, 52); // "12 Parks"
constexpr QRectF thirdPlate(750, 20, 220, 52);  // "20 Council 20"
constexpr QRectF fifthPlate(1360, 20, 250, 52); // under the focus, once the strip has moved
constexpr QRectF longPlate(60, 20, 1800, 52);   // of a name longer than the strip, under the focus
constexpr QRectF lowerThird(70, 780, 1200, 276);
constexpr QRectF tallLowerThird(70, 100, 1200, 956); // of a long title, below the strip
constexpr int longestLoop = 64;                      // seconds, of the channels' recordings
const QColor brick(192, 90, 31);
const QColor onAirRed(217, 43, 43);

const QString status = u"/status"_s;
const QString checking = u"CHECKING THE TOWER"_s;
const QString watching = u"THIS SET IS WATCHING THE TOWER"_s;
const QString program = u"The Five O'Clock Record"_s;

Step says(const QJsonObject& news)
{
    return order(status, {{u"news"_s, news}});
}

/** The only station is the built-in one. */
Step saysOneStation()
{
    return says({{u"channels"_s, QJsonValue::Null}});
}

/** The built-in station and "12 Parks". */
Step saysTwoStations()
{
    return says({{u"channels"_s, QJsonObject{{u"3"_s, QJsonValue::Null}}}});
}

Step saysManyStations()
{
    QJsonObject channels{{u"3"_s, QJsonValue::Null}};
    for (int number = 20; number < 68; ++number) {
        const QString label = number % 7 == 0 ? u"The Joint Committee on Harbours, Ferries and Footbridges"_s
                                              : u"Council %1"_s.arg(number);
        channels[QString::number(number)] = QJsonObject{{u"label"_s, label}, {u"path"_s, u"parks"_s}};
    }
    return says({{u"channels"_s, channels}});
}

/** Two rooms of one body, told apart by their last letters, and a name that is longer than the strip. */
Step saysLongNames()
{
    const QString room = u"Harbour Commission at the Old Custom House: Room "_s;
    const QString body =
        u"The Joint Committee on Harbours, Ferries, Footbridges, Fog Horns, Lights and Lanterns of "
        "Brindlemere, Tern Hollow and Marrowby Flats, sitting for the whole of this year in the Annexe"_s;
    QJsonObject channels{{u"3"_s, QJsonValue::Null}, {u"12"_s, QJsonValue::Null}};
    channels[u"20"_s] = QJsonObject{{u"label"_s, room + u"Anchor"_s}, {u"path"_s, u"parks"_s}};
    channels[u"21"_s] = QJsonObject{{u"label"_s, room + u"Beacon"_s}, {u"path"_s, u"parks"_s}};
    channels[u"22"_s] = QJsonObject{{u"label"_s, body}, {u"path"_s, u"parks"_s}};
    return says({{u"channels"_s, channels}});
}

/** More than the display has room for in every text at once. */
QJsonObject endlessTexts()
{
    const QString text = u"Joint special session of the harbour board, the library and the commission of parks "_s;
    return {{u"program_title"_s, text.repeated(40)},
            {u"program_note"_s, text.repeated(40)},
            {u"tagline"_s, text.repeated(40)},
            {u"next_broadcast_label"_s, text.repeated(40)}};
}

QJsonObject longTexts()
{
    const QString text = u"Joint special session of the harbour board, the library and the commission of parks "_s;
    return {{u"program_title"_s, text.repeated(4)},
            {u"program_note"_s, text.repeated(12)},
            {u"tagline"_s, text.repeated(4)},
            {u"next_broadcast_label"_s, text.repeated(4)},
            {u"ticker"_s, QJsonArray{text.repeated(40), u"🚢📼 "_s.repeated(30)}}};
}

QJsonObject noTexts()
{
    return {{u"program_title"_s, u""_s},  {u"program_note"_s, u""_s},         {u"tagline"_s, u""_s},
            {u"next_broadcast"_s, u""_s}, {u"next_broadcast_label"_s, u""_s}, {u"ticker"_s, QJsonArray()}};
}

/** Black is second 0, and the foot of the colour bars would be one too, but no channel's loop is so long. */
Sight showsTheChannel()
{
    return {u"the channel's picture is shown"_s, [](Stage&, const QImage& picture) {
                const int second = picture::recordedSeconds(picture).value_or(0);
                return second > 0 && second < longestLoop;
            }};
}

Sight isRed(const QRectF& area)
{
    return shows(u"something is on-air red"_s, area, onAirRed, 0.004);
}

Sight countsDown()
{
    return shows(u"the remaining time is brick"_s, card, brick, 0.002);
}

QList<State> onStandby()
{
    return {
        {u"front, before the news"_s,
         {calm(), saysOneStation(), switchOn()},
         {reads(area::leftDoor, u"OFF AIR"_s), reads(area::rightDoor, u"every one plays right here"_s)}},
        {u"news, checking"_s,
         {fault(u"/live/"_s, u"delay"_s, {{u"ms"_s, 60000}}), press(u"select"_s)},
         {reads(card, u"5 O'CLOCK NEWS"_s), reads(card, checking), reads(card, program)}},
        {u"news, dark with a countdown"_s,
         {order(u"/fault/clear"_s)},
         {reads(card, watching), reads(broadcast, u"from the tower on Lantern Hill"_s),
          reads(card, u"Quillmere Television"_s), countsDown()}},
        {u"news, dark two seconds on"_s, {}, {differsFrom(u"news, dark with a countdown"_s, ticker, 0.02)}},
        {u"news, dark with a date alone"_s,
         {says({{u"next_broadcast"_s, u"2099-06-03T17:00:00Z"_s}, {u"next_broadcast_label"_s, u""_s}})},
         {reads(broadcast, u"Wed Jun 3"_s), countsDown()}},
        {u"news, dark with a passed date"_s,
         {says({{u"next_broadcast"_s, u"2025-06-03T17:00:00Z"_s}})},
         {reads(card, u"no broadcast scheduled"_s), reads(schedule, u"last on the schedule · Tue Jun 3"_s)}},
        {u"news, dark with long texts"_s,
         {order(u"/status/reset"_s), saysOneStation(), says(longTexts())},
         {reads(card, u"Joint special session of the harbour board"_s), reads(card, watching)}},
        {u"news, dark with endless texts"_s,
         {says(endlessTexts())},
         {reads(area::everything, u"5 O'CLOCK NEWS"_s), reads(area::everything, watching),
          reads(area::everything, u"Quillmere Television"_s), reads(area::everything, u"commission of parks"_s)}},
        {u"news, dark with nothing to say"_s,
         {says(noTexts())},
         {reads(card, u"no broadcast scheduled"_s), readsNot(card, u"last on the schedule"_s),
          readsNot(card, u"Joint special session"_s), readsNot(card, program)}},
    };
}

QList<State> withStations()
{
    return {
        {u"news, two stations"_s,
         {order(u"/status/reset"_s), saysTwoStations()},
         {reads(caption, u"CHANNELS"_s), reads(firstPlate, u"5 O'Clock News"_s), reads(secondPlate, u"Parks"_s),
          isRed(firstPlate)}},
        {u"news, many stations"_s,
         {saysManyStations()},
         {reads(thirdPlate, u"Council 20"_s), reads(card, watching), isRed(firstPlate)}},
        {u"news, along the strip"_s,
         {press(u"right"_s, 12)},
         {reads(fifthPlate, u"Council 30"_s), readsNot(caption, u"CHANNELS"_s)}},
        {u"news, two rooms of one body"_s,
         {press(u"left"_s, 12), saysLongNames(), waitFor(reads(strip, u"Custom House"_s)), press(u"right"_s, 2)},
         {reads(strip, u"Room Anchor"_s), reads(strip, u"Room Beacon"_s)}},
        {u"news, the beginning of a long name"_s,
         {press(u"right"_s)},
         {reads(longPlate, u"22"_s), reads(longPlate, u"The Joint Committee"_s), readsNot(longPlate, u"Annexe"_s)}},
        {u"news, the end of a long name"_s,
         {},
         {reads(longPlate, u"in the Annexe"_s), readsNot(longPlate, u"The Joint"_s)}},
        {u"news, back along the strip"_s,
         {press(u"left"_s, 3), order(u"/status/reset"_s), saysTwoStations()},
         {looksAsIn(u"news, two stations"_s, strip)}},
    };
}

QList<State> onTheAir()
{
    return {
        {u"news, lit with its lower third"_s,
         {order(u"/tower/lit"_s)},
         {isRed(lowerThird), showsTheChannel(), reads(lowerThird, u"LIVE"_s), reads(lowerThird, program),
          reads(lowerThird, u"Tonight: the fog horn"_s)}},
        {u"news, lit"_s,
         {},
         {showsNot(u"the lower third is gone"_s, lowerThird, onAirRed, 0.0005), showsTheChannel(),
          reads(firstPlate, u"5 O'Clock News"_s)}},
        {u"news, retuning"_s,
         {fault(u"/live/"_s, u"delay"_s, {{u"ms"_s, 60000}}), press(u"right"_s), press(u"select"_s)},
         {reads(card, checking), isRed(secondPlate)}},
        {u"news, another station lit"_s,
         {order(u"/fault/clear"_s)},
         {isRed(lowerThird), showsTheChannel(), reads(lowerThird, u"PARKS"_s)}},
        {u"news, darkened"_s,
         {fault(u"/live/"_s, u"error"_s, {{u"status"_s, 404}})},
         {reads(card, watching), reads(card, u"5 O'CLOCK NEWS"_s)}},
        {u"front, back from the news"_s,
         {press(u"back"_s)},
         {reads(area::rightDoor, u"every one plays right here"_s), readsNot(area::everything, watching)}},
        {u"news, lit with nothing to say"_s,
         {calm(), saysOneStation(), says(noTexts()), order(u"/tower/lit"_s), press(u"play/pause"_s),
          press(u"select"_s)},
         {isRed(lowerThird), showsTheChannel(), reads(lowerThird, u"LIVE"_s), reads(lowerThird, u"5 O'Clock News"_s),
          readsNot(lowerThird, u"Tonight"_s)}},
        {u"news, lit with long texts"_s,
         {order(u"/tower/dark"_s), says(longTexts()), waitFor(reads(card, u"Joint special session"_s)),
          order(u"/tower/lit"_s)},
         {isRed(tallLowerThird), reads(tallLowerThird, u"Joint special session of the harbour board"_s)}},
        {u"news, lit with an endless title"_s,
         {order(u"/tower/dark"_s), order(u"/status/reset"_s), saysTwoStations(), says(endlessTexts()),
          waitFor(reads(strip, u"Parks"_s)), order(u"/tower/lit"_s)},
         {isRed(tallLowerThird), reads(tallLowerThird, u"LIVE"_s), reads(tallLowerThird, u"commission of parks"_s),
          reads(firstPlate, u"5 O'Clock News"_s)}},
        {u"front, after the news"_s, {press(u"back"_s)}, {reads(area::rightDoor, u"every one plays right here"_s)}},
    };
}

} // namespace

QList<State> newsStates()
{
    return onStandby() + withStations() + onTheAir();
}

} // namespace tour
