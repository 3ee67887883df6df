#include "ShopSteps.h"
#include "Sights.h"
#include "Steps.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tour {

namespace {

constexpr QRectF message(200, 380, 1520, 320); // the failure panel, in the middle of the screen
constexpr QRectF button(800, 592, 320, 60);    // within the panel's, to be read on any picture
constexpr QRectF transport(0, 700, 1920, 380);
constexpr QRectF barAndTimes(60, 900, 1800, 130);
constexpr QRectF information(80, 60, 1760, 500);
constexpr QRectF wheel(918, 498, 84, 84);
const QColor cream(247, 244, 236);

const QString title = u"City Council Regular Meeting"_s;
const QString back = u"Back to the shelves"_s;
const QString streams = u"/recordings/"_s;

/** On black only: a playing tape writes its position there. */
Sight waits()
{
    return shows(u"the wheel turns"_s, wheel, cream, 0.01);
}

Sight standsStill()
{
    return {u"nothing moves"_s,
            [](Stage& stage, const QImage&) { return stage.room.screen().waitUntilSettled(700ms, 1s).has_value(); }};
}

QList<State> playing()
{
    return {
        {u"shop, before the tapes"_s, {calm(), switchOn(), openShop()}, {countsStock()}},
        {u"detail, before the tape"_s,
         {walkTo(title), press(u"select"_s)},
         {reads(shop::detailTitle, title), reads(shop::detailFacts, u"BONUS MATERIALS"_s)}},
        {u"tape, loading"_s, {fault(streams, u"delay"_s, {{u"ms"_s, 60000}}), press(u"select"_s)}, {waits()}},
        {u"tape, loading, with the transport"_s, {press(u"up"_s)}, {waits(), reads(transport, title)}},
        {u"tape, playing"_s, {calm()}, {plays()}},
        {u"tape, three seconds on"_s, {}, {playsOnFrom(u"tape, playing"_s, 3)}},
        {u"tape, skipped forward"_s, {press(u"right"_s)}, {reads(transport, title), reads(barAndTimes, u"Playing"_s)}},
        {u"tape, the transport is gone"_s, {}, {playsOnFrom(u"tape, three seconds on"_s, 10)}},
        {u"tape, held"_s,
         {press(u"play/pause"_s)},
         {reads(transport, title), reads(barAndTimes, u"Paused"_s), standsStill()}},
        {u"tape, forward"_s, {pushDown(u"forward"_s)}, {reads(barAndTimes, u"Fast forward"_s)}},
        {u"tape, back again"_s, {letGo(u"forward"_s), pushDown(u"rewind"_s)}, {reads(barAndTimes, u"Rewind"_s)}},
        {u"tape, its information"_s,
         {letGo(u"rewind"_s), press(u"down"_s)},
         {reads(information, title), reads(information, u"Rewindery Home Video"_s)}},
        {u"tape, playing again"_s,
         {press(u"up"_s), press(u"XF86AudioPrev"_s), press(u"play/pause"_s)},
         {playsOnFrom(u"tape, playing"_s, 1)}},
        {u"detail, back from the tape"_s,
         {press(u"back"_s)},
         {looksAsIn(u"detail, before the tape"_s, area::everything)}},
    };
}

QList<State> inTrouble()
{
    const QString noCopy = u"This tape has no playable copy on the shelf."_s;
    return {
        {u"tape, no copy"_s,
         {press(u"back"_s), walkTo(u"Never Copied"_s), press(u"select"_s, 2)},
         {reads(message, u"TRACKING"_s), reads(message, noCopy), reads(message, back)}},
        {u"detail, back from the tape without a copy"_s,
         {press(u"select"_s)},
         {reads(shop::detailTitle, u"Never Copied"_s), readsNot(message, noCopy)}},
        {u"tape, stream not found"_s,
         {press(u"back"_s), walkTo(u"Lost in the Flood"_s), press(u"select"_s, 2)},
         {reads(message, u"TRACKING"_s), reads(message, u"The hub answered 404."_s), reads(message, back)}},
        {u"detail, back from the lost tape"_s, {press(u"back"_s)}, {reads(shop::detailTitle, u"Lost in the Flood"_s)}},
        {u"tape, nonsense for a stream"_s,
         {press(u"back"_s), fault(streams, u"garbage"_s), walkTo(title), press(u"select"_s, 2)},
         {reads(message, u"What the hub sent can't be played."_s), reads(message, back)}},
        {u"tape, the hub is gone"_s,
         {press(u"select"_s), calm(), stopHub(), press(u"select"_s)},
         {reads(message, u"The connection was refused."_s), reads(message, back)}},
        {u"tape, the hub goes while it plays"_s,
         {press(u"select"_s), startHub(), fault(u"/recordings/[a-z-]*/segment-001.ts"_s, u"stall"_s),
          press(u"select"_s), waitFor(plays()), stopHub(), waitFor(reads(button, back))},
         {reads(button, back)}},
        {u"front, back from the tapes"_s,
         {startHub(), press(u"back"_s, 3)},
         {reads(area::rightDoor, u"every one plays right here"_s)}},
    };
}

} // namespace

QList<State> tapeStates()
{
    return playing() + inTrouble();
}

} // namespace tour
