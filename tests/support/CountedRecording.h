#pragma once

#include <QImage>
#include <QProcess>

/**
 * HLS recordings whose picture shows the current second as twelve black or white bars, the highest bit on the left.
 * Segments are 4 seconds long.
 */
namespace quillmere::CountedRecording {

constexpr int bits = 12;
constexpr int segmentSeconds = 4;

enum class Kind {
    Slides, ///< five pictures a second, no sound; quick to encode
    Film    ///< 25 pictures a second, with sound
};

/** Creates `name`.m3u8 and its segments `name`0.ts, `name`1.ts, ... in a folder. Returns false on failure. */
inline bool create(const QString& folder, const QString& name, int seconds, Kind kind)
{
    const int rate = kind == Kind::Film ? 25 : 5;
    const auto text = [](const char* words) { return QString::fromLatin1(words); };
    const QString picture = text(
        "color=black:s=192x108:r=%1,geq=lum='16+219*mod(floor((T+0.001)/pow(2,11-floor(X*12/W))),2)':cb=128:cr=128");
    QStringList arguments = text("-v error -nostdin -f lavfi -i").split(u' ') << picture.arg(rate);
    if (kind == Kind::Film)
        arguments += text("-f lavfi -i sine=330 -c:a aac").split(u' ');
    arguments += text("-t %1 -pix_fmt yuv420p -preset ultrafast -g %2 -hls_time %3 -hls_playlist_type vod")
                     .arg(seconds)
                     .arg(segmentSeconds * rate)
                     .arg(segmentSeconds)
                     .split(u' ');
    arguments += {text("-hls_segment_filename"), name + text("%d.ts"), name + text(".m3u8")};
    QProcess ffmpeg;
    ffmpeg.setWorkingDirectory(folder);
    ffmpeg.start(QStringLiteral("ffmpeg"), arguments);
    return ffmpeg.waitForFinished(60'000) && ffmpeg.exitCode() == 0;
}

/** The second that a picture of such a recording shows. */
inline int secondShown(const QImage& picture)
{
    int second = 0;
    for (int bit = 0; bit < bits; ++bit) {
        const int x = picture.width() * (2 * bit + 1) / (2 * bits);
        second = 2 * second + (picture.pixelColor(x, picture.height() / 2).lightness() > 128 ? 1 : 0);
    }
    return second;
}

} // namespace quillmere::CountedRecording
