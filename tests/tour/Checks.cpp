#include "Checks.h"

#include "Picture.h"

using namespace Qt::StringLiterals;

namespace quillmere::tour {

namespace {

constexpr int colourTolerance = 24; // of 255; edges of letters are blended
constexpr double sameShare = 0.0005;

/**
 * The share, 0 to 1, of the area that differs from the other state's picture; nullopt if that state was not reached.
 */
std::optional<double> differenceFrom(TourContext& context, const QString& state, const QImage& picture,
                                     const QRectF& area)
{
    const auto then = context.pictures.constFind(state);
    if (then == context.pictures.cend())
        return std::nullopt;
    return picture::difference(picture, *then, area);
}

bool areaHasText(TourContext& context, const QImage& picture, const QRectF& area, const QString& text)
{
    return TextReader::contains(context.viewer.reader().read(picture, area), text);
}

} // namespace

Check hasText(const QRectF& area, const QString& text)
{
    return {u"the text \"%1\" is shown"_s.arg(text),
            [=](TourContext& context, const QImage& picture) { return areaHasText(context, picture, area, text); }};
}

Check hasNoText(const QRectF& area, const QString& text)
{
    return {u"the text \"%1\" is not shown"_s.arg(text),
            [=](TourContext& context, const QImage& picture) { return !areaHasText(context, picture, area, text); }};
}

Check hasColour(const QString& what, const QRectF& area, const QColor& colour, double share)
{
    return {what, [=](TourContext&, const QImage& picture) {
                return picture::shareOf(picture, area, colour, colourTolerance) >= share;
            }};
}

Check hasNoColour(const QString& what, const QRectF& area, const QColor& colour, double share)
{
    return {what, [=](TourContext&, const QImage& picture) {
                return picture::shareOf(picture, area, colour, colourTolerance) < share;
            }};
}

Check equalsPictureOf(const QString& state, const QRectF& area)
{
    return {u"the picture equals that of \"%1\""_s.arg(state), [=](TourContext& context, const QImage& picture) {
                return differenceFrom(context, state, picture, area).value_or(1) <= sameShare;
            }};
}

Check differsFromPictureOf(const QString& state, const QRectF& area, double share)
{
    return {u"the picture differs from that of \"%1\""_s.arg(state), [=](TourContext& context, const QImage& picture) {
                return differenceFrom(context, state, picture, area).value_or(0) >= share;
            }};
}

Check isPlaying()
{
    return {u"a recording is playing"_s,
            [](TourContext&, const QImage& picture) { return picture::recordedSeconds(picture).value_or(0) > 0; }};
}

Check hasPlayedSince(const QString& state, int seconds)
{
    return {u"the recording has advanced since \"%1\""_s.arg(state), [=](TourContext& context, const QImage& picture) {
                const auto then = picture::recordedSeconds(context.pictures.value(state));
                const auto now = picture::recordedSeconds(picture);
                return then && now && *now >= *then + seconds;
            }};
}

} // namespace quillmere::tour
