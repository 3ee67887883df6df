#pragma once

#include "VHSCover.h"

#include <QString>

#include <array>

/** The fixed tables for cassette covers. Rows are chosen by index, so their order must not change. */
namespace quillmere::DressingTables {

/** A genre and the name of its shelf. */
struct Genre
{
    QString genre;
    QString shelf;
};

const std::array<TapeRating, 4>& ratings();
const std::array<QString, 8>& taglines();
const std::array<QString, 12>& monthNames();

/** Hues of the box colours, in degrees. */
inline constexpr std::array<int, 10> hues{4, 20, 36, 145, 168, 200, 210, 262, 291, 330};

/** The genre of the first rule with a keyword that occurs in `loweredText`. */
const Genre& genreOf(QStringView loweredText);

} // namespace quillmere::DressingTables
