#pragma once

#include "Figure.h"
#include "SampleHub.h"
#include "SimulatedViewer.h"

namespace quillmere {

/** Number of repetitions and durations of the measurements. */
struct BenchParameters
{
    int starts;                     ///< of each program
    int presses;                    ///< of a key, in each program
    int scrolls;                    ///< scrolls from one end of a shelf to the other and back
    int repetitions;                ///< repetitions of the idle and playing measurements
    std::chrono::milliseconds idle; ///< duration of one measurement
    std::chrono::milliseconds playing;
};

/** Time from start to the first and to the final picture, and memory use then; yardstick: the empty window. */
QList<Figure> measureStart(SimulatedViewer& viewer, const BenchParameters& parameters);

/** Time from key press to changed pixels on the front screen; yardstick: the empty window. */
QList<Figure> measureKeys(SimulatedViewer& viewer, const BenchParameters& parameters);

/**
 * Key presses, frames while a key is held, blank cards and memory use on a shelf of 200 tapes; yardstick: a shelf of
 * 20.
 */
QList<Figure> measureShelves(SimulatedViewer& viewer, SampleHub& hub, const BenchParameters& parameters);

/** Times in milliseconds from pressing each of these buttons to changed pixels. Presses without effect are omitted. */
QList<double> timePresses(SimulatedViewer& viewer, const QStringList& buttons);
/** The 95th percentile of each fifth of the presses. */
QList<double> slowest(const QList<double>& times);

/** Processor time and drawings of the idle front screen without a broadcast; yardstick: the empty window. */
QList<Figure> measureIdle(SimulatedViewer& viewer, const BenchParameters& parameters);

/**
 * Time from key press to first picture, processor time and pictures per second of the shop's first tape, whose stream
 * has the URL `stream`. Yardstick: the mpv program, if installed, which plays the same stream in alternation.
 */
QList<Figure> measurePlaying(SimulatedViewer& viewer, const QString& stream, const BenchParameters& parameters);

/** Processor time and drawings of the news channel: the standby card with its ticker, and the live picture. */
QList<Figure> measureNews(SimulatedViewer& viewer, SampleHub& hub, const BenchParameters& parameters);

/** Results of the libraries' own benchmark programs, each with the yardstick in the same program. */
QList<Figure> measureLibraries(const QStringList& programs, const BenchParameters& parameters);

/** Starts an empty full-screen window with software rendering and returns at once. */
std::unique_ptr<ChildProcess> launchEmptyWindow();
/** Starts the same window and waits until it has the input focus. */
std::unique_ptr<ChildProcess> startEmptyWindow(SimulatedViewer& viewer);

} // namespace quillmere
