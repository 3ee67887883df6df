#include "Checks.h"
#include "Picture.h"
#include "Steps.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace quillmere::tour {

namespace {

constexpr QRectF card(430, 240, 1060, 580);    // inside the card with ordinary texts
constexpr QRectF broadcast(560, 742, 800, 46); // on the card, below the remaining time
constexpr QRectF schedule(720, 718, 480, 44);  // on the card, below the text that no broadcast is scheduled
constexpr QRectF ticker(0, 1040, 1920, 40);
constexpr QRectF strip(0, 0, 1920, 92);
constexpr QRectF caption(40, 24, 146, 44);      // at the beginning of the strip
constexpr QRectF firstPlate(200, 20, 280, 52);  // "5 O'Clock News", inside its plate
constexpr QRectF secondPlate(530, 20, 160, 52); // "12 Parks"
constexpr QRectF thirdPlate(750, 20, 220, 52);  // "20 Council 20"
constexpr QRectF fifthPlate(1360, 20, 250, 52); // the focused button after the strip has scrolled
constexpr QRectF longPlate(60, 20, 1800, 52);   // the focused button with a name longer than the strip
constexpr QRectF lowerThird(70, 780, 1200, 276);
constexpr QRectF tallLowerThird(70, 100, 1200, 956); // with a long title, below the strip
constexpr int longestLoop = 64;                      // seconds; no channel's recording is longer
const QColor brick(192, 90, 31);
const QColor onAirRed(217, 43, 43);

const QString status = u"/status"_s;
const QString checking = u"CHECKING THE TOWER"_s;
const QString watching = u"THIS SET IS WATCHING THE TOWER"_s;
const QString program = u"The Five O'Clock Record"_s;

Step setNews(const QJsonObject& news)
{
    return post(status, {{u"news"_s, news}});
}

/** The built-in station is the only one. */
Step setOneStation()
{
    return setNews({{u"channels"_s, QJsonValue::Null}});
}

/** The built-in station and "12 Parks". */
Step setTwoStations()
{
    return setNews({{u"channels"_s, QJsonObject{{u"3"_s, QJsonValue::Null}}}});
}

Step setManyStations()
{
    QJsonObject channels{{u"3"_s, QJsonValue::Null}};
    for (int number = 20; number < 68; ++number) {
        const QString label = number % 7 == 0 ? u"The Joint Committee on Harbours, Ferries and Footbridges"_s
                                              : u"Council %1"_s.arg(number);
        channels[QString::number(number)] = QJsonObject{{u"label"_s, label}, {u"path"_s, u"parks"_s}};
    }
    return setNews({{u"channels"_s, channels}});
}

/** Two stations whose names differ only in the last word, and one whose name is longer than the strip. */
Step setLongStationNames()
{
    const QString roomName = u"Harbour Commission at the Old Custom House: Room "_s;
    const QString body =
        u"The Joint Committee on Harbours, Ferries, Footbridges, Fog Horns, Lights and Lanterns of "
        "Brindlemere, Tern Hollow and Marrowby Flats, sitting for the whole of this year in the Annexe"_s;
    QJsonObject channels{{u"3"_s, QJsonValue::Null}, {u"12"_s, QJsonValue::Null}};
    channels[u"20"_s] = QJsonObject{{u"label"_s, roomName + u"Anchor"_s}, {u"path"_s, u"parks"_s}};
    channels[u"21"_s] = QJsonObject{{u"label"_s, roomName + u"Beacon"_s}, {u"path"_s, u"parks"_s}};
    channels[u"22"_s] = QJsonObject{{u"label"_s, body}, {u"path"_s, u"parks"_s}};
    return setNews({{u"channels"_s, channels}});
}

/** Every text is longer than the display. */
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

/**
 * Second 0 is as black as an empty picture. The colour bars' lowest band could be read as a number too, but as a
 * greater one than any channel's recording reaches.
 */
Check showsTheChannel()
{
    return {u"the channel's picture is shown"_s, [](TourContext&, const QImage& picture) {
                const int second = picture::recordedSeconds(picture).value_or(0);
                return second > 0 && second < longestLoop;
            }};
}

Check isRed(const QRectF& area)
{
    return hasColour(u"something is on-air red"_s, area, onAirRed, 0.004);
}

Check countsDown()
{
    return hasColour(u"the remaining time is brick"_s, card, brick, 0.002);
}

QList<State> onStandby()
{
    return {
        {u"front, before the news"_s,
         {resetHub(), setOneStation(), switchOn()},
         {hasText(area::leftDoor, u"OFF AIR"_s), hasText(area::rightDoor, u"every one plays right here"_s)}},
        {u"news, checking"_s,
         {addFault(u"/live/"_s, u"delay"_s, {{u"ms"_s, 60000}}), press(u"select"_s)},
         {hasText(card, u"5 O'CLOCK NEWS"_s), hasText(card, checking), hasText(card, program)}},
        {u"news, dark with a countdown"_s,
         {post(u"/fault/clear"_s)},
         {hasText(card, watching), hasText(broadcast, u"from the tower on Lantern Hill"_s),
          hasText(card, u"Quillmere Television"_s), countsDown()}},
        {u"news, dark two seconds on"_s, {}, {differsFromPictureOf(u"news, dark with a countdown"_s, ticker, 0.02)}},
        {u"news, dark with a date alone"_s,
         {setNews({{u"next_broadcast"_s, u"2099-06-03T17:00:00Z"_s}, {u"next_broadcast_label"_s, u""_s}})},
         {hasText(broadcast, u"Wed Jun 3"_s), countsDown()}},
        {u"news, dark with a passed date"_s,
         {setNews({{u"next_broadcast"_s, u"2025-06-03T17:00:00Z"_s}})},
         {hasText(card, u"no broadcast scheduled"_s), hasText(schedule, u"last on the schedule · Tue Jun 3"_s)}},
        {u"news, dark with long texts"_s,
         {post(u"/status/reset"_s), setOneStation(), setNews(longTexts())},
         {hasText(card, u"Joint special session of the harbour board"_s), hasText(card, watching)}},
        {u"news, dark with endless texts"_s,
         {setNews(endlessTexts())},
         {hasText(area::everything, u"5 O'CLOCK NEWS"_s), hasText(area::everything, watching),
          hasText(area::everything, u"Quillmere Television"_s), hasText(area::everything, u"commission of parks"_s)}},
        {u"news, dark with nothing to say"_s,
         {setNews(noTexts())},
         {hasText(card, u"no broadcast scheduled"_s), hasNoText(card, u"last on the schedule"_s),
          hasNoText(card, u"Joint special session"_s), hasNoText(card, program)}},
    };
}

QList<State> withStations()
{
    return {
        {u"news, two stations"_s,
         {post(u"/status/reset"_s), setTwoStations()},
         {hasText(caption, u"CHANNELS"_s), hasText(firstPlate, u"5 O'Clock News"_s), hasText(secondPlate, u"Parks"_s),
          isRed(firstPlate)}},
        {u"news, many stations"_s,
         {setManyStations()},
         {hasText(thirdPlate, u"Council 20"_s), hasText(card, watching), isRed(firstPlate)}},
        {u"news, along the strip"_s,
         {press(u"right"_s, 12)},
         {hasText(fifthPlate, u"Council 30"_s), hasNoText(caption, u"CHANNELS"_s)}},
        {u"news, two rooms of one body"_s,
         {press(u"left"_s, 12), setLongStationNames(), waitFor(hasText(strip, u"Custom House"_s)),
          press(u"right"_s, 2)},
         {hasText(strip, u"Room Anchor"_s), hasText(strip, u"Room Beacon"_s)}},
        {u"news, the beginning of a long name"_s,
         {press(u"right"_s)},
         {hasText(longPlate, u"22"_s), hasText(longPlate, u"The Joint Committee"_s),
          hasNoText(longPlate, u"Annexe"_s)}},
        {u"news, the end of a long name"_s,
         {},
         {hasText(longPlate, u"in the Annexe"_s), hasNoText(longPlate, u"The Joint"_s)}},
        {u"news, back along the strip"_s,
         {press(u"left"_s, 3), post(u"/status/reset"_s), setTwoStations()},
         {equalsPictureOf(u"news, two stations"_s, strip)}},
    };
}

QList<State> onAir()
{
    return {
        {u"news, lit with its lower third"_s,
         {post(u"/tower/lit"_s)},
         {isRed(lowerThird), showsTheChannel(), hasText(lowerThird, u"LIVE"_s), hasText(lowerThird, program),
          hasText(lowerThird, u"Tonight: the fog horn"_s)}},
        {u"news, lit"_s,
         {},
         {hasNoColour(u"the lower third is not shown"_s, lowerThird, onAirRed, 0.0005), showsTheChannel(),
          hasText(firstPlate, u"5 O'Clock News"_s)}},
        {u"news, retuning"_s,
         {addFault(u"/live/"_s, u"delay"_s, {{u"ms"_s, 60000}}), press(u"right"_s), press(u"select"_s)},
         {hasText(card, checking), isRed(secondPlate)}},
        {u"news, another station lit"_s,
         {post(u"/fault/clear"_s)},
         {isRed(lowerThird), showsTheChannel(), hasText(lowerThird, u"PARKS"_s)}},
        {u"news, darkened"_s,
         {addFault(u"/live/"_s, u"error"_s, {{u"status"_s, 404}})},
         {hasText(card, watching), hasText(card, u"5 O'CLOCK NEWS"_s)}},
        {u"front, back from the news"_s,
         {press(u"back"_s)},
         {hasText(area::rightDoor, u"every one plays right here"_s), hasNoText(area::everything, watching)}},
        {u"news, lit with nothing to say"_s,
         {resetHub(), setOneStation(), setNews(noTexts()), post(u"/tower/lit"_s), press(u"play/pause"_s),
          press(u"select"_s)},
         {isRed(lowerThird), showsTheChannel(), hasText(lowerThird, u"LIVE"_s),
          hasText(lowerThird, u"5 O'Clock News"_s), hasNoText(lowerThird, u"Tonight"_s)}},
        {u"news, lit with long texts"_s,
         {post(u"/tower/dark"_s), setNews(longTexts()), waitFor(hasText(card, u"Joint special session"_s)),
          post(u"/tower/lit"_s)},
         {isRed(tallLowerThird), hasText(tallLowerThird, u"Joint special session of the harbour board"_s)}},
        {u"news, lit with an endless title"_s,
         {post(u"/tower/dark"_s), post(u"/status/reset"_s), setTwoStations(), setNews(endlessTexts()),
          waitFor(hasText(strip, u"Parks"_s)), post(u"/tower/lit"_s)},
         {isRed(tallLowerThird), hasText(tallLowerThird, u"LIVE"_s), hasText(tallLowerThird, u"commission of parks"_s),
          hasText(firstPlate, u"5 O'Clock News"_s)}},
        {u"front, after the news"_s, {press(u"back"_s)}, {hasText(area::rightDoor, u"every one plays right here"_s)}},
    };
}

} // namespace

QList<State> newsStates()
{
    return onStandby() + withStations() + onAir();
}

} // namespace quillmere::tour
