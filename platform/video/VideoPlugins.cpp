#include "VideoPlugins.h"

#include "MemoryFile.h"
#include "PluginFile.h"
#include "Worker.h"

#include <QPluginLoader>

#include <clocale>

#include <dlfcn.h>
#include <malloc.h>

using namespace Qt::StringLiterals;

namespace {

const QString fileName = u"quillmere-video.so"_s;
constexpr std::chrono::seconds farewell{3};

// From this size on, memory that is freed goes back to the system at once.
constexpr int largeBuffer = 128 * 1024; // bytes; where the allocator begins, too, but it would go up to 32 MB

struct Loading
{
    QPluginLoader loader;
    QStringList folders;
    std::unique_ptr<Worker> worker; ///< from the first load to the end of the application object
    QList<Completion<bool>> waiting;
    VideoPlugin* plugin = nullptr;
};

// Made at the first use and kept: the plug-in's libraries must outlive whatever they still do at exit.
Loading& loading()
{
    static auto* const one = new Loading;
    return *one;
}

// A load that is under way ends before what it reports to does.
void waitForLoad()
{
    loading().worker.reset();
}

void waitForEngines()
{
    if (loading().plugin)
        loading().plugin->waitForEngines(farewell);
}

/** Has the TLS library read its policy again where the program's own libraries have brought it in, as on Debian 13. */
void renewTlsPolicy()
{
    void* const library = dlopen("libgnutls.so.30", RTLD_LAZY | RTLD_NOLOAD);
    if (!library)
        return;
    // Nothing has used it yet: it ends, and begins anew.
    const auto end = reinterpret_cast<void (*)()>(dlsym(library, "gnutls_global_deinit"));
    const auto begin = reinterpret_cast<int (*)()>(dlsym(library, "gnutls_global_init"));
    if (end && begin) {
        end();
        begin();
    }
    dlclose(library);
}

void adopt()
{
    auto* const plugin = qobject_cast<VideoPlugin*>(loading().loader.instance());
    if (!plugin)
        return;
    loading().plugin = plugin;
    qAddPostRoutine(waitForEngines);
}

QCoro::Task<> readIn()
{
    Loading& all = loading();
    all.loader.setFileName(pluginFile(fileName, all.folders));
    VideoPlugins::prepare();
    if (!all.worker) {
        all.worker = std::make_unique<Worker>();
        qAddPostRoutine(waitForLoad);
    }
    // The player's library insists on numbers with a point.
    std::setlocale(LC_NUMERIC, "C");
    if (co_await all.worker->run([&all] { return all.loader.load(); }))
        adopt();
    const auto waiting = std::exchange(all.waiting, {});
    for (const Completion<bool>& one : waiting)
        one.resolve(all.plugin != nullptr);
}

} // namespace

QCoro::Task<tl::expected<VideoPlugin*, QString>> VideoPlugins::load()
{
    Loading& all = loading();
    if (!all.plugin) {
        const Completion<bool> done;
        all.waiting.append(done);
        if (all.waiting.size() == 1)
            readIn();
        if (!co_await done)
            co_return tl::unexpected(all.loader.fileName().isEmpty() ? u"%1 is not there."_s.arg(fileName)
                                                                     : all.loader.errorString());
    }
    co_return all.plugin;
}

void VideoPlugins::prepare()
{
    static const MemoryFile policy("tls-policy", "[overrides]\n"
                                                 "disabled-version = ssl3.0\n"
                                                 "disabled-version = tls1.0\n"
                                                 "disabled-version = tls1.1\n"
                                                 "disabled-version = dtls1.0\n");
    // The TLS library below the player reads its policy from the file that this names.
    constexpr auto variable = "GNUTLS_SYSTEM_PRIORITY_FILE";
    if (policy.isValid() && qgetenv(variable) != policy.path()) {
        qputenv(variable, policy.path());
        renewTlsPolicy();
    }
    // Else each of a player's many threads leaves megabytes behind that nothing uses.
    mallopt(M_MMAP_THRESHOLD, largeBuffer);
}

void VideoPlugins::addFolder(const QString& folder)
{
    loading().folders.append(folder);
}
