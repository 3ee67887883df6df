#include "OutputPower.h"

#include <algorithm>

namespace quillmere {

const zwlr_output_power_v1_listener OutputPower::listener = {
    .mode = [](void* data, zwlr_output_power_v1*, uint32_t mode) { static_cast<Output*>(data)->mode = mode; },
    .failed = [](void* data, zwlr_output_power_v1*) { static_cast<Output*>(data)->mode.reset(); },
};

std::unique_ptr<OutputPower> OutputPower::create(WaylandConnection& connection)
{
    auto manager = connection.bindFirst<zwlr_output_power_manager_v1>(zwlr_output_power_manager_v1_interface);
    if (!manager)
        return nullptr;
    std::unique_ptr<OutputPower> power(new OutputPower(connection));
    power->m_manager = std::move(manager);
    return power;
}

void OutputPower::addOutputs()
{
    for (const WaylandConnection::Global& global : m_connection.globals()) {
        if (global.interface != wl_output_interface.name)
            continue;
        auto output = std::make_unique<Output>();
        output->output = m_connection.bind<wl_output>(global, wl_output_interface);
        output->power.reset(zwlr_output_power_manager_v1_get_output_power(m_manager.get(), output->output.get()));
        zwlr_output_power_v1_add_listener(output->power.get(), &listener, output.get());
        m_outputs.push_back(std::move(output));
    }
}

bool OutputPower::switchOff()
{
    addOutputs();
    if (!m_connection.roundtrip())
        return false;
    for (const auto& output : m_outputs) {
        output->wasOn = output->mode == uint32_t(ZWLR_OUTPUT_POWER_V1_MODE_ON);
        if (output->wasOn)
            zwlr_output_power_v1_set_mode(output->power.get(), ZWLR_OUTPUT_POWER_V1_MODE_OFF);
    }
    // The mode may change late. Outputs that do not report it in time may be off all the same, so they are switched on.
    const auto is = [](const auto& output, uint32_t mode) { return output->wasOn && output->mode == mode; };
    const bool answered = m_connection.waitUntil([&] {
        return std::ranges::none_of(
            m_outputs, [&](const auto& output) { return is(output, uint32_t(ZWLR_OUTPUT_POWER_V1_MODE_ON)); });
    });
    if (answered && std::ranges::any_of(m_outputs, [&](const auto& output) {
            return is(output, uint32_t(ZWLR_OUTPUT_POWER_V1_MODE_OFF));
        }))
        return true;
    switchOn();
    return false;
}

void OutputPower::switchOn()
{
    for (const auto& output : m_outputs) {
        if (output->wasOn && output->mode)
            zwlr_output_power_v1_set_mode(output->power.get(), ZWLR_OUTPUT_POWER_V1_MODE_ON);
    }
    m_connection.waitUntil([this] {
        return std::ranges::none_of(m_outputs, [](const auto& output) {
            return output->wasOn && output->mode == uint32_t(ZWLR_OUTPUT_POWER_V1_MODE_OFF);
        });
    });
}

} // namespace quillmere
