#include "ListSteps.h"
#include "Sights.h"
#include "Steps.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tour {

namespace {

constexpr QRectF message(300, 400, 1320, 280); // in the middle of a black screen

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
        {u"list, before the tape"_s, {walkTo(u"Council"_s)}, {focusReads(u"Council"_s)}},
        {u"tape, playing"_s, {press(u"select"_s)}, {plays()}},
        {u"tape, three seconds on"_s, {}, {playsOnFrom(u"tape, playing"_s, 3)}},
        {u"tape, held"_s, {press(u"play/pause"_s)}, {plays(), standsStill()}},
        {u"tape, playing again"_s, {press(u"play/pause"_s)}, {playsOnFrom(u"tape, held"_s, 1)}},
        {u"list, back at the tape"_s, {press(u"back"_s)}, {looksAsIn(u"list, before the tape"_s, area::everything)}},
    };
}

QList<State> inTrouble()
{
    return {
        {u"tape, no copy"_s,
         {walkTo(u"Never Copied"_s), press(u"select"_s)},
         {reads(message, u"This tape has no playable copy on the shelf."_s)}},
        {u"list, back at the tape without a copy"_s, {press(u"back"_s)}, {focusReads(u"Never Copied"_s)}},
        {u"tape, stream not found"_s,
         {walkTo(u"Lost in the Flood"_s), press(u"select"_s)},
         {reads(message, u"The tape wouldn't play. It may still be being archived."_s)}},
        {u"list, back at the lost tape"_s, {press(u"back"_s)}, {focusReads(u"Lost in the Flood"_s)}},
        {u"front, back from the shop"_s,
         {press(u"back"_s)},
         {looksAsIn(u"front, focus on the shop"_s, area::everything)}},
        {u"switched off"_s, {press(u"back"_s), press(u"back"_s)}, {hasEnded()}},
        {u"front, no tapes to be had"_s,
         {fault(u"/api/tv/tapes"_s, u"error"_s, {{u"status"_s, 500}}), switchOn()},
         {reads(area::statusLine, u"The hub answered 500."_s)}},
        {u"list, empty"_s,
         {press(u"right"_s), press(u"select"_s)},
         {hasNoRows(), readsNot(area::rightDoor, u"REWINDERY"_s)}},
        {u"front, back from the empty shop"_s, {press(u"back"_s)}, {reads(area::rightDoor, u"REWINDERY"_s)}},
    };
}

} // namespace

QList<State> tapeStates()
{
    return playing() + inTrouble();
}

} // namespace tour
