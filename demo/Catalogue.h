#pragma once

#include "SampleTape.h"

#include <array>

namespace quillmere::demo {

/// The invented towns and their tapes, the same in every run. Immutable after construction, so any thread may read it.
class Catalogue
{
public:
    /// `port` is the port of the hub itself. The few absolute addresses in the records need it.
    explicit Catalogue(int port);

    struct SingleShelf
    {
        std::size_t tapes; ///< up to 2500
    };
    /// The same towns, with tapes that all belong to one shelf.
    explicit Catalogue(SingleShelf shelf);

    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;

    const std::array<Market, 3>& markets() const { return m_markets; }
    /// Newest first. The edge cases are mixed with the ordinary tapes, between the 25th and the 200th tape.
    const std::vector<SampleTape>& tapes() const { return m_tapes; }
    /// The tape with this id, or null.
    const SampleTape* find(std::int64_t id) const;

private:
    void countMarkets();

    std::array<Market, 3> m_markets;
    std::vector<SampleTape> m_tapes;
};

} // namespace quillmere::demo
