#pragma once

#include "TapeRating.h"

#include <QString>

#include <array>

/** The fixed tables that cassettes are dressed from. Rows are picked by their index, so their order is part of them. */
namespace DressingTables {

/** A genre and the shelf that it stands on. */
struct Genre
{
    QString genre;
    QString shelf;
};

const std::array<TapeRating, 4>& ratings();
const std::array<QString, 8>& taglines();

/** Box colours, in degrees of hue. */
inline constexpr std::array<int, 10> hues{4, 20, 36, 145, 168, 200, 210, 262, 291, 330};

/** The genre of the first rule whose keyword occurs in the text, which is in lower case. */
const Genre& genreOf(QStringView loweredText);

} // namespace DressingTables
