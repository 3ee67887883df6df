#include "Checks.h"
#include "ShopSteps.h"
#include "Steps.h"

using namespace Qt::StringLiterals;

namespace quillmere::tour {

namespace {

constexpr QRectF spinner(80, 318, 66, 80);
constexpr QRectF results(90, 380, 1740, 440);
constexpr QRectF besideTheThird(868, 752, 10, 16);
const QColor inkNavy(11, 16, 38);
const QColor cream(247, 244, 236);

/** Types a word on a physical keyboard. */
Step type(const QString& word)
{
    return [=](TourContext& context) {
        for (const QChar letter : word)
            context.viewer.press(QString(letter));
    };
}

QList<State> typedWithRemote()
{
    return {
        {u"shop, before the search"_s, {resetHub(), switchOn(), openShop()}, {showsStock()}},
        {u"search, nothing typed"_s,
         {press(u"select"_s)},
         {hasText(shop::searchHeader, u"Search the stacks"_s),
          hasText(shop::searchHeader, u"A name, a street, a motion — titles and spoken transcripts both."_s),
          hasText(shop::searchField, u"Search"_s)}},
        {u"search, the keyboard"_s,
         {press(u"select"_s)},
         {hasText(shop::keyboard, u"Delete"_s), hasText(shop::keyboard, u"Clear"_s),
          hasText(shop::keyboard, u"Space"_s)}},
        {u"search, accented letters"_s,
         {pressRapidly(u"right"_s, 9), press(u"down"_s, 2), press(u"select"_s)},
         {differsFromPictureOf(u"search, the keyboard"_s, shop::keyboard, 0.01), hasText(shop::keyboard, u"Space"_s)}},
        {u"search, punctuation"_s,
         {press(u"down"_s), press(u"select"_s)},
         {differsFromPictureOf(u"search, accented letters"_s, shop::keyboard, 0.01),
          hasText(shop::keyboard, u"Space"_s)}},
        {u"search, the keyboard is gone"_s,
         {press(u"back"_s)},
         {equalsPictureOf(u"search, nothing typed"_s, area::everything)}},
    };
}

QList<State> typedOnKeyboard()
{
    return {
        {u"search, under way"_s,
         {addFault(u"/api/tv/tapes"_s, u"delay"_s, {{u"ms"_s, 60000}}), type(u"fog"_s), press(u"Return"_s)},
         {hasText(shop::searchField, u"fog"_s), hasColour(u"the spinner is shown"_s, spinner, cream, 0.01)}},
        {u"search, tapes found"_s,
         {post(u"/fault/clear"_s)},
         {hasText(shop::searchOutcome, u"tapes found"_s),
          hasColour(u"the third tape's bar code extends beyond its box"_s, besideTheThird, inkNavy, 0.3)}},
        {u"search, a found tape"_s,
         {press(u"down"_s), press(u"right"_s)},
         {differsFromPictureOf(u"search, tapes found"_s, results, 0.01)}},
        {u"detail, a found tape"_s, {press(u"select"_s)}, {hasTitle(), hasText(shop::detailFacts, u"self-hosted"_s)}},
        {u"search, back from a found tape"_s,
         {press(u"back"_s)},
         {equalsPictureOf(u"search, a found tape"_s, area::everything)}},
        {u"search, no match"_s,
         {press(u"up"_s), type(u"less"_s), press(u"Return"_s)},
         {hasText(shop::searchOutcome, u"No tapes match “fogless”. Try a different word."_s)}},
        {u"shop, back from the search"_s,
         {press(u"back"_s)},
         {equalsPictureOf(u"shop, before the search"_s, area::everything)}},
    };
}

} // namespace

QList<State> searchStates()
{
    return typedWithRemote() + typedOnKeyboard();
}

} // namespace quillmere::tour
