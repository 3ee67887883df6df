#include "ShopSteps.h"

#include "Picture.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere::tour {

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
    return [](TourContext& context) {
        context.shopPosition = {};
        if (!shop::open(context.viewer))
            throw std::runtime_error("The shop's shelves do not appear.");
    };
}

Step enterShop()
{
    return [](TourContext& context) {
        context.shopPosition = {};
        if (!shop::selectShop(context.viewer))
            throw std::runtime_error("The front screen shows no figures.");
    };
}

Step moveFocusTo(const QString& title)
{
    return [=](TourContext& context) {
        if (!context.viewer.isOn())
            throw std::runtime_error("The set is not running.");
        const shop::Position shopPosition = shop::positionOf(context.hub, title);
        shop::moveFocus(context.viewer, context.shopPosition, shopPosition);
        context.shopPosition = shopPosition;
    };
}

Step pressRapidly(const QString& button, int times)
{
    return [=](TourContext& context) {
        for (int i = 0; i < times; ++i)
            context.viewer.press(button);
        context.viewer.screen().waitUntilStill(300ms, 5s);
    };
}

Step addEmptyMarket()
{
    return [](TourContext& context) {
        QJsonArray markets = summary(context.hub).value(u"markets"_s).toArray();
        markets.append(QJsonObject{{u"slug"_s, u"dry-gulch"_s}, {u"name"_s, u"Dry Gulch"_s}, {u"tapes"_s, 0}});
        context.hub.post(u"/status"_s, {{u"rewindery"_s, QJsonObject{{u"markets"_s, markets}}}});
    };
}

Step addManyMarkets()
{
    return [](TourContext& context) {
        QJsonArray markets;
        for (int town = 1; town <= 24; ++town)
            markets.append(QJsonObject{{u"slug"_s, u"camp-%1"_s.arg(town)}, {u"name"_s, u"Camp No. %1"_s.arg(town)}});
        for (const QJsonValue town : summary(context.hub).value(u"markets"_s).toArray())
            markets.append(town);
        context.hub.post(u"/status"_s, {{u"rewindery"_s, QJsonObject{{u"markets"_s, markets}}}});
    };
}

Check showsStock(const QString& market)
{
    return {u"the stock line shows the hub's number of tapes"_s, [=](TourContext& context, const QImage& picture) {
                const QString line = u"%1 tapes in stock — pull one off"_s.arg(stock(context.hub, market));
                return TextReader::contains(context.viewer.reader().read(picture, shop::header), line);
            }};
}

Check hasTitle()
{
    return {u"the title contains letters"_s, [](TourContext&, const QImage& picture) {
                const QColor cream(247, 244, 236);
                return picture::shareOf(picture, shop::detailTitle, cream, 40) > 0.01;
            }};
}

Check hubGotNoRequestFor(const QString& path)
{
    return {u"the hub got no request for "_s + path, [=](TourContext& context, const QImage&) {
                return !QJsonDocument(context.hub.requestLog()).toJson().contains(path.toUtf8());
            }};
}

} // namespace quillmere::tour
