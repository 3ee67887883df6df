#pragma once

#include "State.h"

/** The things that a tour does. */
namespace tour {

/** Switches the set on, with these resume positions (seconds by tape id) kept from before. */
Step switchOn(const QMap<qint64, double>& kept = {});
Step press(const QString& button, int times = 1);
Step pushDown(const QString& button);
Step letGo(const QString& button);
/** Orders something of the hub's control address. */
Step order(const QString& path, const QJsonObject& body = {});
Step fault(const QString& path, const QString& kind, const QJsonObject& more = {});
/** The tower dark, the status as it was, no faults. */
Step calm();
/** The hub's port refuses from then on, and answers again. */
Step stopHub();
Step startHub();
/** Waits for what takes longer than the way to a state does. */
Step waitFor(const Sight& sight);

} // namespace tour
