#include "ScriptedCompositor.h"

#include "wlr-output-management-server.h"
#include "wlr-output-power-server.h"

#include <QMutex>

#include <functional>
#include <set>
#include <stdexcept>
#include <vector>

#include <wayland-server.h>

using namespace Qt::StringLiterals;

namespace quillmere {

struct ScriptedCompositor::Server
{
    struct Output
    {
        wl_global* global = nullptr;
        bool isOn = true;
        wl_resource* head = nullptr;
        wl_resource* mode = nullptr;
    };

    struct Configuration
    {
        Server* server = nullptr;
        uint32_t serial = 0;
        std::vector<std::pair<Output*, bool>> wanted;
    };

    ScriptedCompositor* owner = nullptr;
    wl_display* display = nullptr;
    std::vector<std::unique_ptr<Output>> outputs;
    std::vector<std::unique_ptr<Output>> unplugged; ///< kept, because clients may still send requests for them
    wl_resource* manager = nullptr;
    uint32_t serial = 1;
    bool setsMode = false; ///< whether the configuration being created sets an output's mode
    std::set<wl_resource*> powers;
    std::vector<std::pair<int, std::function<void()>>> delayedChanges; ///< with the remaining turns of run()'s loop
    wl_listener onClient{};
    mutable QMutex mutex; ///< guards the members below
    QString lastEnabled;
    QString protocolError;

    void countOutputs()
    {
        int on = 0;
        for (const auto& output : outputs)
            on += output->isOn;
        owner->m_outputsOn = on;
    }

    void reportProtocolError(const QString& what)
    {
        const QMutexLocker locker(&mutex);
        protocolError = what;
    }

