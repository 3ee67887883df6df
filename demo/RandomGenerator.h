#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace quillmere::demo {

/// A pseudo-random generator (splitmix64). The same seed gives the same numbers on every machine.
class RandomGenerator
{
public:
    explicit RandomGenerator(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t next()
    {
        m_state += 0x9E3779B97F4A7C15u;
        std::uint64_t z = m_state;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }

    /// A number from 0 to `count` - 1; `count` is at least 1.
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(next() % count); }

    /// A random element of a list; the list must not be empty.
    template<typename List>
    const auto& oneOf(const List& list)
    {
        return list[below(std::size(list))];
    }

private:
    std::uint64_t m_state;
};

} // namespace quillmere::demo
