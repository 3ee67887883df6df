#pragma once

#include "Figure.h"
#include "LivingRoom.h"
#include "SampleHub.h"

/** How often and how long each thing is measured. */
struct Effort
{
    int starts;                     ///< of each program
    int presses;                    ///< of a key, in each program
    int rides;                      ///< from end to end of a shelf and back
    int spans;                      ///< stretches of idleness and of playing
    std::chrono::milliseconds idle; ///< one stretch
    std::chrono::milliseconds playing;
};

/** Start to first and to settled picture, and the memory then: beside the empty window. */
QList<Figure> measureStart(LivingRoom& room, const Effort& effort);

/** Key to changed pixel on the front screen: beside the empty window. */
QList<Figure> measureKeys(LivingRoom& room, const Effort& effort);

/** Keys, frames under a held key, blank cards and memory on a shelf of 200 tapes: beside one of 20. */
QList<Figure> measureShelves(LivingRoom& room, SampleHub& hub, const Effort& effort);

/** Milliseconds from key to changed pixel of each of these buttons; a press without effect is left out. */
QList<double> timePresses(LivingRoom& room, const QStringList& buttons);
/** The 95th percentile of each of five parts of the presses. */
QList<double> slowest(const QList<double>& times);

/** Processor and pictures of the untouched front screen, the tower dark: beside the empty window. */
QList<Figure> measureIdle(LivingRoom& room, const Effort& effort);

/**
 * Key to first picture, processor and pictures of the shop's first tape playing, whose stream's address is `stream`: in
 * turns with the mpv program, where there is one, playing the same from the same hub.
 */
QList<Figure> measurePlaying(LivingRoom& room, const QString& stream, const Effort& effort);

/** Processor and drawings of the news channel: the standby card with its ticker, and the lit picture. */
QList<Figure> measureNews(LivingRoom& room, SampleHub& hub, const Effort& effort);

/** What the libraries' own benchmark programs measure, each beside the yardstick in the same program. */
QList<Figure> measureLibraries(const QStringList& programs, const Effort& effort);

/** An empty full-screen window on the software path; answers at once. */
std::unique_ptr<ChildProcess> launchEmptyWindow();
/** The same, once it is there and has the input focus. */
std::unique_ptr<ChildProcess> startEmptyWindow(LivingRoom& room);
