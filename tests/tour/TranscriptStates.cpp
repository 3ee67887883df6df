#include "Checks.h"
#include "ShopSteps.h"
#include "Steps.h"

using namespace Qt::StringLiterals;

namespace quillmere::tour {

namespace {

constexpr QRectF header(90, 40, 1740, 160);
constexpr QRectF passages(100, 200, 1720, 860);
constexpr QRectF firstBar(110, 230, 6, 120); // beside the first visible passage
constexpr QRectF spinner(927, 560, 66, 66);
constexpr QRectF message(200, 480, 1520, 260);
constexpr QRectF button(780, 620, 360, 90);
const QColor teal(31, 111, 139);
const QColor inkNavy(11, 16, 38);

constexpr QRectF longHeader(90, 40, 1740, 500);
const QString tape = u"City Council Regular Meeting"_s;
const QString transcripts = u"/api/meetings/"_s;
const QString opening = u"This meeting will come to order"_s;

/** From a tape's screen with the focus on its first button. */
QList<Step> openTranscript()
{
    return {press(u"right"_s), press(u"select"_s)};
}

Check hasTitleOfTape()
{
    return hasText(header, tape);
}

Check hasBackButton()
{
    return hasText(button, u"Back to the tape"_s);
}

QList<State> reading()
{
    return {
        {u"shop, before the transcripts"_s, {resetHub(), switchOn(), openShop()}, {showsStock()}},
        {u"detail, before the transcript"_s,
         {moveFocusTo(tape), press(u"select"_s)},
         {hasText(shop::detailTitle, tape), hasText(shop::detailFacts, u"Read the transcript"_s)}},
        {u"transcript, loading"_s,
         QList<Step>{addFault(transcripts, u"delay"_s, {{u"ms"_s, 60000}})} + openTranscript(),
         {hasTitleOfTape(), hasText(passages, u"Pulling the transcript"_s),
          hasColour(u"the spinner is shown"_s, spinner, inkNavy, 0.01)}},
        {u"transcript, beginning"_s,
         {press(u"back"_s), resetHub(), press(u"select"_s)},
         {hasTitleOfTape(), hasText(header, u"THE SPOKEN RECORD"_s), hasText(header, u"CITY COUNCIL"_s),
          hasText(header, u"words"_s), hasText(passages, opening),
          hasColour(u"the first passage has the focus"_s, firstBar, teal, 0.4)}},
        {u"transcript, the third passage"_s,
         {press(u"down"_s, 2)},
         {hasText(passages, opening), hasNoColour(u"the first passage has the focus"_s, firstBar, teal, 0.1)}},
        {u"transcript, the next page"_s,
         {press(u"page down"_s)},
         {hasTitleOfTape(), hasNoText(passages, opening),
          hasColour(u"its first passage has the focus"_s, firstBar, teal, 0.4)}},
        {u"transcript, turned back"_s,
         {press(u"page up"_s)},
         {equalsPictureOf(u"transcript, beginning"_s, header), hasText(passages, opening),
          hasColour(u"the first passage has the focus"_s, firstBar, teal, 0.4)}},
        {u"detail, back from the transcript"_s,
         {press(u"back"_s)},
         {hasText(shop::detailTitle, tape), hasText(shop::detailFacts, u"self-hosted"_s)}},
    };
}

QList<State> nothingToRead()
{
    return {
        {u"transcript, a silent tape"_s,
         QList<Step>{press(u"back"_s), moveFocusTo(u"A Silent Tape"_s), press(u"select"_s)} + openTranscript(),
         {hasText(header, u"A Silent Tape"_s),
          hasText(message, u"No transcript has been harvested for this tape yet."_s), hasBackButton()}},
        {u"transcript, the hub has none to give"_s,
         QList<Step>{press(u"back"_s, 2), moveFocusTo(u"The Transcriber Is Ill"_s), press(u"select"_s)} +
             openTranscript(),
         {hasText(message, u"Couldn't reach the transcript."_s), hasBackButton()}},
        {u"detail, back by the button"_s,
         {press(u"select"_s)},
         {hasText(shop::detailTitle, u"The Transcriber Is Ill"_s), hasText(shop::detailFacts, u"self-hosted"_s)}},
        {u"transcript, a title of 300 characters"_s,
         QList<Step>{press(u"back"_s), moveFocusTo(u"On the Naming of the Bridge"_s), press(u"select"_s)} +
             openTranscript(),
         {hasText(longHeader, u"THE SPOKEN RECORD"_s), hasText(longHeader, u"the Bridge That R."_s),
          hasText(longHeader, u"words"_s), hasText(passages, u"I call the regular meeting to order"_s)}},
    };
}

} // namespace

QList<State> transcriptStates()
{
    return reading() + nothingToRead();
}

} // namespace quillmere::tour
