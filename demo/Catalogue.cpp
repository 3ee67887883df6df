#include "Catalogue.h"

#include "OddTapes.h"
#include "OrdinaryTapes.h"

#include <algorithm>

namespace demo {

namespace {

constexpr std::size_t ordinaryCount = 240;
constexpr std::size_t ordinaryFirst = 24; // tapes before the first odd one
constexpr std::size_t ordinaryBetween = 4;

const std::array<Market, 3> towns = {{{"brindlemere", "Brindlemere", "OR"},
                                      {"tern-hollow", "Tern Hollow", "ME"},
                                      {"marrowby-flats", "Marrowby Flats", "NM"}}};

} // namespace

Catalogue::Catalogue(int port) : m_markets(towns)
{
    std::vector<SampleTape> ordinary = ordinaryTapes(m_markets, ordinaryCount);
    std::vector<SampleTape> odd = oddTapes(m_markets, port);
    auto nextOdd = odd.begin();
    for (std::size_t i = 0; i < ordinary.size(); ++i) {
        const bool oddNow = i >= ordinaryFirst && i % ordinaryBetween == 0;
        if (oddNow && nextOdd != odd.end()) {
            m_tapes.push_back(std::move(*nextOdd++));
        }
        m_tapes.push_back(std::move(ordinary[i]));
    }
    countMarkets();
}

Catalogue::Catalogue(OneShelf shelf) : m_markets(towns), m_tapes(tapesOfOneShelf(m_markets, shelf.tapes))
{
    countMarkets();
}

void Catalogue::countMarkets()
{
    for (Market& market : m_markets) {
        market.tapes = static_cast<std::size_t>(std::count_if(
            m_tapes.begin(), m_tapes.end(), [&](const SampleTape& tape) { return tape.market == &market; }));
    }
}

const SampleTape* Catalogue::find(std::int64_t id) const
{
    const auto found = std::find_if(m_tapes.begin(), m_tapes.end(), [id](const SampleTape& t) { return t.id == id; });
    return found == m_tapes.end() ? nullptr : &*found;
}

} // namespace demo
