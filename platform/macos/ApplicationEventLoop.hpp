#pragma once

namespace corvane::ApplicationEventLoop {

/// Runs the application's event loop on the main thread until `stop`: the loop Carbon hotkeys
/// and workspace notifications are delivered through, which a bare run loop never pumps. The
/// process becomes an accessory application: no Dock icon, no menu bar of its own.
void run();
/// Main thread: `run` returns at once.
void stop();

} // namespace corvane::ApplicationEventLoop
