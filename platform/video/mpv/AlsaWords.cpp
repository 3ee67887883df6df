#include "AlsaWords.h"

#include "Logging.h"

#include <cstdarg>
#include <cstdio>

#include <dlfcn.h>

namespace {

using Handler = void (*)(const char* file, int line, const char* function, int error, const char* format, ...);
using SetHandler = int (*)(Handler);

void logWords(const char* /*file*/, int /*line*/, const char* function, int /*error*/, const char* format, ...)
{
    constexpr std::size_t longest = 512; // bytes
    char words[longest];
    std::va_list values;
    va_start(values, format);
    std::vsnprintf(words, sizeof words, format, values);
    va_end(values);
    qCInfo(logVideo).noquote().nospace() << "ALSA: " << function << ": " << words;
}

} // namespace

void logAlsaWords()
{
    // Looked up, as which sound systems the player's library knows is its own affair.
    if (const auto set = reinterpret_cast<SetHandler>(dlsym(RTLD_DEFAULT, "snd_lib_error_set_handler")))
        set(logWords);
}
