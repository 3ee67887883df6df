#pragma once

#include "LivingRoom.h"
#include "SampleHub.h"
#include "Shop.h"

#include <QList>
#include <QMap>

#include <functional>

namespace tour {

/** What the tour works with: the hub behind, the room before the screen, and the pictures taken so far, by state. */
struct Stage
{
    SampleHub hub;
    LivingRoom room;
    QString log; ///< file of what the program and its libraries complain of
    QMap<QString, QImage> pictures;
    shop::Place place; ///< of the focus in the shop
};

/** One thing done to get to a state. */
using Step = std::function<void(Stage&)>;

/** One thing that is seen in a state and nowhere before it. */
struct Sight
{
    QString what; ///< completes "It cannot be seen that ..."
    std::function<bool(Stage&, const QImage&)> holds;
};

/** One state of one screen: a row of the tour. The way starts in the state of the row before. */
struct State
{
    QString name; ///< also the picture's label and file name
    QList<Step> way;
    QList<Sight> proof;
};

/** All states, in the order in which the tour comes by. Later screens add their rows here. */
QList<State> allStates();

QList<State> frontStates();
QList<State> newsStates();
QList<State> shopStates();
QList<State> detailStates();
QList<State> tapeStates();
QList<State> transcriptStates();
QList<State> searchStates();
QList<State> panelStates();

} // namespace tour
