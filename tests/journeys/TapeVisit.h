#pragma once

#include "SampleHub.h"
#include "SimulatedViewer.h"

#include <chrono>
#include <optional>

namespace quillmere {

/**
 * A simulated viewer and one tape of the sample hub: opens the tape, reads the screen, and reads the saved position.
 * Single-threaded.
 */
class TapeVisit
{
public:
    static constexpr QRectF spinner{918, 498, 84, 84};
    static constexpr QRectF transport{60, 780, 1800, 250};
    static constexpr QRectF information{80, 60, 1760, 500};
    static constexpr QRectF failure{200, 380, 1520, 320};
    // Readable although the last picture of the recording, with its figures, is behind it.
    static constexpr QRectF failureMessage{775, 526, 375, 30};
    static constexpr QRectF failureButton{800, 592, 320, 60};

    SampleHub& hub() { return m_hub; }
    SimulatedViewer& viewer() { return m_viewer; }

    /** Starts the program with this saved resume position and opens the tape's screen; false if it does not appear. */
    bool open(qint64 tape, std::optional<double> savedPosition = {});
    /** The title on the cover of the opened tape. */
    QString expectedTitle();
    std::optional<double> savedPosition() { return m_viewer.program().savedPosition(m_tape); }

    bool waitForText(const QRectF& area, const QString& text, std::chrono::seconds limit = std::chrono::seconds(20));

    /** The second that the playing picture shows; nullopt if it shows none, or second 0. */
    std::optional<int> shownSecond();
    /** The next second shown that differs from `last`; nullopt if none appears in 30 seconds. */
    std::optional<int> waitForNextSecond(std::optional<int> last = {});
    bool waitForSecond(int second);
    /** Whether the spinner appears over a still picture. */
    bool waitForSpinner();

private:
    SampleHub m_hub;
    SimulatedViewer m_viewer;
    qint64 m_tape = 0;
};

} // namespace quillmere
