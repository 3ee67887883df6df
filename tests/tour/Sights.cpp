#include "Sights.h"

#include "Picture.h"

using namespace Qt::StringLiterals;

namespace tour {

namespace {

constexpr int colourTolerance = 24; // of 255: edges of letters are blended
constexpr double sameShare = 0.0005;

/** The share of the area in which the picture differs from that state's; nothing when that state was not reached. */
std::optional<double> differenceFrom(Stage& stage, const QString& state, const QImage& picture, const QRectF& area)
{
    const auto then = stage.pictures.constFind(state);
    if (then == stage.pictures.cend())
        return std::nullopt;
    return picture::difference(picture, *then, area);
}

bool areaReads(Stage& stage, const QImage& picture, const QRectF& area, const QString& text)
{
    return TextReader::contains(stage.room.reader().read(picture, area), text);
}

} // namespace

Sight reads(const QRectF& area, const QString& text)
{
    return {u"there stands \"%1\""_s.arg(text),
            [=](Stage& stage, const QImage& picture) { return areaReads(stage, picture, area, text); }};
}

Sight readsNot(const QRectF& area, const QString& text)
{
    return {u"there no longer stands \"%1\""_s.arg(text),
            [=](Stage& stage, const QImage& picture) { return !areaReads(stage, picture, area, text); }};
}

Sight shows(const QString& what, const QRectF& area, const QColor& colour, double share)
{
    return {what, [=](Stage&, const QImage& picture) {
                return picture::shareOf(picture, area, colour, colourTolerance) >= share;
            }};
}

Sight showsNot(const QString& what, const QRectF& area, const QColor& colour, double share)
{
    return {what, [=](Stage&, const QImage& picture) {
                return picture::shareOf(picture, area, colour, colourTolerance) < share;
            }};
}

Sight looksAsIn(const QString& state, const QRectF& area)
{
    return {u"it looks as in \"%1\""_s.arg(state), [=](Stage& stage, const QImage& picture) {
                return differenceFrom(stage, state, picture, area).value_or(1) <= sameShare;
            }};
}

Sight differsFrom(const QString& state, const QRectF& area, double share)
{
    return {u"it differs from \"%1\""_s.arg(state), [=](Stage& stage, const QImage& picture) {
                return differenceFrom(stage, state, picture, area).value_or(0) >= share;
            }};
}

Sight plays()
{
    return {u"a recording plays"_s,
            [](Stage&, const QImage& picture) { return picture::recordedSeconds(picture).value_or(0) > 0; }};
}

Sight playsOnFrom(const QString& state, int seconds)
{
    return {u"the recording has played on from \"%1\""_s.arg(state), [=](Stage& stage, const QImage& picture) {
                const auto then = picture::recordedSeconds(stage.pictures.value(state));
                const auto now = picture::recordedSeconds(picture);
                return then && now && *now >= *then + seconds;
            }};
}

} // namespace tour
