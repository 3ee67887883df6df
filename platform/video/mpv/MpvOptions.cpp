#include "MpvOptions.h"

#include "MemoryFile.h"

#include <QFile>
#include <QHash>

#include <algorithm>
#include <iterator>
#include <mutex>

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
    // A start lands at its position or just after, never at the keyframe before.
    {"hr-seek", "yes"},
    // Room for a slow hub, on a box with little memory.
    {"demuxer-max-bytes", "32MiB"},
    {"demuxer-max-back-bytes", "8MiB"},
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

} // namespace

bool MpvOptions::apply(mpv_handle* mpv, const VideoOptions& given)
{
    const auto set = [mpv](const char* name, const char* value) {
        return mpv_set_option_string(mpv, name, value) >= 0;
    };
    if (!std::all_of(std::begin(options), std::end(options),
                     [set](const Option& one) { return set(one.name, one.value); }))
        return false;
    const QByteArray trust = trustFile(given.certificates);
    return !trust.isEmpty() && set("tls-ca-file", trust.constData()) &&
           set("audio-client-name", given.applicationName.toUtf8().constData());
}

void MpvOptions::allowProtocols(mpv_handle* mpv, const QByteArray& url)
{
    // "crypto" only unwraps what one of the others brought.
    const bool secure = url.startsWith("https:");
    QByteArray allowed = secure ? "https,tls,tcp,crypto" : "http,https,tls,tcp,crypto";
    char key[] = "protocol_whitelist";
    char* keys[] = {key};
    mpv_node value{};
    value.format = MPV_FORMAT_STRING;
    value.u.string = allowed.data();
    mpv_node_list list{1, &value, keys};
    mpv_node map{};
    map.format = MPV_FORMAT_NODE_MAP;
    map.u.list = &list;
    mpv_set_property(mpv, "demuxer-lavf-o", MPV_FORMAT_NODE, &map);
    mpv_set_property(mpv, "stream-lavf-o", MPV_FORMAT_NODE, &map);
}
