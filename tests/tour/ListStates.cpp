#include "ListSteps.h"
#include "Sights.h"
#include "Steps.h"

using namespace Qt::StringLiterals;

namespace tour {

namespace {

/** States of one odd title each: the list at that tape, and what its row reads. */
State oddTitle(const QString& name, const QString& part, const QString& reading)
{
    return {u"list, "_s + name, {walkTo(part)}, {focusReads(reading)}};
}

/** Letters that the reader does not know: the row must at least be written on. */
State foreignTitle(const QString& name, const QString& part)
{
    return {u"list, "_s + name, {walkTo(part)}, {focusIsWritten()}};
}

} // namespace

QList<State> listStates()
{
    const QRectF list(160, 0, 1600, 1080);
    return {
        {u"list, top"_s, {openShop()}, {reads(list, u"Chamber Drama"_s), focusReads(u"Council"_s)}},
        {u"list, focus moved"_s, {press(u"down"_s)}, {differsFrom(u"list, top"_s, list)}},
        {u"list, focus moved back"_s, {press(u"up"_s)}, {looksAsIn(u"list, top"_s, area::everything)}},
        oddTitle(u"scrolled to markup"_s, u"<b>Planning"_s, u"<b>Planning Commission</b> - <i>Regular</i> Meeting"_s),
        {u"list, a picture in a title"_s,
         {walkTo(u"<img"_s)},
         {focusReads(u"img src"_s), hubWasNotAskedFor(u"/picture-in-a-title.png"_s)}},
        oddTitle(u"300 characters"_s, u"On the Naming of the Bridge"_s, u"On the Naming of the Bridge That Replaces"_s),
        oddTitle(u"no title"_s, u"Untitled Recording"_s, u"Untitled Recording"_s),
        oddTitle(u"accents"_s, u"Comité d"_s, u"Comite d'urbanisme"_s),
        foreignTitle(u"chinese"_s, u"港口委員會例會"_s),
        foreignTitle(u"japanese and korean"_s, u"港湾委員会"_s),
        foreignTitle(u"arabic"_s, u"اجتماع"_s),
        oddTitle(u"emoji"_s, u"Family Night"_s, u"Family Night"_s),
    };
}

} // namespace tour
