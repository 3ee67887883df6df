#include "Checks.h"
#include "ShopSteps.h"
#include "Steps.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere::tour {

namespace {

constexpr QRectF badges(1200, 140, 340, 60); // the last of five badges

/** A tape's screen whose title is recognised as `reading`. */
State unusualTitle(const QString& name, const QString& part, const QString& reading)
{
    return {u"detail, "_s + name,
            {press(u"back"_s), moveFocusTo(part), press(u"select"_s)},
            {hasText(shop::detailTitle, reading)}};
}

/**
 * A tape's screen with a title in a script that the text recognition does not support: only checks that letters are
 * drawn.
 */
State foreignTitle(const QString& name, const QString& part)
{
    return {u"detail, "_s + name, {press(u"back"_s), moveFocusTo(part), press(u"select"_s)}, {hasTitle()}};
}

Check hasEnded()
{
    return {u"the program has ended without complaint"_s,
            [](TourContext& context, const QImage&) { return context.viewer.program().process().waitForEnd(3s) == 0; }};
}

Check hasFact(const QString& text)
{
    return hasText(shop::detailFacts, text);
}

Check hasNoFact(const QString& text)
{
    return hasNoText(shop::detailFacts, text);
}

QList<State> facts()
{
    const QString title = u"Public Hearing, Noise after Ten"_s;
    const QColor amber(255, 203, 45);
    return {
        {u"shop, before a tape"_s, {moveFocusTo(title)}, {differsFromPictureOf(u"shop, top"_s, area::everything)}},
        {u"detail, a tape that has everything"_s,
         {press(u"select"_s)},
         {hasText(shop::detailTexts, title),
          hasText(shop::detailTexts, u"When Town Council convenes on December 29, 2025"_s),
          hasColour(u"the agenda is enclosed"_s, badges, amber, 0.4), hasText(shop::firstButton, u"Push it in"_s),
          hasFact(u"Read the transcript"_s), hasFact(u"RECORDED"_s), hasFact(u"Tern Hollow"_s), hasFact(u"LOCATION"_s),
          hasFact(u"1.2 GB · self-hosted"_s), hasFact(u"BONUS MATERIALS"_s), hasFact(u"+2 more"_s),
          hasFact(u"Cat. RW"_s)}},
        {u"detail, the transcript's button"_s,
         {press(u"right"_s)},
         {differsFromPictureOf(u"detail, a tape that has everything"_s, shop::detailFacts)}},
        {u"shop, back from a tape"_s,
         {press(u"back"_s)},
         {equalsPictureOf(u"shop, before a tape"_s, area::everything)}},
        {u"detail, a tape left part-way"_s,
         {moveFocusTo(u"Board of Trustees - Noise after Ten"_s), press(u"select"_s)},
         {hasFact(u"Resume at 1:23"_s), hasFact(u"Start over"_s), hasNoFact(u"Push it in"_s)}},
        {u"detail, nothing known"_s,
         {press(u"back"_s), moveFocusTo(u"Bare Bones"_s), press(u"select"_s)},
         {hasFact(u"MB · self-hosted"_s), hasFact(u"None harvested"_s), hasNoFact(u"RECORDED"_s),
          hasNoFact(u"MARKET"_s), hasNoFact(u"LOCATION"_s), hasNoFact(u"BONUS"_s), hasNoFact(u"transcript on file"_s)}},
        {u"detail, the hub knows no more"_s,
         {press(u"back"_s), addFault(u"/api/tv/tape/"_s, u"error"_s),
          moveFocusTo(u"Finance Committee - Salt for the Winter"_s), press(u"select"_s)},
         {hasFact(u"self-hosted"_s), hasNoFact(u"BONUS"_s), hasNoFact(u"503"_s)}},
    };
}

QList<State> longText()
{
    return {
        {u"detail, 300 characters"_s,
         {post(u"/fault/clear"_s), press(u"back"_s), moveFocusTo(u"On the Naming of the Bridge"_s), press(u"select"_s)},
         {hasText(shop::detailTexts, u"That Replaced the Bridge That Replaced the Bridge"_s)}},
        {u"detail, 300 characters to the end"_s, {press(u"down"_s, 3)}, {hasText(shop::detailFacts, u"Cat. RW"_s)}},
        {u"detail, 300 characters from the beginning"_s,
         {press(u"up"_s, 3)},
         {hasText(shop::detailTitle, u"Town Council - On the Naming of the Bridge"_s)}},
    };
}

} // namespace

QList<State> detailStates()
{
    return facts() + longText() +
           QList<State>{
               unusualTitle(u"markup"_s, u"<b>Planning"_s, u"<b>Planning Commission</b> - <i>Regular</i> Meeting"_s),
               {u"detail, a picture in a title"_s,
                {press(u"back"_s), moveFocusTo(u"<img"_s), press(u"select"_s)},
                {hasText(shop::detailTitle, u"img src"_s), hubGotNoRequestFor(u"/picture-in-a-title.png"_s)}},
               unusualTitle(u"no title"_s, u"Untitled Recording"_s, u"Untitled Recording"_s),
               unusualTitle(u"accents"_s, u"Comité d"_s, u"Comite d'urbanisme"_s),
               foreignTitle(u"chinese"_s, u"港口委員會例會"_s),
               foreignTitle(u"japanese and korean"_s, u"港湾委員会"_s),
               foreignTitle(u"arabic"_s, u"اجتماع"_s),
               unusualTitle(u"emoji"_s, u"Family Night"_s, u"Family Night"_s),
               {u"front, back from the shop"_s,
                {press(u"back"_s, 2)},
                {equalsPictureOf(u"front, focus on the shop"_s, area::everything)}},
               {u"switched off"_s, {press(u"back"_s), press(u"back"_s)}, {hasEnded()}},
           };
}

} // namespace quillmere::tour
