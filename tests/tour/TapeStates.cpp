#include "ShopSteps.h"
#include "Sights.h"
#include "Steps.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tour {

namespace {

constexpr QRectF message(300, 400, 1320, 280); // in the middle of a black screen
constexpr QRectF transport(0, 700, 1920, 380);

Sight standsStill()
{
    return {u"nothing moves"_s,
            [](Stage& stage, const QImage&) { return stage.room.screen().waitUntilSettled(700ms, 1s).has_value(); }};
}

Sight hasEnded()
{
    return {u"the program has ended without complaint"_s,
            [](Stage& stage, const QImage&) { return stage.room.set().process().waitForEnd(3s) == 0; }};
}

QList<State> playing()
{
    return {
        {u"detail, before the tape"_s,
         {press(u"back"_s), walkTo(u"City Council Regular Meeting"_s), press(u"select"_s)},
         {reads(shop::detailTitle, u"City Council Regular Meeting"_s), reads(shop::detailFacts, u"BONUS MATERIALS"_s)}},
        {u"tape, playing"_s, {press(u"select"_s)}, {plays()}},
        {u"tape, three seconds on"_s, {}, {playsOnFrom(u"tape, playing"_s, 3)}},
        {u"tape, held"_s,
         {press(u"play/pause"_s)},
         {reads(transport, u"City Council Regular Meeting"_s), standsStill()}},
        {u"tape, playing again"_s, {press(u"play/pause"_s)}, {playsOnFrom(u"tape, three seconds on"_s, 1)}},
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
         {reads(message, noCopy)}},
        {u"detail, back from the tape without a copy"_s,
         {press(u"back"_s)},
         {reads(shop::detailTitle, u"Never Copied"_s), readsNot(message, noCopy)}},
        {u"tape, stream not found"_s,
         {press(u"back"_s), walkTo(u"Lost in the Flood"_s), press(u"select"_s, 2)},
         {reads(message, u"The hub answered 404."_s)}},
        {u"detail, back from the lost tape"_s, {press(u"back"_s)}, {reads(shop::detailTitle, u"Lost in the Flood"_s)}},
        {u"front, back from the shop"_s,
         {press(u"back"_s, 2)},
         {looksAsIn(u"front, focus on the shop"_s, area::everything)}},
        {u"switched off"_s, {press(u"back"_s), press(u"back"_s)}, {hasEnded()}},
    };
}

} // namespace

QList<State> tapeStates()
{
    return playing() + inTrouble();
}

} // namespace tour
