#include "ShopSteps.h"

#include "Picture.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tour {

namespace {

QJsonObject summary(SampleHub& hub)
{
    return hub.fetch(u"/api/tv/status"_s).value(u"rewindery"_s).toObject();
}

qint64 stock(SampleHub& hub, const QString& market)
{
    const QJsonObject shop = summary(hub);
    for (const QJsonValue town : shop.value(u"markets"_s).toArray()) {
        if (!market.isEmpty() && town[u"slug"] == market)
            return town[u"tapes"].toInteger();
    }
    return shop.value(u"tapes"_s).toInteger();
}

} // namespace

Step openShop()
{
    return [](Stage& stage) {
        stage.place = {};
        if (!shop::open(stage.room))
            throw std::runtime_error("The shop's shelves do not come.");
    };
}

Step enterShop()
{
    return [](Stage& stage) {
        stage.place = {};
        if (!shop::enter(stage.room))
            throw std::runtime_error("The front screen has no figures.");
    };
}

Step walkTo(const QString& title)
{
    return [=](Stage& stage) {
        if (!stage.room.isOn())
            throw std::runtime_error("The set is not running.");
        const shop::Place place = shop::placeOf(stage.hub, title);
        shop::walk(stage.room, stage.place, place);
        stage.place = place;
    };
}

Step pressRapidly(const QString& button, int times)
{
    return [=](Stage& stage) {
        for (int i = 0; i < times; ++i)
            stage.room.press(button);
        stage.room.screen().waitUntilSettled(300ms, 5s);
    };
}

Step addEmptyMarket()
{
    return [](Stage& stage) {
        QJsonArray markets = summary(stage.hub).value(u"markets"_s).toArray();
        markets.append(QJsonObject{{u"slug"_s, u"dry-gulch"_s}, {u"name"_s, u"Dry Gulch"_s}, {u"tapes"_s, 0}});
        stage.hub.order(u"/status"_s, {{u"rewindery"_s, QJsonObject{{u"markets"_s, markets}}}});
    };
}

Step addManyMarkets()
{
    return [](Stage& stage) {
        QJsonArray markets;
        for (int town = 1; town <= 24; ++town)
            markets.append(QJsonObject{{u"slug"_s, u"camp-%1"_s.arg(town)}, {u"name"_s, u"Camp No. %1"_s.arg(town)}});
        for (const QJsonValue town : summary(stage.hub).value(u"markets"_s).toArray())
            markets.append(town);
        stage.hub.order(u"/status"_s, {{u"rewindery"_s, QJsonObject{{u"markets"_s, markets}}}});
    };
}

Sight countsStock(const QString& market)
{
    return {u"the stock line counts the tapes as the hub does"_s, [=](Stage& stage, const QImage& picture) {
                const QString line = u"%1 tapes in stock — pull one off"_s.arg(stock(stage.hub, market));
                return TextReader::contains(stage.room.reader().read(picture, shop::header), line);
            }};
}

Sight titleIsWritten()
{
    return {u"the title is written"_s, [](Stage&, const QImage& picture) {
                const QColor cream(247, 244, 236);
                return picture::shareOf(picture, shop::detailTitle, cream, 40) > 0.01;
            }};
}

Sight hubWasNotAskedFor(const QString& path)
{
    return {u"the hub was not asked for "_s + path, [=](Stage& stage, const QImage&) {
                return !QJsonDocument(stage.hub.log()).toJson().contains(path.toUtf8());
            }};
}

} // namespace tour