    void addOutput(bool isOn);
    void offerPower();
    void offerConfiguration();
    void describe(Output& output);
    void apply(wl_resource* resource);
    void applyDueChanges();
    void unplugLast();
};

namespace {

template<typename T>
T& of(wl_resource* resource)
{
    return *static_cast<T*>(wl_resource_get_user_data(resource));
}

void destroy(wl_client*, wl_resource* resource)
{
    wl_resource_destroy(resource);
}

constexpr int modeWidth = 1920;
constexpr int slowTicks = 10; // turns of run()'s loop after which a slow output is switched

} // namespace

void ScriptedCompositor::Server::addOutput(bool isOn)
{
    outputs.push_back(std::make_unique<Output>());
    Output* const output = outputs.back().get();
    output->isOn = isOn;
    output->global = wl_global_create(
        display, &wl_output_interface, 1, output, [](wl_client* client, void* data, uint32_t, uint32_t id) {
            wl_resource* const resource = wl_resource_create(client, &wl_output_interface, 1, id);
            wl_resource_set_implementation(resource, nullptr, data, nullptr);
        });
}

void ScriptedCompositor::Server::offerPower()
{
    static constexpr struct zwlr_output_power_v1_interface power = {
        .set_mode =
            [](wl_client*, wl_resource* resource, uint32_t mode) {
                auto& [server, output] = of<std::pair<Server*, Output*>>(resource);
                if (server->owner->m_options.refuses)
                    return;
                const auto change = [server = server, output = output, resource, mode] {
                    output->isOn = mode == ZWLR_OUTPUT_POWER_V1_MODE_ON;
                    server->countOutputs();
                    if (server->powers.count(resource) > 0)
                        zwlr_output_power_v1_send_mode(resource, mode);
                };
                if (server->owner->m_options.isSlow)
                    server->delayedChanges.emplace_back(slowTicks, change);
                else
                    change();
            },
        .destroy = &destroy,
    };
    static constexpr struct zwlr_output_power_manager_v1_interface manager = {
        .get_output_power =
            [](wl_client* client, wl_resource* resource, uint32_t id, wl_resource* outputResource) {
                auto* const server = &of<Server>(resource);
                auto* const output = &of<Output>(outputResource);
                wl_resource* const created = wl_resource_create(client, &zwlr_output_power_v1_interface, 1, id);
                wl_resource_set_implementation(created, &power, new std::pair<Server*, Output*>(server, output),
                                               [](wl_resource* destroyed) {
                                                   auto* const power = &of<std::pair<Server*, Output*>>(destroyed);
                                                   power->first->powers.erase(destroyed);
                                                   delete power;
                                               });
                server->powers.insert(created);
                if (server->owner->m_options.sendsFailed)
                    zwlr_output_power_v1_send_failed(created);
                else
                    zwlr_output_power_v1_send_mode(created, output->isOn);
            },
        .destroy = &destroy,
    };
    wl_global_create(display, &zwlr_output_power_manager_v1_interface, 1, this,
                     [](wl_client* client, void* data, uint32_t, uint32_t id) {
                         wl_resource_set_implementation(
                             wl_resource_create(client, &zwlr_output_power_manager_v1_interface, 1, id), &manager, data,
                             nullptr);
                     });
}

void ScriptedCompositor::Server::applyDueChanges()
{
    for (auto& [ticks, change] : delayedChanges) {
        if (--ticks == 0)
            change();
    }
    std::erase_if(delayedChanges, [](const auto& delayed) { return delayed.first == 0; });
}

/** Sends the state of an output. For a disabled output, that is only `enabled`. */
void ScriptedCompositor::Server::describe(Output& output)
{
    zwlr_output_head_v1_send_enabled(output.head, output.isOn);
    if (!output.isOn)
        return;
    zwlr_output_head_v1_send_current_mode(output.head, output.mode);
    zwlr_output_head_v1_send_position(output.head, 100, 200);
    zwlr_output_head_v1_send_transform(output.head, WL_OUTPUT_TRANSFORM_180);
    zwlr_output_head_v1_send_scale(output.head, wl_fixed_from_double(1.5));
}

void ScriptedCompositor::Server::apply(wl_resource* resource)
{
    auto& configuration = of<Configuration>(resource);
    if (configuration.wanted.size() != outputs.size())
        reportProtocolError(u"%1 of %2 outputs were configured"_s.arg(configuration.wanted.size()).arg(outputs.size()));
    if (owner->m_options.cancelledConfigurations-- > 0)
        zwlr_output_manager_v1_send_done(manager, ++serial);
    if (configuration.serial != serial)
        return zwlr_output_configuration_v1_send_cancelled(resource);
    const bool isRefused = owner->m_options.refuses || (owner->m_options.refusesState && setsMode);
    setsMode = false;
    if (isRefused)
        return zwlr_output_configuration_v1_send_failed(resource);
    zwlr_output_configuration_v1_send_succeeded(resource);
    for (const auto& [output, on] : configuration.wanted) {
        output->isOn = on;
        describe(*output);
    }
    zwlr_output_manager_v1_send_done(manager, ++serial);
    countOutputs();
}

void ScriptedCompositor::Server::offerConfiguration()
{
    static constexpr struct zwlr_output_configuration_head_v1_interface head = {
        .set_mode =
            [](wl_client*, wl_resource* resource, wl_resource* mode) {
                auto& server = of<Server>(resource);
                const QMutexLocker locker(&server.mutex);
                server.setsMode = true;
                server.lastEnabled = mode ? u"%1"_s.arg(modeWidth) : u"no mode"_s;
            },
        .set_custom_mode = [](wl_client*, wl_resource*, int32_t, int32_t, int32_t) {},
        .set_position =
            [](wl_client*, wl_resource* resource, int32_t x, int32_t y) {
                auto& server = of<Server>(resource);
                const QMutexLocker locker(&server.mutex);
                server.lastEnabled += u" at %1,%2"_s.arg(x).arg(y);
            },
        .set_transform =
            [](wl_client*, wl_resource* resource, int32_t transform) {
                auto& server = of<Server>(resource);
                const QMutexLocker locker(&server.mutex);
                server.lastEnabled += u" turned %1"_s.arg(transform);
            },
        .set_scale =
            [](wl_client*, wl_resource* resource, wl_fixed_t scale) {
                auto& server = of<Server>(resource);
                const QMutexLocker locker(&server.mutex);
                server.lastEnabled += u" scaled %1"_s.arg(wl_fixed_to_double(scale));
            },
    };
    static constexpr struct zwlr_output_configuration_v1_interface configuration = {
        .enable_head =
            [](wl_client* client, wl_resource* resource, uint32_t id, wl_resource* headResource) {
                auto& wanted = of<Configuration>(resource);
                wanted.wanted.emplace_back(&of<Output>(headResource), true);
                wl_resource_set_implementation(
                    wl_resource_create(client, &zwlr_output_configuration_head_v1_interface, 1, id), &head,
                    wanted.server, nullptr);
            },
        .disable_head =
            [](wl_client*, wl_resource* resource, wl_resource* headResource) {
                of<Configuration>(resource).wanted.emplace_back(&of<Output>(headResource), false);
            },
        .apply = [](wl_client*, wl_resource* resource) { of<Configuration>(resource).server->apply(resource); },
        .test = [](wl_client*, wl_resource*) {},
        .destroy = &destroy,
    };
    static constexpr struct zwlr_output_manager_v1_interface manager = {
        .create_configuration =
            [](wl_client* client, wl_resource* resource, uint32_t id, uint32_t serial) {
                wl_resource_set_implementation(
                    wl_resource_create(client, &zwlr_output_configuration_v1_interface, 1, id), &configuration,
                    new Configuration{&of<Server>(resource), serial, {}},
                    [](wl_resource* destroyed) { delete &of<Configuration>(destroyed); });
            },
        .stop = [](wl_client*, wl_resource*) {},
    };
    wl_global_create(
        display, &zwlr_output_manager_v1_interface, 1, this, [](wl_client* client, void* data, uint32_t, uint32_t id) {
            auto& server = *static_cast<Server*>(data);
            server.manager = wl_resource_create(client, &zwlr_output_manager_v1_interface, 1, id);
            wl_resource_set_implementation(server.manager, &manager, data,
                                           [](wl_resource* destroyed) { of<Server>(destroyed).manager = nullptr; });
            for (const auto& output : server.outputs) {
                output->head = wl_resource_create(client, &zwlr_output_head_v1_interface, 1, 0);
                wl_resource_set_implementation(output->head, nullptr, output.get(), nullptr);
                zwlr_output_manager_v1_send_head(server.manager, output->head);
                zwlr_output_head_v1_send_name(output->head, "TEST-1");
                output->mode = wl_resource_create(client, &zwlr_output_mode_v1_interface, 1, 0);
                zwlr_output_head_v1_send_mode(output->head, output->mode);
                zwlr_output_mode_v1_send_size(output->mode, modeWidth, 1080);
                server.describe(*output);
            }
            zwlr_output_manager_v1_send_done(server.manager, server.serial);
        });
}

void ScriptedCompositor::Server::unplugLast()
{
    Output* const output = unplugged.emplace_back(std::move(outputs.back())).get();
    outputs.pop_back();
    wl_global_destroy(output->global);
    if (manager) {
        zwlr_output_mode_v1_send_finished(output->mode);
        zwlr_output_head_v1_send_finished(output->head);
        zwlr_output_manager_v1_send_done(manager, ++serial);
    }
    countOutputs();
}

ScriptedCompositor::ScriptedCompositor(Options options)
    : m_options(options), m_outputsOn(options.outputs - options.outputsOff), m_server(std::make_unique<Server>())
{
    m_server->owner = this;
    m_server->display = wl_display_create();
    qputenv("XDG_RUNTIME_DIR", m_folder.path().toUtf8());
    if (wl_display_add_socket(m_server->display, "wayland-test") != 0)
        throw std::runtime_error("The compositor cannot listen.");
    qputenv("WAYLAND_DISPLAY", "wayland-test");
    for (int i = 0; i < options.outputs; ++i)
        m_server->addOutput(i >= options.outputsOff);
    if (options.offersPower)
        m_server->offerPower();
    if (options.offersConfiguration)
        m_server->offerConfiguration();
    m_thread = std::thread([this] { run(); });
}

ScriptedCompositor::~ScriptedCompositor()
{
    m_stops = true;
    m_thread.join();
    wl_display_destroy_clients(m_server->display);
    wl_display_destroy(m_server->display);
    qunsetenv("WAYLAND_DISPLAY");
}

QString ScriptedCompositor::lastEnabled() const
{
    const QMutexLocker locker(&m_server->mutex);
    return m_server->lastEnabled;
}

QString ScriptedCompositor::protocolError() const
{
    const QMutexLocker locker(&m_server->mutex);
    return m_server->protocolError;
}

void ScriptedCompositor::run()
{
    constexpr int tickMilliseconds = 10; // longest time between two checks for requests of the test
    wl_event_loop* const loop = wl_display_get_event_loop(m_server->display);
    while (!m_stops) {
        wl_event_loop_dispatch(loop, tickMilliseconds);
        m_server->applyDueChanges();
        if (m_isUnplugging) {
            m_server->unplugLast();
            m_isUnplugging = false;
        }
        wl_display_flush_clients(m_server->display);
        m_clients = wl_list_length(wl_display_get_client_list(m_server->display));
    }
}

} // namespace quillmere
