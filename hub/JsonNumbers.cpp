#include "JsonNumbers.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>

namespace quillmere {

namespace {

constexpr qint64 maxDigits = 19;              ///< of a signed 64-bit integer; any 19 digits fit into quint64
constexpr qint64 exponentCap = 1'000'000'000; ///< larger than any document, so that arithmetic cannot overflow
constexpr std::string_view numberCharacters = "0123456789+-.eE";
constexpr std::string_view replacement = "0.5"; ///< for a number outside the range of a double

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

/** Removes the digits at the start of `text`. Returns false if there are none. */
bool skipDigits(std::string_view& text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const auto count = size_t(end - text.begin());
    text.remove_prefix(count);
    return count > 0;
}

bool isNumber(std::string_view text)
{
    if (text.starts_with('-'))
        text.remove_prefix(1);
    if (text.starts_with('0'))
        text.remove_prefix(1);
    else if (!skipDigits(text))
        return false;
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        if (!skipDigits(text))
            return false;
    }
    if (text.starts_with('e') || text.starts_with('E')) {
        text.remove_prefix(1);
        if (text.starts_with('+') || text.starts_with('-'))
            text.remove_prefix(1);
        if (!skipDigits(text))
            return false;
    }
    return text.empty();
}

bool isOutOfRange(std::string_view number)
{
    double value = 0;
    return std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc::result_out_of_range;
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

QByteArray withoutHugeNumbers(QByteArray json)
{
    bool isInString = false;
    for (qsizetype index = 0; index < json.size(); ++index) {
        const char character = json[index];
        if (isInString) {
            index += character == '\\' ? 1 : 0;
            isInString = character != '"';
        } else if (character == '"') {
            isInString = true;
        } else if (character == '-' || isDigit(character)) {
            const std::string_view rest(json.constData() + index, size_t(json.size() - index));
            const std::string_view number = rest.substr(0, rest.find_first_not_of(numberCharacters));
            const auto length = qsizetype(number.size());
            if (isNumber(number) && isOutOfRange(number))
                json.replace(index, length,
                             QByteArray(replacement.data(), replacement.size()).leftJustified(length, ' '));
            index += length - 1;
        }
    }
    return json;
}

} // namespace quillmere
