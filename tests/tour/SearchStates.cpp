#include "ShopSteps.h"
#include "Sights.h"
#include "Steps.h"

using namespace Qt::StringLiterals;

namespace tour {

namespace {

constexpr QRectF wheel(80, 318, 66, 80);
constexpr QRectF results(90, 380, 1740, 440);
constexpr QRectF besideTheThird(868, 752, 10, 16);
const QColor inkNavy(11, 16, 38);
const QColor cream(247, 244, 236);

/** On a real keyboard. */
Step type(const QString& word)
{
    return [=](Stage& stage) {
        for (const QChar letter : word)
            stage.room.press(QString(letter));
    };
}

QList<State> byTheRemote()
{
    return {
        {u"shop, before the search"_s, {calm(), switchOn(), openShop()}, {countsStock()}},
        {u"search, nothing typed"_s,
         {press(u"select"_s)},
         {reads(shop::searchHeader, u"Search the stacks"_s),
          reads(shop::searchHeader, u"A name, a street, a motion — titles and spoken transcripts both."_s),
          reads(shop::searchField, u"Search"_s)}},
        {u"search, the keyboard"_s,
         {press(u"select"_s)},
         {reads(shop::keyboard, u"Delete"_s), reads(shop::keyboard, u"Clear"_s), reads(shop::keyboard, u"Space"_s)}},
        {u"search, accented letters"_s,
         {pressRapidly(u"right"_s, 9), press(u"down"_s, 2), press(u"select"_s)},
         {differsFrom(u"search, the keyboard"_s, shop::keyboard, 0.01), reads(shop::keyboard, u"Space"_s)}},
        {u"search, punctuation"_s,
         {press(u"down"_s), press(u"select"_s)},
         {differsFrom(u"search, accented letters"_s, shop::keyboard, 0.01), reads(shop::keyboard, u"Space"_s)}},
        {u"search, the keyboard is gone"_s,
         {press(u"back"_s)},
         {looksAsIn(u"search, nothing typed"_s, area::everything)}},
    };
}

QList<State> byTheKeyboard()
{
    return {
        {u"search, under way"_s,
         {fault(u"/api/tv/tapes"_s, u"delay"_s, {{u"ms"_s, 60000}}), type(u"fog"_s), press(u"Return"_s)},
         {reads(shop::searchField, u"fog"_s), shows(u"the wheel turns"_s, wheel, cream, 0.01)}},
        {u"search, tapes found"_s,
         {order(u"/fault/clear"_s)},
         {reads(shop::searchOutcome, u"tapes found"_s),
          shows(u"the third tape's bar code runs past its box"_s, besideTheThird, inkNavy, 0.3)}},
        {u"search, a found tape"_s,
         {press(u"down"_s), press(u"right"_s)},
         {differsFrom(u"search, tapes found"_s, results, 0.01)}},
        {u"detail, a found tape"_s,
         {press(u"select"_s)},
         {titleIsWritten(), reads(shop::detailFacts, u"self-hosted"_s)}},
        {u"search, back from a found tape"_s,
         {press(u"back"_s)},
         {looksAsIn(u"search, a found tape"_s, area::everything)}},
        {u"search, no match"_s,
         {press(u"up"_s), type(u"less"_s), press(u"Return"_s)},
         {reads(shop::searchOutcome, u"No tapes match “fogless”. Try a different word."_s)}},
        {u"shop, back from the search"_s,
         {press(u"back"_s)},
         {looksAsIn(u"shop, before the search"_s, area::everything)}},
    };
}

} // namespace

QList<State> searchStates()
{
    return byTheRemote() + byTheKeyboard();
}

} // namespace tour
