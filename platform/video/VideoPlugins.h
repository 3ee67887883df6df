#pragma once

#include "VideoPlugin.h"

#include <QCoroTask>
#include <QStringList>

#include <tl/expected.hpp>

/** Finds and loads the video plug-in, once a process and not before it is asked for. Screen thread only. */
namespace VideoPlugins {

/** The plug-in, or why there is none. The libraries are read in on another thread; a failed load is tried again. */
QCoro::Task<tl::expected<VideoPlugin*, QString>> load();

/**
 * Sets what the video libraries read from the environment when they are loaded: the refusal of TLS below 1.2; and has
 * the process give back the memory of their buffers. Before the program's first other thread, which might be reading
 * the environment; the first load does it where nobody did.
 */
void prepare();

/** Looks here first; beside the executable and in the installation's folder of libraries otherwise. */
void addFolder(const QString& folder);

} // namespace VideoPlugins
