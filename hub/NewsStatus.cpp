#include "NewsStatus.h"

#include <algorithm>
#include <charconv>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

/** Sort key for a channel number that is not a decimal 64-bit integer. */
constexpr qint64 nonNumericChannel = 99;

qint64 channelNumber(const QString& number)
{
    // QString::toLongLong() is not used because it accepts surrounding spaces.
    const QByteArray text = number.toUtf8();
    const bool hasPlus = text.startsWith('+');
    const char* const first = text.constData() + (hasPlus ? 1 : 0);
    const char* const last = text.constData() + text.size();
    if (hasPlus && first != last && *first == '-')
        return nonNumericChannel;
    qint64 value = 0;
    const auto [end, error] = std::from_chars(first, last, value);
    return error == std::errc() && end == last ? value : nonNumericChannel;
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
        return channelNumber(left.number) < channelNumber(right.number);
    });
    return stations;
}

} // namespace quillmere
