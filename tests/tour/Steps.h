#pragma once

#include "State.h"

/** The actions of the tour. */
namespace quillmere::tour {

/** Starts the program with these saved resume positions (seconds by tape id). */
Step switchOn(const QMap<qint64, double>& resumePositions = {});
Step press(const QString& button, int times = 1);
Step keyDown(const QString& button);
Step keyUp(const QString& button);
/** Posts to the hub's control address. */
Step post(const QString& path, const QJsonObject& body = {});
Step addFault(const QString& path, const QString& kind, const QJsonObject& more = {});
/** Resets the hub: no faults, the initial status and tapes, no broadcast. */
Step resetHub();
/** Stops the hub, whose port then refuses connections, and starts it again. */
Step stopHub();
Step startHub();
/** Waits for a condition that takes longer than a step usually does. */
Step waitFor(const Check& check);

} // namespace quillmere::tour
