#include "ListSteps.h"

#include "Picture.h"
#include "ShopList.h"

#include <QJsonDocument>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tour {

Step openShop()
{
    return [](Stage& stage) {
        stage.place = 0;
        if (!shoplist::open(stage.room))
            throw std::runtime_error("The shop's list does not come.");
    };
}

Step walkTo(const QString& title)
{
    return [=](Stage& stage) {
        if (!stage.room.isOn())
            throw std::runtime_error("The set is not running.");
        const int place = shoplist::placeOf(stage.hub, title);
        if (place < 0)
            throw std::runtime_error(("The hub's page has no tape \""_L1 + title + "\"."_L1).toStdString());
        for (; stage.place < place; ++stage.place)
            stage.room.press(u"down"_s);
        for (; stage.place > place; --stage.place)
            stage.room.press(u"up"_s);
        stage.room.screen().waitUntilSettled(250ms, 5s);
    };
}

Sight focusReads(const QString& text)
{
    return {u"the row with the focus reads \"%1\""_s.arg(text),
            [=](Stage& stage, const QImage&) { return TextReader::contains(shoplist::focusedText(stage.room), text); }};
}

Sight focusIsWritten()
{
    return {u"the row with the focus is written on"_s, [](Stage&, const QImage& picture) {
                const QColor inkNavy(11, 16, 38);
                const auto row = shoplist::focusedRow(picture);
                return row && picture::shareOf(picture, *row, inkNavy, 40) > 0.01;
            }};
}

Sight hasNoRows()
{
    return {u"the list has no rows"_s,
            [](Stage&, const QImage& picture) { return !shoplist::focusedRow(picture).has_value(); }};
}

Sight hubWasNotAskedFor(const QString& path)
{
    return {u"the hub was not asked for "_s + path, [=](Stage& stage, const QImage&) {
                return !QJsonDocument(stage.hub.log()).toJson().contains(path.toUtf8());
            }};
}

} // namespace tour
