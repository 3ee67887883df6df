#include "ShopSteps.h"
#include "Sights.h"
#include "Steps.h"

using namespace Qt::StringLiterals;

namespace tour {

namespace {

constexpr QRectF header(90, 40, 1740, 160);
constexpr QRectF passages(100, 200, 1720, 860);
constexpr QRectF firstBar(110, 230, 6, 120); // beside the uppermost passage
constexpr QRectF wheel(927, 560, 66, 66);
constexpr QRectF message(200, 480, 1520, 260);
constexpr QRectF button(780, 620, 360, 90);
const QColor teal(31, 111, 139);
const QColor inkNavy(11, 16, 38);

constexpr QRectF longHeader(90, 40, 1740, 500);
const QString tape = u"City Council Regular Meeting"_s;
const QString transcripts = u"/api/meetings/"_s;
const QString opening = u"This meeting will come to order"_s;

/** From the tape's own screen, the focus on its first button. */
QList<Step> openTranscript()
{
    return {press(u"right"_s), press(u"select"_s)};
}

Sight isOfTheTape()
{
    return reads(header, tape);
}

Sight offersTheWayBack()
{
    return reads(button, u"Back to the tape"_s);
}

QList<State> reading()
{
    return {
        {u"shop, before the transcripts"_s, {calm(), switchOn(), openShop()}, {countsStock()}},
        {u"detail, before the transcript"_s,
         {walkTo(tape), press(u"select"_s)},
         {reads(shop::detailTitle, tape), reads(shop::detailFacts, u"Read the transcript"_s)}},
        {u"transcript, loading"_s,
         QList<Step>{fault(transcripts, u"delay"_s, {{u"ms"_s, 60000}})} + openTranscript(),
         {isOfTheTape(), reads(passages, u"Pulling the transcript"_s),
          shows(u"the wheel turns"_s, wheel, inkNavy, 0.01)}},
        {u"transcript, beginning"_s,
         {press(u"back"_s), calm(), press(u"select"_s)},
         {isOfTheTape(), reads(header, u"THE SPOKEN RECORD"_s), reads(header, u"CITY COUNCIL"_s),
          reads(header, u"words"_s), reads(passages, opening),
          shows(u"the first passage has the focus"_s, firstBar, teal, 0.4)}},
        {u"transcript, the third passage"_s,
         {press(u"down"_s, 2)},
         {reads(passages, opening), showsNot(u"the first passage has the focus"_s, firstBar, teal, 0.1)}},
        {u"transcript, the next page"_s,
         {press(u"page down"_s)},
         {isOfTheTape(), readsNot(passages, opening),
          shows(u"its first passage has the focus"_s, firstBar, teal, 0.4)}},
        {u"transcript, turned back"_s,
         {press(u"page up"_s)},
         {looksAsIn(u"transcript, beginning"_s, header), reads(passages, opening),
          shows(u"the first passage has the focus"_s, firstBar, teal, 0.4)}},
        {u"detail, back from the transcript"_s,
         {press(u"back"_s)},
         {reads(shop::detailTitle, tape), reads(shop::detailFacts, u"self-hosted"_s)}},
    };
}

QList<State> nothingToRead()
{
    return {
        {u"transcript, a silent tape"_s,
         QList<Step>{press(u"back"_s), walkTo(u"A Silent Tape"_s), press(u"select"_s)} + openTranscript(),
         {reads(header, u"A Silent Tape"_s), reads(message, u"No transcript has been harvested for this tape yet."_s),
          offersTheWayBack()}},
        {u"transcript, the hub has none to give"_s,
         QList<Step>{press(u"back"_s, 2), walkTo(u"The Transcriber Is Ill"_s), press(u"select"_s)} + openTranscript(),
         {reads(message, u"Couldn't reach the transcript."_s), offersTheWayBack()}},
        {u"detail, back by the button"_s,
         {press(u"select"_s)},
         {reads(shop::detailTitle, u"The Transcriber Is Ill"_s), reads(shop::detailFacts, u"self-hosted"_s)}},
        {u"transcript, a title of 300 characters"_s,
         QList<Step>{press(u"back"_s), walkTo(u"On the Naming of the Bridge"_s), press(u"select"_s)} + openTranscript(),
         {reads(longHeader, u"THE SPOKEN RECORD"_s), reads(longHeader, u"the Bridge That R."_s),
          reads(longHeader, u"words"_s), reads(passages, u"I call the regular meeting to order"_s)}},
    };
}

} // namespace

QList<State> transcriptStates()
{
    return reading() + nothingToRead();
}

} // namespace tour
