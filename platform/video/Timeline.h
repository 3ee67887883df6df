#pragma once

#include <optional>

/**
 * Where in a recording the timestamps of its stream are, and which of their moves are no playing. Timestamps may begin
 * anew in the middle; segments that the server does not give are left out by the stream's reader, and the timestamps go
 * on behind them. Seconds throughout. Screen thread only; a member of its player, a new one for each item.
 */
class Timeline
{
public:
    /** A position, and how it came about. */
    struct Place
    {
        enum class Kind {
            Played,      ///< or sought
            Jumped,      ///< data were left out, for the first time here
            JumpedAgain, ///< a load after that has left them out again
        };

        double position = 0;
        Kind kind = Kind::Played;
    };

    /** Another load: its timestamps are its positions until they show otherwise. */
    void begin();

    /** The reader of this load has left out data. */
    void dataSkipped() { m_hasSkipped = true; }

    /** A load or a seek to `wanted` has come to its picture. */
    [[nodiscard]] Place landed(double wanted, double timestamp);

    /** What a timestamp says, `elapsed` after the last move, to `from`; none as long as it is not sure. */
    [[nodiscard]] std::optional<Place> moved(double from, double timestamp, double elapsed);

    double positionAt(double timestamp) const { return timestamp + m_shift; }

private:
    Place jump(double from, double to);

    double m_shift = 0; ///< from timestamp to position
    bool m_hasSkipped = false;
    std::optional<double> m_unsure; ///< a timestamp out of line, until the next one follows it
    std::optional<double> m_jumpedFrom;
};
