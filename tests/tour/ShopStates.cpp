#include "Checks.h"
#include "ShopSteps.h"
#include "Steps.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace quillmere::tour {

namespace {

constexpr QRectF panel(200, 200, 1520, 680);     // in the middle of the screen
constexpr QRectF tryAgain(866, 600, 188, 54);    // inside the focused plate
constexpr QRectF searchButton(70, 222, 336, 56); // inside the focused plate
constexpr QRectF allMarkets(440, 226, 190, 46);  // inside its chip
constexpr QRectF firstMarket(680, 226, 170, 46);
constexpr QRectF chips(440, 226, 1400, 46); // inside the market picker
constexpr QRectF firstEnd(417, 214, 3, 70); // at the ends of the market picker
constexpr QRectF lastEnd(1857, 214, 3, 70);
constexpr QRectF firstBox(60, 420, 270, 420); // on the first shelf, before any scrolling
const QColor amber(255, 203, 45);
const QString tapes = u"/api/tv/tapes"_s;
const QString status = u"/status"_s;

QJsonObject oneMarket()
{
    const QJsonObject town{{u"slug"_s, u"brindlemere"_s}, {u"name"_s, u"Brindlemere"_s}, {u"tapes"_s, 1}};
    return {{u"rewindery"_s, QJsonObject{{u"tapes"_s, 1}, {u"markets"_s, QJsonArray{town}}}}};
}

Check isChosen(const QRectF& chip)
{
    return hasColour(u"the market's chip is amber"_s, chip, amber, 0.5);
}

QList<State> alongTheShelves()
{
    return {
        {u"shop, top"_s,
         {openShop()},
         {hasText(shop::header, u"Rewindery"_s), hasText(shop::header, u"open 24 hrs"_s), showsStock(),
          hasText(searchButton, u"Search the stacks"_s), isChosen(allMarkets),
          hasText(shop::header, u"Marrowby Flats"_s)}},
        {u"shop, the first shelf"_s, {press(u"down"_s)}, {differsFromPictureOf(u"shop, top"_s, area::everything)}},
        {u"shop, along a shelf"_s,
         {pressRapidly(u"right"_s, 12)},
         {differsFromPictureOf(u"shop, the first shelf"_s, area::everything, 0.05)}},
        {u"shop, the end of a shelf"_s,
         {pressRapidly(u"right"_s, 40)},
         {differsFromPictureOf(u"shop, along a shelf"_s, area::everything, 0.05)}},
        {u"shop, still the end of the shelf"_s,
         {press(u"right"_s)},
         {equalsPictureOf(u"shop, the end of a shelf"_s, area::everything)}},
        {u"shop, the beginning of the shelf"_s,
         {pressRapidly(u"left"_s, 45)},
         {equalsPictureOf(u"shop, the first shelf"_s, area::everything)}},
        {u"shop, four shelves down"_s,
         {press(u"down"_s, 4)},
         {differsFromPictureOf(u"shop, the first shelf"_s, area::everything, 0.05)}},
        {u"shop, the last shelf and the credits"_s,
         {pressRapidly(u"down"_s, 10)},
         {hasText(QRectF(40, 900, 1500, 160), u"Captain Lowe of the Waterways Production. Be Kind, Please Rewind."_s)}},
        {u"shop, top again"_s, {pressRapidly(u"up"_s, 12)}, {equalsPictureOf(u"shop, top"_s, area::everything)}},
    };
}

/** Chooses a market after moving along a shelf of all markets. The focus starts on the search button. */
QList<State> marketAfterMoveAlongShelf()
{
    return {
        {u"shop, a shelf walked"_s,
         {press(u"down"_s), pressRapidly(u"right"_s, 12)},
         {differsFromPictureOf(u"shop, all markets again"_s, area::everything, 0.05)}},
        {u"shop, a market chosen after a walk"_s,
         {press(u"up"_s), press(u"right"_s, 2), press(u"select"_s)},
         {showsStock(u"brindlemere"_s), equalsPictureOf(u"shop, a market chosen"_s, area::everything)}},
        {u"shop, the first shelf of a market chosen after a walk"_s,
         {press(u"down"_s)},
         {equalsPictureOf(u"shop, a market chosen"_s, firstBox),
          differsFromPictureOf(u"shop, a market chosen"_s, area::everything)}},
    };
}

/** More markets than fit in the picker. */
QList<State> manyMarkets()
{
    const QString plain = u"shop, one market and one tape"_s;
    return {
        {u"front, back from a market"_s,
         {press(u"back"_s), addManyMarkets(), press(u"play/pause"_s)},
         {hasText(area::rightDoor, u"28 markets"_s)}},
        {u"shop, more markets than have room"_s,
         {press(u"select"_s)},
         {showsStock(u"brindlemere"_s), hasColour(u"its chip is amber"_s, chips, amber, 0.05),
          equalsPictureOf(plain, firstEnd), equalsPictureOf(plain, lastEnd)}},
        {u"shop, chips that fade at both ends"_s,
         {pressRapidly(u"right"_s, 1), pressRapidly(u"left"_s, 8)},
         {equalsPictureOf(plain, firstEnd), equalsPictureOf(plain, lastEnd),
          hasNoColour(u"its chip is amber"_s, chips, amber, 0.05)}},
        {u"shop, a far market chosen"_s,
         {pressRapidly(u"right"_s, 40), press(u"left"_s), press(u"select"_s)},
         {showsStock(u"marrowby-flats"_s), equalsPictureOf(plain, firstEnd)}},
        {u"shop, entered again with a far market chosen"_s,
         {press(u"back"_s), press(u"select"_s)},
         {showsStock(u"marrowby-flats"_s), hasColour(u"its chip is amber"_s, chips, amber, 0.05),
          equalsPictureOf(plain, firstEnd)}},
    };
}

} // namespace

