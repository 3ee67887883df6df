#pragma once

class QThread;

/**
 * The thread for all session bus calls, because connecting to a bus that does not respond blocks. Created at the first
 * use, on the screen thread; ends with the application object. Objects that live on it must be deleted when it emits
 * `finished`.
 */
namespace DesktopThread {

QThread& get();

} // namespace DesktopThread
