#pragma once

#include "SampleTape.h"

#include <array>

namespace demo {

/// The made-up towns and their tapes, the same on every run. Never changes once made, so any thread may read it.
class Catalogue
{
public:
    /// `port` is the hub's own, for the few addresses that are written out in full.
    explicit Catalogue(int port);

    struct OneShelf
    {
        std::size_t tapes; ///< up to 2500
    };
    /// The same towns with nothing but one long shelf.
    explicit Catalogue(OneShelf shelf);

    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;

    const std::array<Market, 3>& markets() const { return m_markets; }
    /// Newest first; the odd ones stand between the ordinary ones, from the 25th tape to the 200th.
    const std::vector<SampleTape>& tapes() const { return m_tapes; }
    /// Null when there is no such tape.
    const SampleTape* find(std::int64_t id) const;

private:
    void countMarkets();

    std::array<Market, 3> m_markets;
    std::vector<SampleTape> m_tapes;
};

} // namespace demo
