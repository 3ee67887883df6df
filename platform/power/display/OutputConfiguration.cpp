#include "OutputConfiguration.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr int attempts = 3; // a configuration is cancelled if the outputs have changed in the meantime

template<typename T>
T& as(void* data)
{
    return *static_cast<T*>(data);
}

} // namespace

const zwlr_output_manager_v1_listener OutputConfiguration::managerListener = {
    .head =
        [](void* data, zwlr_output_manager_v1*, zwlr_output_head_v1* proxy) {
            auto head = std::make_unique<Head>();
            head->proxy.reset(proxy);
            zwlr_output_head_v1_add_listener(proxy, &headListener, head.get());
            as<OutputConfiguration>(data).m_heads.push_back(std::move(head));
        },
    .done = [](void* data, zwlr_output_manager_v1*,
               uint32_t serial) { as<OutputConfiguration>(data).m_serial = serial; },
    .finished = [](void*, zwlr_output_manager_v1*) {},
};

const zwlr_output_head_v1_listener OutputConfiguration::headListener = {
    .name = [](void*, zwlr_output_head_v1*, const char*) {},
    .description = [](void*, zwlr_output_head_v1*, const char*) {},
    .physical_size = [](void*, zwlr_output_head_v1*, int32_t, int32_t) {},
    .mode =
        [](void* data, zwlr_output_head_v1*, zwlr_output_mode_v1* proxy) {
            auto mode = std::make_unique<Mode>();
            mode->proxy.reset(proxy);
            zwlr_output_mode_v1_add_listener(proxy, &modeListener, mode.get());
            as<Head>(data).modes.push_back(std::move(mode));
        },
    .enabled = [](void* data, zwlr_output_head_v1*, int32_t enabled) { as<Head>(data).isEnabled = enabled != 0; },
    .current_mode = [](void* data, zwlr_output_head_v1*,
                       zwlr_output_mode_v1* mode) { as<Head>(data).state.mode = mode; },
    .position =
        [](void* data, zwlr_output_head_v1*, int32_t x, int32_t y) {
            as<Head>(data).state.x = x;
            as<Head>(data).state.y = y;
        },
    .transform = [](void* data, zwlr_output_head_v1*,
                    int32_t transform) { as<Head>(data).state.transform = transform; },
    .scale = [](void* data, zwlr_output_head_v1*, wl_fixed_t scale) { as<Head>(data).state.scale = scale; },
    .finished = [](void* data, zwlr_output_head_v1*) { as<Head>(data).isRemoved = true; },
};

const zwlr_output_mode_v1_listener OutputConfiguration::modeListener = {
    .size = [](void*, zwlr_output_mode_v1*, int32_t, int32_t) {},
    .refresh = [](void*, zwlr_output_mode_v1*, int32_t) {},
    .preferred = [](void*, zwlr_output_mode_v1*) {},
    .finished = [](void* data, zwlr_output_mode_v1*) { as<Mode>(data).isRemoved = true; },
};

const zwlr_output_configuration_v1_listener OutputConfiguration::outcomeListener = {
    .succeeded = [](void* data, zwlr_output_configuration_v1*) { as<Outcome>(data) = Outcome::Succeeded; },
    .failed = [](void* data, zwlr_output_configuration_v1*) { as<Outcome>(data) = Outcome::Failed; },
    .cancelled = [](void* data, zwlr_output_configuration_v1*) { as<Outcome>(data) = Outcome::Cancelled; },
};

std::unique_ptr<OutputConfiguration> OutputConfiguration::create(WaylandConnection& connection)
{
    auto manager = connection.bindFirst<zwlr_output_manager_v1>(zwlr_output_manager_v1_interface);
    if (!manager)
        return nullptr;
    std::unique_ptr<OutputConfiguration> outputs(new OutputConfiguration(connection));
    outputs->m_manager = std::move(manager);
    zwlr_output_manager_v1_add_listener(outputs->m_manager.get(), &managerListener, outputs.get());
    return outputs;
}

bool OutputConfiguration::switchOff()
{
    const Outcome outcome = apply([](zwlr_output_configuration_v1& configuration, Head& head) {
        head.before = head.isEnabled ? std::optional(head.state) : std::nullopt;
        zwlr_output_configuration_v1_disable_head(&configuration, head.proxy.get());
    });
    // A compositor that has not answered yet may still apply the configuration later.
    if (outcome == Outcome::Pending)
        switchOn();
    return outcome == Outcome::Succeeded;
}

void OutputConfiguration::switchOn()
{
    const auto restore = [](zwlr_output_configuration_v1& configuration, Head& head, bool withState) {
        if (head.before || head.isEnabled)
            enable(configuration, head, withState);
        else
            zwlr_output_configuration_v1_disable_head(&configuration, head.proxy.get());
    };
    // The compositor may refuse the previous state. In that case it chooses the state itself.
    for (const bool withState : {true, false}) {
        const Outcome outcome = apply(
            [&](zwlr_output_configuration_v1& configuration, Head& head) { restore(configuration, head, withState); });
        if (outcome == Outcome::Succeeded)
            return;
    }
}

OutputConfiguration::Outcome
OutputConfiguration::apply(const std::function<void(zwlr_output_configuration_v1&, Head&)>& configure)
{
    for (int attempt = 0; attempt < attempts; ++attempt) {
        // After a roundtrip, m_serial is up to date.
        if (!m_connection.roundtrip())
            return Outcome::Failed;
        std::erase_if(m_heads, [](const auto& head) { return head->isRemoved; });
        if (std::ranges::none_of(m_heads, [](const auto& head) { return head->isEnabled || head->before; }))
            return Outcome::Failed;
        const Outcome outcome = applyOnce(configure);
        if (outcome != Outcome::Cancelled)
            return outcome;
    }
    return Outcome::Cancelled;
}

OutputConfiguration::Outcome
OutputConfiguration::applyOnce(const std::function<void(zwlr_output_configuration_v1&, Head&)>& configure)
{
    Outcome outcome = Outcome::Pending;
    const Proxy<zwlr_output_configuration_v1> configuration(
        zwlr_output_manager_v1_create_configuration(m_manager.get(), m_serial));
    zwlr_output_configuration_v1_add_listener(configuration.get(), &outcomeListener, &outcome);
    for (const auto& head : m_heads)
        configure(*configuration, *head);
    zwlr_output_configuration_v1_apply(configuration.get());
    m_connection.waitUntil([&outcome] { return outcome != Outcome::Pending; });
    return outcome;
}

void OutputConfiguration::enable(zwlr_output_configuration_v1& configuration, Head& head, bool withState)
{
    const Proxy<zwlr_output_configuration_head_v1> wanted(
        zwlr_output_configuration_v1_enable_head(&configuration, head.proxy.get()));
    if (!head.before || !withState)
        return;
    const State& state = *head.before;
    const bool hasMode = std::ranges::any_of(
        head.modes, [&](const auto& mode) { return mode->proxy.get() == state.mode && !mode->isRemoved; });
    if (hasMode)
        zwlr_output_configuration_head_v1_set_mode(wanted.get(), state.mode);
    zwlr_output_configuration_head_v1_set_position(wanted.get(), state.x, state.y);
    zwlr_output_configuration_head_v1_set_transform(wanted.get(), state.transform);
    zwlr_output_configuration_head_v1_set_scale(wanted.get(), state.scale);
}

} // namespace quillmere
