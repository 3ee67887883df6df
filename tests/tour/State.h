#pragma once

#include "SampleHub.h"
#include "Shop.h"
#include "SimulatedViewer.h"

#include <QList>
#include <QMap>

#include <functional>

namespace quillmere::tour {

/** What all steps and checks use: the hub, the simulated viewer, and the pictures taken so far, by state name. */
struct TourContext
{
    SampleHub hub;
    SimulatedViewer viewer;
    QString log; ///< path of the file for messages of the program and its libraries
    QMap<QString, QImage> pictures;
    shop::Position shopPosition; ///< position of the focus in the shop
};

/** One action on the way to a state. */
using Step = std::function<void(TourContext&)>;

/** A condition that is true in a state and not in the states before it. */
struct Check
{
    QString what; ///< completes the message "The screen never showed: ..."
    std::function<bool(TourContext&, const QImage&)> isMet;
};

/** One state of one screen. Its steps start in the previous state of the list. */
struct State
{
    QString name; ///< also the label and the file name of its picture
    QList<Step> steps;
    QList<Check> checks;
};

/** All states in the order of the tour. New screens add their states here. */
QList<State> allStates();

QList<State> frontStates();
QList<State> newsStates();
QList<State> shopStates();
QList<State> detailStates();
QList<State> tapeStates();
QList<State> transcriptStates();
QList<State> searchStates();
QList<State> panelStates();

} // namespace quillmere::tour
