#include "MpvOptions.h"

#include "MemoryFile.h"

#include <QFile>
#include <QHash>

#include <algorithm>
#include <iterator>
#include <mutex>
#include <vector>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

struct Option
{
    const char* name;
    const char* value;
};

constexpr Option options[] = {
    // No external influence: no user files, no scripts, no other programs, no keys.
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
    // Otherwise libmpv reads a refused playlist again as a plain playlist and plays its entries.
    {"demuxer", "lavf"},
    {"tls-verify", "yes"},
    {"network-timeout", "10"},
    {"cookies", "no"},
    {"idle", "yes"},
    {"vo", "libmpv"},
    {"osd-level", "0"},
    {"audio-display", "no"},
    // The usual audio outputs of a television box. Trying others costs time and leaks resources if there is no device.
    {"ao", "pipewire,pulse,alsa"},
    // Without an audio device a stream plays silently: tracks can still be selected and its end is no error.
    {"audio-fallback-to-null", "yes"},
    // Playback starts at the exact position or just after it, not at the keyframe before it.
    {"hr-seek", "yes"},
    // Report the stream's own timestamps. Otherwise newer versions report none below the first one, but these exist
    // where an encoder has restarted its timestamps.
    {"rebase-start-time", "no"},
    // On a canvas 1080 points high: font 66, vertical margins 60, horizontal margins 80. libmpv's canvas is 720 high.
    {"sub-font-size", "44"},
    {"sub-margin-y", "40"},
    {"sub-margin-x", "53"},
    // libmpv does not treat an av:// URL as network, and would play it without a cache.
    {"cache", "yes"},
    {"cache-pause-wait", "2"},
    // The cheapest scaler, for slow machines. With libmpv's newer defaults the picture stays black under software
    // OpenGL on Debian 13, also in the library's own player.
    {"scale", "bilinear"},
    {"cscale", "bilinear"},
    {"dscale", "bilinear"},
    {"dither-depth", "no"},
    {"correct-downscaling", "no"},
    {"linear-downscaling", "no"},
    {"sigmoid-upscaling", "no"},
    // Buffers for a slow hub on a machine with little memory.
    {"demuxer-max-bytes", "32MiB"},
    {"demuxer-max-back-bytes", "8MiB"},
};

/** libmpv's own desktop scripts, each with a thread. A version that has renamed one runs it. */
constexpr Option disabledScripts[] = {
    {"load-stats-overlay", "no"},
    {"load-osd-console", "no"},
    {"load-auto-profiles", "no"},
};

/**
 * Path of a file with the system's and the given certificates, as the option replaces the system's. Empty on failure.
 */
QByteArray certificateFile(const QByteArray& certificates)
{
    static std::mutex mutex;
    static auto* const files =
        new QHash<QByteArray, std::shared_ptr<MemoryFile>>; // never freed: TLS sessions may read them at any time
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
        file = std::make_shared<MemoryFile>("video-file", all + '\n' + certificates);
    }
    return file->isValid() ? file->path() : QByteArray();
}

/** A map of options for the stream's reader, as a libmpv node. */
class OptionMap
{
public:
    void add(const char* name, const char* value)
    {
        m_names.push_back(const_cast<char*>(name));
        mpv_node& node = m_values.emplace_back();
        node.format = MPV_FORMAT_STRING;
        node.u.string = const_cast<char*>(value); // libmpv does not write to it
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
    for (const Option& one : disabledScripts)
        set(one.name, one.value);
    const QByteArray file = certificateFile(given.certificates);
    return !file.isEmpty() && set("tls-ca-file", file.constData()) &&
           set("audio-client-name", given.applicationName.toUtf8().constData());
}

QByteArray MpvOptions::startOption(double seconds)
{
    // The plus sign makes the position relative to the stream's first timestamp.
    return '+' + QByteArray::number(std::max(seconds, 0.0), 'f', 3);
}

QByteArray MpvOptions::setForLoad(mpv_handle* mpv, const VideoLoad& load)
{
    const auto set = [mpv](const char* name, const char* value) { mpv_set_property_string(mpv, name, value); };
    // Set as global options, as the argument for per-file options of "loadfile" differs between versions of libmpv.
    const bool startsAtBeginning = load.isLive || load.startAt <= 0;
    set("start", startsAtBeginning ? "none" : startOption(load.startAt).constData());
    set("aid", "auto");
    set("sid", "auto");
    const QByteArray url = load.url.toEncoded();
    OptionMap options;
    // "crypto" only decrypts data that another listed protocol delivers.
    options.add("protocol_whitelist", url.startsWith("https:") ? "https,tls,tcp,crypto" : "http,https,tls,tcp,crypto");
    // A live stream starts three segments before the end; a recording that still grows starts at its first segment.
    options.add("live_start_index", load.isLive ? "-3" : "0");
    // Required for segmented subtitles, which the reader classes as experimental.
    options.add("strict", "experimental");
    // Otherwise the reader opens the second segment's connection first, which delays the first picture.
    options.add("http_multiple", "0");
    options.set(mpv, "demuxer-lavf-o");
    // Names the HLS reader directly. Otherwise libmpv fetches the playlist twice, once to detect its format.
    return "av://hls:" + url;
}

} // namespace quillmere
