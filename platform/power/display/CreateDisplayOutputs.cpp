#include "WaylandOutputs.h"
#include "X11Outputs.h"

#include <string_view>

namespace quillmere {

extern "C" [[gnu::visibility("default")]] DisplayOutputs* quillmereCreateDisplayOutputs(const char* platform)
{
    const std::string_view name(platform);
    if (name.starts_with("wayland"))
        return new WaylandOutputs;
    if (name == "xcb")
        return new X11Outputs;
    return nullptr;
}

} // namespace quillmere
