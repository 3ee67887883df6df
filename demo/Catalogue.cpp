#include "Catalogue.h"

#include <algorithm>

namespace quillmere::demo {

namespace {

constexpr std::size_t ordinaryCount = 240;
constexpr std::size_t ordinaryFirst = 24;  // tapes before the first edge case
constexpr std::size_t ordinaryBetween = 4; // tapes between two edge cases

const std::array<Market, 3> towns = {{{"brindlemere", "Brindlemere", "OR"},
                                      {"tern-hollow", "Tern Hollow", "ME"},
                                      {"marrowby-flats", "Marrowby Flats", "NM"}}};

} // namespace

Catalogue::Catalogue(int port) : m_markets(towns)
{
    std::vector<SampleTape> ordinary = ordinaryTapes(m_markets, ordinaryCount);
    std::vector<SampleTape> edgeCases = edgeCaseTapes(m_markets, port);
    auto nextEdgeCase = edgeCases.begin();
    for (std::size_t i = 0; i < ordinary.size(); ++i) {
        const bool insertEdgeCase = i >= ordinaryFirst && i % ordinaryBetween == 0;
        if (insertEdgeCase && nextEdgeCase != edgeCases.end()) {
            m_tapes.push_back(std::move(*nextEdgeCase++));
        }
        m_tapes.push_back(std::move(ordinary[i]));
    }
    countMarkets();
}

Catalogue::Catalogue(SingleShelf shelf) : m_markets(towns), m_tapes(singleShelfTapes(m_markets, shelf.tapes))
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

} // namespace quillmere::demo
