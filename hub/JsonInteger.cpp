#include "JsonInteger.h"

#include <algorithm>
#include <limits>
#include <string>

namespace {

constexpr qint64 maxDigits = 19;              ///< of a signed 64-bit integer; any 19 digits fit into quint64
constexpr qint64 exponentCap = 1'000'000'000; ///< larger than any document, so that arithmetic cannot overflow

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/** A number as digits times a power of ten. The digits have no zeros at either end. */
struct Decimal
{
    std::string digits;
    qint64 exponent = 0;
};

qint64 readExponent(std::string_view text)
{
    const bool isNegative = text.starts_with('-');
    qint64 value = 0;
    for (const char character : text) {
        if (isDigit(character))
            value = std::min(value * 10 + (character - '0'), exponentCap);
    }
    return isNegative ? -value : value;
}

Decimal readDecimal(std::string_view text)
{
    Decimal decimal;
    const size_t exponentMark = std::min(text.find_first_of("eE"), text.size());
    if (exponentMark < text.size())
        decimal.exponent = readExponent(text.substr(exponentMark + 1));
    bool isPastPoint = false;
    for (const char character : text.substr(0, exponentMark)) {
        if (!isDigit(character)) {
            isPastPoint = true;
            continue;
        }
        decimal.exponent -= isPastPoint ? 1 : 0;
        if (character != '0' || !decimal.digits.empty())
            decimal.digits += character;
    }
    const size_t significant = decimal.digits.find_last_not_of('0') + 1;
    decimal.exponent += qint64(decimal.digits.size() - significant);
    decimal.digits.resize(significant);
    return decimal;
}

} // namespace

std::optional<qint64> exactJsonInteger(std::string_view token)
{
    const bool isNegative = token.starts_with('-');
    const Decimal decimal = readDecimal(token.substr(isNegative ? 1 : 0));
    if (decimal.digits.empty())
        return 0;
    if (decimal.exponent < 0 || qint64(decimal.digits.size()) + decimal.exponent > maxDigits)
        return std::nullopt;
    quint64 magnitude = 0;
    for (const char digit : decimal.digits)
        magnitude = magnitude * 10 + quint64(digit - '0');
    for (qint64 zero = 0; zero < decimal.exponent; ++zero)
        magnitude *= 10;
    constexpr quint64 largest = std::numeric_limits<qint64>::max();
    if (magnitude > largest + (isNegative ? 1 : 0))
        return std::nullopt;
    return isNegative ? qint64(0 - magnitude) : qint64(magnitude);
}