QList<State> shopStates()
{
    return alongTheShelves();
}

QList<State> panelStates()
{
    const QList<State> panels{
        {u"front, no tapes to be had"_s,
         {addFault(tapes, u"error"_s, {{u"status"_s, 500}}), switchOn()},
         {hasText(area::statusLine, u"The hub answered 500."_s)}},
        {u"shop, no tapes to be had"_s,
         {press(u"right"_s), press(u"select"_s)},
         {hasText(panel, u"Rewindery"_s), hasText(panel, u"The hub answered 500."_s),
          hasText(tryAgain, u"Try again"_s)}},
        {u"shop, checking the shelves"_s,
         {resetHub(), addFault(tapes, u"delay"_s, {{u"ms"_s, 20000}}), post(status, oneMarket()), press(u"select"_s)},
         {hasText(panel, u"Checking the shelves…"_s), hasNoText(tryAgain, u"Try again"_s)}},
        {u"shop, one market and one tape"_s,
         {post(u"/fault/clear"_s)},
         {hasText(shop::header, u"1 tapes in stock — pull one off"_s), hasText(searchButton, u"Search the stacks"_s),
          hasNoColour(u"there is no chip"_s, allMarkets, amber, 0.1)}},
        {u"front, back from one market"_s,
         {press(u"back"_s), resetHub(), addEmptyMarket(), press(u"play/pause"_s)},
         {hasText(area::rightDoor, u"4 markets"_s)}},
        {u"shop, a market chosen"_s,
         {press(u"select"_s), press(u"right"_s, 2), press(u"select"_s)},
         {showsStock(u"brindlemere"_s), isChosen(firstMarket)}},
        {u"shop, an empty market"_s,
         {press(u"right"_s, 3), press(u"select"_s)},
         {hasText(panel, u"No tapes on the shelf for this view."_s), hasText(tryAgain, u"Try again"_s)}},
        {u"front, back from the empty market"_s, {press(u"back"_s)}, {hasText(area::rightDoor, u"REWINDERY"_s)}},
        {u"shop, all markets again"_s, {press(u"select"_s)}, {showsStock(), isChosen(allMarkets)}},
    };
    return panels + marketAfterMoveAlongShelf() + manyMarkets();
}

} // namespace quillmere::tour
