#pragma once

#include "VideoPlugin.h"

#include <QCoroTask>
#include <QStringList>

#include <tl/expected.hpp>

/** Finds and loads the video plug-in: at the first request, once per process. Screen thread only. */
namespace quillmere::VideoPlugins {

/**
 * The plug-in, or an error message. Libraries are loaded on another thread. After a failure the next call tries again.
 */
QCoro::Task<tl::expected<VideoPlugin*, QString>> load();

/**
 * Sets the environment variable by which the TLS library below the player refuses TLS below 1.2, and makes the
 * allocator return large freed buffers to the system. Call it before the program starts another thread, which might
 * read the environment. `load` calls it too.
 */
void prepare();

/** Adds a folder that is searched before the executable's folder and the installed library folder. */
void addFolder(const QString& folder);

} // namespace quillmere::VideoPlugins
