#include "AlsaLog.h"

#include "Logging.h"

#include <cstdarg>
#include <cstdio>

#include <dlfcn.h>

namespace quillmere {

namespace {

using Handler = void (*)(const char* file, int line, const char* function, int error, const char* format, ...);
using SetHandler = int (*)(Handler);

void logMessage(const char* /*file*/, int /*line*/, const char* function, int /*error*/, const char* format, ...)
{
    constexpr std::size_t longest = 512; // bytes
    char message[longest];
    std::va_list values;
    va_start(values, format);
    std::vsnprintf(message, sizeof message, format, values);
    va_end(values);
    qCInfo(logVideo).noquote().nospace() << "ALSA: " << function << ": " << message;
}

} // namespace

void logAlsaMessages()
{
    // Looked up at run time, as libmpv may have been built without ALSA.
    if (const auto set = reinterpret_cast<SetHandler>(dlsym(RTLD_DEFAULT, "snd_lib_error_set_handler")))
        set(logMessage);
}

} // namespace quillmere
