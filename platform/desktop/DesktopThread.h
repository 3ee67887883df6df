#pragma once

class QThread;

/**
 * The one thread on which the session bus is talked to, as joining a bus waits for as long as that hangs. It is made at
 * the first use, on the screen thread, and ends with the application object: its `finished` is where to delete what
 * lives on it.
 */
namespace DesktopThread {

QThread& get();

} // namespace DesktopThread
