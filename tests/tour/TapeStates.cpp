#include "Checks.h"
#include "ShopSteps.h"
#include "Steps.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere::tour {

namespace {

constexpr QRectF message(200, 380, 1520, 320); // the failure panel, in the middle of the screen
constexpr QRectF button(800, 592, 320, 60);    // inside the panel's button, so that it is readable over any picture
constexpr QRectF transport(0, 700, 1920, 380);
constexpr QRectF barAndTimes(60, 900, 1800, 130);
constexpr QRectF information(80, 60, 1760, 500);
constexpr QRectF spinner(918, 498, 84, 84);
const QColor cream(247, 244, 236);

const QString title = u"City Council Regular Meeting"_s;
const QString back = u"Back to the shelves"_s;
const QString streams = u"/recordings/"_s;

/** Only on a black background: a playing tape shows its position in the same area. */
Check isLoading()
{
    return hasColour(u"the spinner is shown"_s, spinner, cream, 0.01);
}

Check isStill()
{
    return {u"nothing moves"_s, [](TourContext& context, const QImage&) {
                return context.viewer.screen().waitUntilStill(700ms, 1s).has_value();
            }};
}

QList<State> playing()
{
    return {
        {u"shop, before the tapes"_s, {resetHub(), switchOn(), openShop()}, {showsStock()}},
        {u"detail, before the tape"_s,
         {moveFocusTo(title), press(u"select"_s)},
         {hasText(shop::detailTitle, title), hasText(shop::detailFacts, u"BONUS MATERIALS"_s)}},
        {u"tape, loading"_s, {addFault(streams, u"delay"_s, {{u"ms"_s, 60000}}), press(u"select"_s)}, {isLoading()}},
        {u"tape, loading, with the transport"_s, {press(u"up"_s)}, {isLoading(), hasText(transport, title)}},
        {u"tape, playing"_s, {resetHub()}, {isPlaying()}},
        {u"tape, three seconds on"_s, {}, {hasPlayedSince(u"tape, playing"_s, 3)}},
        {u"tape, skipped forward"_s,
         {press(u"right"_s)},
         {hasText(transport, title), hasText(barAndTimes, u"Playing"_s)}},
        {u"tape, the transport is gone"_s, {}, {hasPlayedSince(u"tape, three seconds on"_s, 10)}},
        {u"tape, held"_s,
         {press(u"play/pause"_s)},
         {hasText(transport, title), hasText(barAndTimes, u"Paused"_s), isStill()}},
        {u"tape, forward"_s, {keyDown(u"forward"_s)}, {hasText(barAndTimes, u"Fast forward"_s)}},
        {u"tape, back again"_s, {keyUp(u"forward"_s), keyDown(u"rewind"_s)}, {hasText(barAndTimes, u"Rewind"_s)}},
        {u"tape, its information"_s,
         {keyUp(u"rewind"_s), press(u"down"_s)},
         {hasText(information, title), hasText(information, u"Rewindery Home Video"_s)}},
        {u"tape, playing again"_s,
         {press(u"up"_s), press(u"XF86AudioPrev"_s), press(u"play/pause"_s)},
         {hasPlayedSince(u"tape, playing"_s, 1)}},
        {u"detail, back from the tape"_s,
         {press(u"back"_s)},
         {equalsPictureOf(u"detail, before the tape"_s, area::everything)}},
    };
}

QList<State> failures()
{
    const QString noCopy = u"This tape has no playable copy on the shelf."_s;
    return {
        {u"tape, no copy"_s,
         {press(u"back"_s), moveFocusTo(u"Never Copied"_s), press(u"select"_s, 2)},
         {hasText(message, u"TRACKING"_s), hasText(message, noCopy), hasText(message, back)}},
        {u"detail, back from the tape without a copy"_s,
         {press(u"select"_s)},
         {hasText(shop::detailTitle, u"Never Copied"_s), hasNoText(message, noCopy)}},
        {u"tape, stream not found"_s,
         {press(u"back"_s), moveFocusTo(u"Lost in the Flood"_s), press(u"select"_s, 2)},
         {hasText(message, u"TRACKING"_s), hasText(message, u"The hub answered 404."_s), hasText(message, back)}},
        {u"detail, back from the lost tape"_s,
         {press(u"back"_s)},
         {hasText(shop::detailTitle, u"Lost in the Flood"_s)}},
        {u"tape, nonsense for a stream"_s,
         {press(u"back"_s), addFault(streams, u"garbage"_s), moveFocusTo(title), press(u"select"_s, 2)},
         {hasText(message, u"What the hub sent can't be played."_s), hasText(message, back)}},
        {u"tape, the hub is gone"_s,
         {press(u"select"_s), resetHub(), stopHub(), press(u"select"_s)},
         {hasText(message, u"The connection was refused."_s), hasText(message, back)}},
        {u"tape, the hub goes while it plays"_s,
         {press(u"select"_s), startHub(), addFault(u"/recordings/[a-z-]*/segment-001.ts"_s, u"stall"_s),
          press(u"select"_s), waitFor(isPlaying()), stopHub(), waitFor(hasText(button, back))},
         {hasText(button, back)}},
        {u"front, back from the tapes"_s,
         {startHub(), press(u"back"_s, 3)},
         {hasText(area::rightDoor, u"every one plays right here"_s)}},
    };
}

} // namespace

QList<State> tapeStates()
{
    return playing() + failures();
}

} // namespace quillmere::tour
