#include "ShopSteps.h"
#include "Sights.h"
#include "Steps.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tour {

namespace {

constexpr QRectF badges(1200, 140, 340, 60); // the last of five

/** A tape's own screen, and what its title reads. */
State oddTitle(const QString& name, const QString& part, const QString& reading)
{
    return {u"detail, "_s + name,
            {press(u"back"_s), walkTo(part), press(u"select"_s)},
            {reads(shop::detailTitle, reading)}};
}

/** Letters that the reader does not know: the title must at least be written. */
State foreignTitle(const QString& name, const QString& part)
{
    return {u"detail, "_s + name, {press(u"back"_s), walkTo(part), press(u"select"_s)}, {titleIsWritten()}};
}

Sight hasEnded()
{
    return {u"the program has ended without complaint"_s,
            [](Stage& stage, const QImage&) { return stage.room.set().process().waitForEnd(3s) == 0; }};
}

Sight stands(const QString& text)
{
    return reads(shop::detailFacts, text);
}

Sight standsNot(const QString& text)
{
    return readsNot(shop::detailFacts, text);
}

QList<State> facts()
{
    const QString title = u"Public Hearing, Noise after Ten"_s;
    const QColor amber(255, 203, 45);
    return {
        {u"shop, before a tape"_s, {walkTo(title)}, {differsFrom(u"shop, top"_s, area::everything)}},
        {u"detail, a tape that has everything"_s,
         {press(u"select"_s)},
         {reads(shop::detailTexts, title),
          reads(shop::detailTexts, u"When Town Council convenes on December 29, 2025"_s),
          shows(u"the agenda is enclosed"_s, badges, amber, 0.4), reads(shop::firstButton, u"Push it in"_s),
          stands(u"Read the transcript"_s), stands(u"RECORDED"_s), stands(u"Tern Hollow"_s), stands(u"LOCATION"_s),
          stands(u"1.2 GB · self-hosted"_s), stands(u"BONUS MATERIALS"_s), stands(u"+2 more"_s), stands(u"Cat. RW"_s)}},
        {u"detail, the transcript's button"_s,
         {press(u"right"_s)},
         {differsFrom(u"detail, a tape that has everything"_s, shop::detailFacts)}},
        {u"shop, back from a tape"_s, {press(u"back"_s)}, {looksAsIn(u"shop, before a tape"_s, area::everything)}},
        {u"detail, a tape left part-way"_s,
         {walkTo(u"Board of Trustees - Noise after Ten"_s), press(u"select"_s)},
         {stands(u"Resume at 1:23"_s), stands(u"Start over"_s), standsNot(u"Push it in"_s)}},
        {u"detail, nothing known"_s,
         {press(u"back"_s), walkTo(u"Bare Bones"_s), press(u"select"_s)},
         {stands(u"MB · self-hosted"_s), stands(u"None harvested"_s), standsNot(u"RECORDED"_s), standsNot(u"MARKET"_s),
          standsNot(u"LOCATION"_s), standsNot(u"BONUS"_s), standsNot(u"transcript on file"_s)}},
        {u"detail, the hub knows no more"_s,
         {press(u"back"_s), fault(u"/api/tv/tape/"_s, u"error"_s), walkTo(u"Finance Committee - Salt for the Winter"_s),
          press(u"select"_s)},
         {stands(u"self-hosted"_s), standsNot(u"BONUS"_s), standsNot(u"503"_s)}},
    };
}

QList<State> longText()
{
    return {
        {u"detail, 300 characters"_s,
         {order(u"/fault/clear"_s), press(u"back"_s), walkTo(u"On the Naming of the Bridge"_s), press(u"select"_s)},
         {reads(shop::detailTexts, u"That Replaced the Bridge That Replaced the Bridge"_s)}},
        {u"detail, 300 characters to the end"_s, {press(u"down"_s, 3)}, {reads(shop::detailFacts, u"Cat. RW"_s)}},
        {u"detail, 300 characters from the beginning"_s,
         {press(u"up"_s, 3)},
         {reads(shop::detailTitle, u"Town Council - On the Naming of the Bridge"_s)}},
    };
}

} // namespace

QList<State> detailStates()
{
    return facts() + longText() +
           QList<State>{
               oddTitle(u"markup"_s, u"<b>Planning"_s, u"<b>Planning Commission</b> - <i>Regular</i> Meeting"_s),
               {u"detail, a picture in a title"_s,
                {press(u"back"_s), walkTo(u"<img"_s), press(u"select"_s)},
                {reads(shop::detailTitle, u"img src"_s), hubWasNotAskedFor(u"/picture-in-a-title.png"_s)}},
               oddTitle(u"no title"_s, u"Untitled Recording"_s, u"Untitled Recording"_s),
               oddTitle(u"accents"_s, u"Comité d"_s, u"Comite d'urbanisme"_s),
               foreignTitle(u"chinese"_s, u"港口委員會例會"_s),
               foreignTitle(u"japanese and korean"_s, u"港湾委員会"_s),
               foreignTitle(u"arabic"_s, u"اجتماع"_s),
               oddTitle(u"emoji"_s, u"Family Night"_s, u"Family Night"_s),
               {u"front, back from the shop"_s,
                {press(u"back"_s, 2)},
                {looksAsIn(u"front, focus on the shop"_s, area::everything)}},
               {u"switched off"_s, {press(u"back"_s), press(u"back"_s)}, {hasEnded()}},
           };
}

} // namespace tour
