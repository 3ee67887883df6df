#include "VideoPlugins.h"

#include "MemoryFile.h"
#include "PluginFile.h"
#include "Worker.h"

#include <QPluginLoader>

#include <clocale>

#include <dlfcn.h>
#include <malloc.h>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

const QString fileName = u"quillmere-video.so"_s;
constexpr std::chrono::seconds shutdownLimit{3};

// Bytes. Freed buffers of at least this size return to the system at once. It is also the allocator's initial
// threshold, which the allocator would raise up to 32 MB.
constexpr int largeBuffer = 128 * 1024;

struct LoaderState
{
    QPluginLoader loader;
    QStringList folders;
    std::unique_ptr<Worker> worker; ///< from the first load until the application object is destroyed
    QList<Completion<bool>> pending;
    VideoPlugin* plugin = nullptr;
};

// Created at first use and never destroyed, as the plug-in's libraries may still run code at exit.
LoaderState& loaderState()
{
    static auto* const one = new LoaderState;
    return *one;
}

// The load must end before the objects that wait for its result are destroyed.
void waitForLoad()
{
    loaderState().worker.reset();
}

void waitForEngines()
{
    if (loaderState().plugin)
        loaderState().plugin->waitForEngines(shutdownLimit);
}

/** Makes the TLS library read its policy again, if it is loaded already as a dependency of the program (Debian 13). */
void reloadTlsPolicy()
{
    void* const library = dlopen("libgnutls.so.30", RTLD_LAZY | RTLD_NOLOAD);
    if (!library)
        return;
    // Nothing has used the library yet, so it is safe to initialise it again.
    const auto end = reinterpret_cast<void (*)()>(dlsym(library, "gnutls_global_deinit"));
    const auto begin = reinterpret_cast<int (*)()>(dlsym(library, "gnutls_global_init"));
    if (end && begin) {
        end();
        begin();
    }
    dlclose(library);
}

void usePlugin()
{
    auto* const plugin = qobject_cast<VideoPlugin*>(loaderState().loader.instance());
    if (!plugin)
        return;
    loaderState().plugin = plugin;
    qAddPostRoutine(waitForEngines);
}

QCoro::Task<> loadPlugin()
{
    LoaderState& state = loaderState();
    state.loader.setFileName(pluginFile(fileName, state.folders));
    VideoPlugins::prepare();
    if (!state.worker) {
        state.worker = std::make_unique<Worker>();
        qAddPostRoutine(waitForLoad);
    }
    // libmpv requires the decimal point of the C locale.
    std::setlocale(LC_NUMERIC, "C");
    if (co_await state.worker->run([&state] { return state.loader.load(); }))
        usePlugin();
    const auto pending = std::exchange(state.pending, {});
    for (const Completion<bool>& one : pending)
        one.resolve(state.plugin != nullptr);
}

} // namespace

QCoro::Task<tl::expected<VideoPlugin*, QString>> VideoPlugins::load()
{
    LoaderState& state = loaderState();
    if (!state.plugin) {
        const Completion<bool> loaded;
        state.pending.append(loaded);
        if (state.pending.size() == 1)
            loadPlugin();
        if (!co_await loaded)
            co_return tl::unexpected(state.loader.fileName().isEmpty() ? u"%1 is not there."_s.arg(fileName)
                                                                       : state.loader.errorString());
    }
    co_return state.plugin;
}

void VideoPlugins::prepare()
{
    static const MemoryFile policy("tls-policy", "[overrides]\n"
                                                 "disabled-version = ssl3.0\n"
                                                 "disabled-version = tls1.0\n"
                                                 "disabled-version = tls1.1\n"
                                                 "disabled-version = dtls1.0\n");
    // The TLS library below the player reads its policy from the file that this variable names.
    constexpr auto variable = "GNUTLS_SYSTEM_PRIORITY_FILE";
    if (policy.isValid() && qgetenv(variable) != policy.path()) {
        qputenv(variable, policy.path());
        reloadTlsPolicy();
    }
    // With a fixed threshold, large freed buffers return to the system at once. Otherwise the allocator raises it and
    // keeps megabytes of freed memory for each of a player's many threads.
    mallopt(M_MMAP_THRESHOLD, largeBuffer);
}

void VideoPlugins::addFolder(const QString& folder)
{
    loaderState().folders.append(folder);
}

} // namespace quillmere
