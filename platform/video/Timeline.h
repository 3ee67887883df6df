#pragma once

#include <optional>

namespace quillmere {

/**
 * Maps the timestamps of a stream to positions in the recording and detects gaps. Timestamps may restart in the middle
 * of a recording (EXT-X-DISCONTINUITY). Segments that the server does not deliver are skipped by the stream's reader;
 * the timestamps then jump over them, which is a gap. All values are in seconds. Screen thread only; a member of its
 * player, a new one for each item.
 */
class Timeline
{
public:
    /** A position, and how playback got there. */
    struct Position
    {
        enum class Kind {
            Played,      ///< by playing or seeking
            Gap,         ///< by skipping missing data
            RepeatedGap, ///< by skipping the same data again in a later load
        };

        double seconds = 0;
        Kind kind = Kind::Played;
    };

    /** Starts a new load of the stream. Its timestamps count as positions until they show otherwise. */
    void beginLoad();

    /** The stream's reader skipped data in this load. */
    void onDataSkipped() { m_hasSkippedData = true; }

    /** Position of the first picture after a load or a seek to `requested`. */
    [[nodiscard]] Position onSeekFinished(double requested, double timestamp);

    /**
     * Position of a timestamp, `elapsed` after position `from`. An unexpected one gives none until the next confirms
     * it.
     */
    [[nodiscard]] std::optional<Position> onTimestamp(double from, double timestamp, double elapsed);

    double positionAt(double timestamp) const { return timestamp + m_offset; }

private:
    Position gap(double from, double to);

    double m_offset = 0; ///< added to a timestamp, gives the position
    bool m_hasSkippedData = false;
    std::optional<double> m_unconfirmed; ///< an unexpected timestamp, until the next one confirms it
    std::optional<double> m_lastGapStart;
};

} // namespace quillmere
