#include "Checks.h"
#include "Steps.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace quillmere::tour {

namespace {

const QColor onAirRed(217, 43, 43);
const QColor yellowBar(167, 167, 4); // the bars are drawn slightly transparent
constexpr QRectF leftDoorsLift(292, 420, 12,
                               360); // beside the unfocused door; the focused door, which is larger, covers it
constexpr QRectF rightDoorsLift(1616, 420, 12, 360);
const QString status = u"/api/tv/status"_s;
constexpr qint64 leftTape = 7238; // id of the tape "Board of Trustees - Noise after Ten"
// Five lines on the door.
const QString longTitle =
    u"Joint session of the harbour board, the water commission, the bridge committee and the town "
    "council on the matter of the fog horn, of those whom it wakes, and of everybody else to the "
    "very last word"_s;
const QString everyTapePlays = u"every one plays right here"_s;

QJsonObject news(const QJsonObject& amendment)
{
    return {{u"news"_s, amendment}};
}

QJsonObject shop(int tapes, int markets)
{
    QJsonArray list;
    for (int i = 0; i < markets; ++i)
        list.append(QJsonObject{{u"slug"_s, u"town-%1"_s.arg(i)}, {u"name"_s, u"Town %1"_s.arg(i)}});
    return {{u"rewindery"_s, QJsonObject{{u"tapes"_s, tapes}, {u"markets"_s, list}}}};
}

/** The shop's door shows the hub's figures. */
Check readsFigures()
{
    return {u"the shop's door shows the hub's figures"_s, [](TourContext& context, const QImage& picture) {
                const QJsonObject summary = context.hub.fetch(status).value(u"rewindery"_s).toObject();
                const QString text = u"%1 tapes in stock · %2 markets · every one plays right here"_s
                                         .arg(summary.value(u"tapes"_s).toInteger())
                                         .arg(summary.value(u"markets"_s).toArray().size());
                return TextReader::contains(context.viewer.reader().read(picture, area::rightDoor), text);
            }};
}

Check lampIsLit()
{
    return hasColour(u"the lamp and LIVE are red"_s, area::leftDoor, onAirRed, 0.004);
}

Check lampIsDark()
{
    return hasNoColour(u"nothing on the news door is red"_s, area::leftDoor, onAirRed, 0.001);
}

Check bars()
{
    return hasColour(u"colour bars are on the small television"_s, area::leftDoor, yellowBar, 0.01);
}

QList<State> starting()
{
    return {
        {u"front, tuning in"_s,
         {resetHub(), addFault(status, u"delay"_s, {{u"ms"_s, 20000}}), switchOn({{leftTape, 83.4}})},
         {hasText(area::statusLine, u"Tuning in…"_s), hasText(area::rightDoor, u"Checking what's on the shelf…"_s),
          hasText(area::leftDoor, u"The tower is dark. Colour bars and a countdown until it isn't."_s), bars()}},
        {u"front, tower dark"_s,
         {post(u"/fault/clear"_s)},
         {readsFigures(), hasText(area::leftDoor, u"Next broadcast · The Five O'Clock Record"_s),
          hasText(area::leftDoor, u"STANDBY"_s), hasText(area::leftDoor, u"OFF AIR"_s), bars(), lampIsDark(),
          hasText(area::statusLine, u"to refresh"_s)}},
        {u"front, focus on the shop"_s,
         {press(u"right"_s)},
         {differsFromPictureOf(u"front, tower dark"_s, leftDoorsLift, 0.5),
          differsFromPictureOf(u"front, tower dark"_s, rightDoorsLift, 0.5)}},
        {u"front, focus on the news"_s,
         {press(u"left"_s)},
         {equalsPictureOf(u"front, tower dark"_s, area::everything)}},
    };
}

QList<State> statusOfHub()
{
    return {
        {u"front, tower lit with a title"_s,
         {post(u"/tower/lit"_s), press(u"play/pause"_s)},
         {hasText(area::leftDoor, u"The Five O'Clock Record"_s), hasNoText(area::leftDoor, u"Next broadcast"_s),
          hasText(area::leftDoor, u"LIVE"_s), lampIsLit()}},
        {u"front, tower lit without a title"_s,
         {post(u"/status"_s, news({{u"program_title"_s, u""_s}})), press(u"play/pause"_s)},
         {hasText(area::leftDoor, u"The tower is lit — tune in."_s), lampIsLit()}},
        {u"front, tower lit with a long title"_s,
         {post(u"/status"_s, news({{u"program_title"_s, longTitle}})), press(u"play/pause"_s)},
         {hasText(area::leftDoor, u"and of everybody else to the very last word"_s), hasText(area::leftDoor, u"LIVE"_s),
          lampIsLit()}},
        {u"front, nothing announced"_s,
         {resetHub(), post(u"/status"_s, news({{u"next_broadcast_label"_s, u""_s}})), press(u"play/pause"_s)},
         {hasText(area::leftDoor, u"Colour bars and a countdown until it isn't."_s), lampIsDark(), readsFigures()}},
        {u"front, one tape and one market"_s,
         {post(u"/status"_s, shop(1, 1)), press(u"play/pause"_s)},
         {hasText(area::rightDoor, u"1 tapes in stock · 1 market · every one plays right here"_s)}},
        {u"front, empty shop"_s,
         {post(u"/status"_s, shop(0, 3)), press(u"play/pause"_s)},
         {hasText(area::rightDoor, u"Checking what's on the shelf…"_s), hasNoText(area::rightDoor, everyTapePlays)}},
    };
}

QList<State> failures()
{
    return {
        {u"front, the hub answers 503"_s,
         {resetHub(), addFault(u"/api/tv"_s, u"error"_s, {{u"status"_s, 503}}), press(u"play/pause"_s)},
         {hasText(area::statusLine, u"The hub answered 503."_s),
          hasColour(u"the line is red"_s, area::statusLine, onAirRed, 0.002)}},
        {u"front, the hub sends nonsense"_s,
         {resetHub(), addFault(u"/api/tv"_s, u"garbage"_s), press(u"play/pause"_s)},
         {hasText(area::statusLine, u"The hub sent something this app couldn't read."_s),
          hasColour(u"the line is red"_s, area::statusLine, onAirRed, 0.002)}},
        {u"front, the hub refuses"_s,
         {resetHub(), addFault(u"/api/tv"_s, u"refuse"_s), press(u"play/pause"_s)},
         {hasColour(u"the line is red"_s, area::statusLine, onAirRed, 0.002),
          hasNoText(area::statusLine, u"couldn't read"_s), hasNoText(area::statusLine, u"to refresh"_s)}},
        {u"front, refreshed"_s,
         {resetHub(), press(u"play/pause"_s)},
         {hasText(area::statusLine, u"to refresh"_s), readsFigures(),
          hasNoColour(u"the line is no longer red"_s, area::statusLine, onAirRed, 0.0005)}},
        {u"front, back pressed once"_s, {press(u"back"_s)}, {hasText(area::notice, u"Press back again"_s)}},
        {u"front, the notice is gone"_s,
         {},
         {hasNoText(area::notice, u"Press back again"_s), equalsPictureOf(u"front, refreshed"_s, area::everything)}},
    };
}

} // namespace

QList<State> frontStates()
{
    return starting() + statusOfHub() + failures();
}

QList<State> allStates()
{
    // The states of the shop and of tapes come before the program is first restarted, because they need its first
    // resume positions.
    return frontStates() + shopStates() + detailStates() + newsStates() + panelStates() + tapeStates() +
           transcriptStates() + searchStates();
}

} // namespace quillmere::tour
