#include "MpvOptions.h"

#include "MemoryFile.h"

#include <QFile>
#include <QHash>

#include <algorithm>
#include <iterator>
#include <mutex>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

struct Option
{
    const char* name;
    const char* value;
};

constexpr Option options[] = {
    // Nothing from outside: no files of the user's, no scripts, no other programs, no keys.
    {"config", "no"},
    {"load-scripts", "no"},
    {"ytdl", "no"},
    {"osc", "no"},
    {"input-default-bindings", "no"},
    {"input-vo-keyboard", "no"},
    {"input-media-keys", "no"},
    {"resume-playback", "no"},
    {"sub-auto", "no"},
    {"audio-file-auto", "no"},
    {"cover-art-auto", "no"},
    {"terminal", "no"},
    // Without it a refused playlist is read again as a plain one and its entries are played.
    {"demuxer", "lavf"},
    {"tls-verify", "yes"},
    {"network-timeout", "10"},
    {"cookies", "no"},
    {"idle", "yes"},
    {"vo", "libmpv"},
    {"osd-level", "0"},
    {"audio-display", "no"},
    // The sound servers of a television box; others only cost time and leave things behind when there is no device.
    {"ao", "pipewire,pulse,alsa"},
    // Without a device a stream is played in silence, its tracks are chosen as ever, and its end is no error.
    {"audio-fallback-to-null", "yes"},
    // A start lands at its position or just after, never at the keyframe before.
    {"hr-seek", "yes"},
    // Timestamps as the stream has them: newer libraries tell of none below the first, which are there where an encoder has
    // begun to count anew.
    {"rebase-start-time", "no"},
    // In points of 1080: 66 high, 60 from above and below, 80 from the sides; the library counts 720.
    {"sub-font-size", "44"},
    {"sub-margin-y", "40"},
    {"sub-margin-x", "53"},
    // What is asked for directly counts as no network to the library, and would be played without a cache.
    {"cache", "yes"},
    {"cache-pause-wait", "2"},
    // The cheapest way to scale, right for a small box, and the only one that OpenGL drawn by the processor does on
    // Debian 13: with the library's newer ways the picture stays black there, in its own player as well.
    {"scale", "bilinear"},
    {"cscale", "bilinear"},
    {"dscale", "bilinear"},
    {"dither-depth", "no"},
    {"correct-downscaling", "no"},
    {"linear-downscaling", "no"},
    {"sigmoid-upscaling", "no"},
    // Room for a slow hub, on a box with little memory.
    {"demuxer-max-bytes", "32MiB"},
    {"demuxer-max-back-bytes", "8MiB"},
};

/** Scripts of the library's own, for a desktop: a thread each. A library that knows one by another name runs it. */
constexpr Option spared[] = {
    {"load-stats-overlay", "no"},
    {"load-osd-console", "no"},
    {"load-auto-profiles", "no"},
};

/** One file with the system's certificates and ours: naming a file takes the place of the system's. */
QByteArray trustFile(const QByteArray& certificates)
{
    static std::mutex mutex;
    static auto* const files = new QHash<QByteArray, std::shared_ptr<MemoryFile>>; // kept: sessions read them any time
    const std::lock_guard lock(mutex);
    std::shared_ptr<MemoryFile>& file = (*files)[certificates];
    if (!file) {
        QByteArray all;
        for (const char* path :
             {"/etc/ssl/certs/ca-certificates.crt", "/etc/pki/tls/certs/ca-bundle.crt", "/etc/ssl/cert.pem"}) {
            QFile system(QString::fromLatin1(path));
            if (system.open(QIODevice::ReadOnly)) {
                all = system.readAll();
                break;
            }
        }
        file = std::make_shared<MemoryFile>("video-trust", all + '\n' + certificates);
    }
    return file->isValid() ? file->path() : QByteArray();
}

/** Options of the stream's own reader. */
class Map
{
public:
    void add(const char* name, const char* value)
    {
        m_names.push_back(const_cast<char*>(name));
        mpv_node& node = m_values.emplace_back();
        node.format = MPV_FORMAT_STRING;
        node.u.string = const_cast<char*>(value); // only read
    }

    void set(mpv_handle* mpv, const char* property)
    {
        mpv_node_list list{int(m_names.size()), m_values.data(), m_names.data()};
        mpv_node map{};
        map.format = MPV_FORMAT_NODE_MAP;
        map.u.list = &list;
        mpv_set_property(mpv, property, MPV_FORMAT_NODE, &map);
    }

private:
    std::vector<char*> m_names;
    std::vector<mpv_node> m_values;
};

} // namespace

bool MpvOptions::apply(mpv_handle* mpv, const VideoOptions& given)
{
    const auto set = [mpv](const char* name, const char* value) {
        return mpv_set_option_string(mpv, name, value) >= 0;
    };
    if (!std::all_of(std::begin(options), std::end(options),
                     [set](const Option& one) { return set(one.name, one.value); }))
        return false;
    for (const Option& one : spared)
        set(one.name, one.value);
    const QByteArray trust = trustFile(given.certificates);
    return !trust.isEmpty() && set("tls-ca-file", trust.constData()) &&
           set("audio-client-name", given.applicationName.toUtf8().constData());
}

QByteArray MpvOptions::startOption(double seconds)
{
    // The sign makes it count from the stream's first timestamp.
    return '+' + QByteArray::number(std::max(seconds, 0.0), 'f', 3);
}

QByteArray MpvOptions::setForLoad(mpv_handle* mpv, const VideoLoad& load)
{
    const auto set = [mpv](const char* name, const char* value) { mpv_set_property_string(mpv, name, value); };
    // An option, as the place of a load's own options in the command differs between versions of the library.
    const bool fromTheTop = load.isLive || load.startAt <= 0;
    set("start", fromTheTop ? "none" : startOption(load.startAt).constData());
    set("aid", "auto");
    set("sid", "auto");
    const QByteArray url = load.url.toEncoded();
    Map options;
    // "crypto" only unwraps what one of the others brought.
    options.add("protocol_whitelist", url.startsWith("https:") ? "https,tls,tcp,crypto" : "http,https,tls,tcp,crypto");
    // A recording that still grows is no live stream: it starts at its top. Live is three segments before the end.
    options.add("live_start_index", load.isLive ? "-3" : "0");
    // Segmented subtitles count as an experiment.
    options.add("strict", "experimental");
    // The second segment's connection would hold up the first picture.
    options.add("http_multiple", "0");
    options.set(mpv, "demuxer-lavf-o");
    // Asks the format's reader directly: the library would else fetch the playlist once more, only to guess its format.
    return "av://hls:" + url;
}
