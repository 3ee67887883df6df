#include "NewsStatus.h"

#include <algorithm>
#include <charconv>

using namespace Qt::StringLiterals;

namespace {

/** A number that is no plain decimal integer of 64 bits sorts as this one. */
constexpr qint64 unnumbered = 99;

qint64 placeOnTheStrip(const QString& number)
{
    // The form is checked here: the toolkit's own conversions let spaces through.
    const QByteArray text = number.toUtf8();
    const bool hasPlus = text.startsWith('+');
    const char* const first = text.constData() + (hasPlus ? 1 : 0);
    const char* const last = text.constData() + text.size();
    if (hasPlus && first != last && *first == '-')
        return unnumbered;
    qint64 place = 0;
    const auto [end, error] = std::from_chars(first, last, place);
    return error == std::errc() && end == last ? place : unnumbered;
}

QString streamPath(const QString& path)
{
    return path.startsWith(u'/') ? path : u"/live/"_s + path + u"/index.m3u8"_s;
}

} // namespace

QList<TunerStation> NewsStatus::stations() const
{
    QList<TunerStation> stations{{u"5"_s, u"5 O'Clock News"_s, hlsURL}};
    for (auto entry = channels.cbegin(); entry != channels.cend(); ++entry) {
        const StationChannel& channel = entry.value();
        if (channel.path.isEmpty())
            continue;
        const QString label = channel.label.isEmpty() ? u"Channel "_s + entry.key() : channel.label;
        stations.append({entry.key(), label, streamPath(channel.path)});
    }
    std::stable_sort(stations.begin(), stations.end(), [](const TunerStation& left, const TunerStation& right) {
        return placeOnTheStrip(left.number) < placeOnTheStrip(right.number);
    });
    return stations;
}
